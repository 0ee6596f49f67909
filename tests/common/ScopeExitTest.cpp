#include <gtest/gtest.h>

#include <new>
#include <string>

#include "common/Error.h"
#include "common/ScopeExit.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

TEST(ScopeExit, DoesItsWorkHoweverTheScopeIsLeft) {
    std::string done;
    const auto leave = [&done](auto body) {
        const ScopeExit end([&done] { done += "end "; });
        body();
        done += "body ";
    };
    leave([] {});
    EXPECT_THROW(leave([] { throw Error(1); }), Error);
    EXPECT_THROW(leave([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(done, "body end end end ");
}

TEST(ScopeExit, ReportsItsOwnFailureUnlessAnotherCameFirst) {
    const auto leave = [](bool fails) {
        const ScopeExit end([] { throw Error(2); });
        if (fails) {
            throw Error(1);
        }
    };
    const auto numberOf = [&leave](bool fails) { return ErrorNumberOf([&] { leave(fails); }); };
    EXPECT_EQ(numberOf(false), 2);
    EXPECT_EQ(numberOf(true), 1);
    // Also while another exception is being handled already.
    try {
        throw Error(3);
    } catch (const Error&) {
        EXPECT_EQ(numberOf(false), 2);
    }
}

}  // namespace
}  // namespace krv::tests
