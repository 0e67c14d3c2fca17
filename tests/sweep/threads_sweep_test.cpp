// Repeats an import on several threads, of whole files, of files that end after another byte, and
// with the cancel button pressed at another poll. The host sees the same as on one thread.
#include <cstdlib>

#include "headless/testing.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

class ThreadsSweep : public Sweep {
  protected:
    void TearDown() override { unsetenv("ZKMOCAP_THREADS"); }

    // Imports the files as they are. The button is pressed at this poll; 0: it is not pressed.
    std::string RecordOn(const char* threads, std::uint64_t poll) {
        setenv("ZKMOCAP_THREADS", threads, 1);
        run_.Start();
        if (poll > 0) headless::PressCancelAtPoll(poll);
        run_.Call();
        return SampleRun::Record();
    }

    void ExpectSame(std::uint64_t poll = 0) {
        EXPECT_TRUE(RecordOn("3", poll) == RecordOn("1", poll)) << SampleRun::Record();
    }
};

TEST_P(ThreadsSweep, GivesTheSameForEachCut) {
    const std::size_t first = GetParam().first.size();
    const std::size_t second = GetParam().second.size();
    for (std::size_t n = 0; n <= first && !HasFailure(); ++n) {
        SCOPED_TRACE("first file, byte " + std::to_string(n));
        run_.Cut(n, second);
        ExpectSame();
    }
    for (std::size_t n = 0; n < second && !HasFailure(); ++n) {
        SCOPED_TRACE("second file, byte " + std::to_string(n));
        run_.Cut(first, n);
        ExpectSame();
    }
}

TEST_P(ThreadsSweep, GivesTheSameForEachPoll) {
    for (std::uint64_t poll = 1; !HasFailure(); ++poll) {
        SCOPED_TRACE("poll " + std::to_string(poll));
        ExpectSame(poll);
        if (headless::CancelPolls() < poll) break;
    }
}

INSTANTIATE_TEST_SUITE_P(, ThreadsSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
