// Tests of Guarded: whatever the body throws becomes the failure value and one level-2 line.
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "fake_log_ports.h"
#include "infra/guarded.h"

namespace {

TEST(GuardedTest, ThrowsBecomeTheFailureValueAndOneErrorLine) {
    struct Case {
        void (*body)();
        const char* line;
    };
    const Case cases[] = {
        {[] { throw std::bad_alloc(); }, "[Entry] exception caught: std::bad_alloc"},
        {[] { throw std::runtime_error("broken"); }, "[Entry] exception caught: broken"},
        {[] { throw 42; }, "[Entry] exception caught: unknown exception"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        ScopedTestLog log(kLogError);
        EXPECT_EQ(-5, Guarded("IOemUI::Entry", -5, [&] {
            c.body();
            return 1;
        }));
        EXPECT_EQ(log.Bodies(), std::vector<std::string>{c.line});
    }
    ScopedTestLog log(kLogError);
    EXPECT_EQ(7, Guarded("IOemUI::Entry", -5, [] { return 7; }));
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
