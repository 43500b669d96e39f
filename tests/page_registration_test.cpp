// Tests of which document pages a sheet gets and in which order.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "entry/page_registration.h"

namespace {

std::vector<int> Ids(const std::vector<PageRegistration>& pages) {
    std::vector<int> ids;
    for (const PageRegistration& p : pages)
        ids.push_back(p.dialogId);
    return ids;
}

TEST(PageRegistration, ConditionsPerFlag) {
    struct Case {
        std::vector<int> setFlags;
        bool admin;
        std::vector<int> ids;
    };
    const std::vector<int> always = {9, 108, 107, 114, 113, 111, 110};
    const Case cases[] = {
        {{}, false, always},
        {{}, true, {9, 108, 107, 114, 113, 111, 116, 110}},
        {{7}, false, {9, 108, 109, 107, 114, 113, 111, 110}},
        {{2}, false, {9, 108, 109, 107, 114, 113, 111, 110}},
        {{5}, false, {9, 108, 109, 107, 114, 113, 111, 110}},
        {{6}, false, {9, 108, 109, 107, 114, 113, 111, 110}},
        {{3}, false, {9, 108, 117, 107, 114, 113, 111, 110}},
        {{4}, false, {9, 108, 117, 107, 114, 113, 111, 110}},
        {{0}, false, {9, 108, 112, 107, 114, 113, 111, 110}},
        {{1}, false, {9, 108, 112, 107, 114, 113, 111, 110}},
        {{8}, false, {9, 108, 115, 107, 114, 113, 111, 110}},
        {{9}, false, {9, 108, 115, 107, 114, 113, 111, 110}},
        {{10}, false, {9, 108, 115, 107, 114, 113, 111, 110}},
        {{0, 2, 3, 8}, true, {9, 108, 109, 117, 112, 115, 107, 114, 113, 111, 116, 110}},
    };
    for (const Case& c : cases) {
        std::array<uint8_t, kCapabilityFlagCount> flags{};
        for (int f : c.setFlags)
            flags[f] = 1;
        SCOPED_TRACE(testing::Message()
                     << "flags " << testing::PrintToString(c.setFlags) << " admin " << c.admin);
        EXPECT_EQ(c.ids, Ids(PagesToRegister(flags.data(), c.admin)));
    }
}

TEST(PageRegistration, NoCapabilityObjectAddsEveryConditionalPage) {
    EXPECT_EQ((std::vector<int>{9, 108, 109, 117, 112, 115, 107, 114, 113, 111, 116, 110}),
              Ids(PagesToRegister(nullptr, true)));
    EXPECT_EQ(11u, PagesToRegister(nullptr, false).size());
}

TEST(PageRegistration, LogTextsNameTheDialogs) {
    const auto& table = PageRegistrationTable();
    ASSERT_EQ(12u, table.size());
    EXPECT_STREQ("Added IDD_PROPPAGE_DOC_PRINT", table[0].logText);
    EXPECT_STREQ("Added IDD_PROPPAGE_DOC_CUTMODE", table[2].logText);
    EXPECT_STREQ("Added IDD_PROPPAGE_DOC_VERSION", table[11].logText);
}

}  // namespace
