#include <gtest/gtest.h>
#include "settings/oemdev.h"
TEST(Oemdev, Size) { EXPECT_EQ(sizeof(OEMDEV), 3329u); }
