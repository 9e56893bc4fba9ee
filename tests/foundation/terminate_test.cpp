#include <foundation/core/diag/terminate.h>

#include <gtest/gtest.h>

namespace {

using foundation::core::diag::terminate;

TEST(TerminateDeathTest, abortsAfterOneLineThatNamesThePlaceTheSignatureAndTheMessage) {
    const boost::source_location location("edit.h", 42, "f");
    EXPECT_EXIT(terminate(location, "void f(int)", "The side is neither left nor right."),
                testing::KilledBySignal(SIGABRT),
                "^edit\\.h:42: void f\\(int\\): The side is neither left nor right\\.\n$");
}

}  // namespace
