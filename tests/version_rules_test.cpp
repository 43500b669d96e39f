// Tests of the Version page's admin-mode switch.
#include <gtest/gtest.h>

#include "pages/version_rules.h"

namespace {

TEST(VersionRules, AdminToggleNeedsCtrlAndShift) {
    uint32_t flag = 0;
    EXPECT_EQ(ToggleAdminMode(true, false, &flag), nullptr);
    EXPECT_EQ(flag, 0u);
    EXPECT_STREQ(ToggleAdminMode(true, true, &flag), "ADMIN MODE ON");
    EXPECT_EQ(flag, 1u);
    flag = 5;  // any non-zero value counts as on
    EXPECT_STREQ(ToggleAdminMode(true, true, &flag), "ADMIN MODE OFF");
    EXPECT_EQ(flag, 0u);
    EXPECT_STREQ(ToggleAdminMode(true, true, nullptr), "ADMIN MODE ON");
}

}  // namespace
