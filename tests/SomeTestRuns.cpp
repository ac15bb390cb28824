#include <gtest/gtest.h>

namespace {

// A filter that no test matches is a failure.
struct SomeTestRuns : testing::EmptyTestEventListener {
    void OnTestIterationStart(const testing::UnitTest& tests, int /*iteration*/) override {
        EXPECT_GT(tests.test_to_run_count(), 0) << "no test for " << GTEST_FLAG_GET(filter);
    }
};

const bool Listens = // NOLINT(cert-err58-cpp): before main
    (testing::UnitTest::GetInstance()->listeners().Append(new SomeTestRuns), true);

} // namespace
