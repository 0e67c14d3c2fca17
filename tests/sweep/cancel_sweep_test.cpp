// Repeats an import; each time the cancel button is pressed at another poll.
#include "headless/testing.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

using CancelSweep = Sweep;

TEST_P(CancelSweep, EndsTheImportAtEachPoll) {
    for (std::uint64_t n = 1;; ++n) {
        SCOPED_TRACE("poll " + std::to_string(n));
        run_.Start();
        headless::PressCancelAtPoll(n);
        run_.Call();
        if (headless::CancelPolls() < n) {
            EXPECT_EQ(SampleRun::Record(), undisturbed_);
            EXPECT_GT(n, 1u) << "nobody looked at the button";
            break;
        }
        EXPECT_EQ(LogProblem(GetParam(), false), "");
        EXPECT_THAT(LoggedErrors(), testing::ElementsAre("User cancelled command"));
        EXPECT_THAT(Problems(false), testing::IsEmpty());
        // The button is not polled again after it was pressed.
        EXPECT_EQ(headless::CancelPolls(), n);
        ExpectNextImportUnharmed();
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(, CancelSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
