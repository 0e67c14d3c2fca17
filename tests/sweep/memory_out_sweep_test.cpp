// Repeats an import; each time memory runs out at another allocation of the plug-in or the host,
// for that one, for a few in a row, or for all that follow.
#include "headless/testing.h"
#include "tests/support/core/session_text.h"
#include "tests/support/effort.h"
#include "tests/sweep/allocation_faults.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

class MemoryOutSweep : public Sweep {
  protected:
    // Repeats the import; `count` allocations in a row fail, each time from another one on: from
    // every `step`-th one.
    void SweepOver(std::uint64_t count, std::uint64_t step = 1) {
        std::uint64_t withoutClip = 0;
        for (std::uint64_t n = 1; !HasFailure(); n += step) {
            SCOPED_TRACE(std::to_string(count) + " from allocation " + std::to_string(n) + " on");
            run_.Start();
            FailAllocations({n, count});
            const std::uint32_t result = run_.Call();
            if (EndAllocationFaults() < n) {
                EXPECT_EQ(SampleRun::Record(), undisturbed_);
                EXPECT_GT(n, 100u) << "hardly anything was allocated";
                break;
            }
            EXPECT_EQ(result, 0u);
            CheckOutcome();
            withoutClip += headless::OperationCalls("AddClip") == 0;
            ExpectNextImportUnharmed();
        }
        // The plug-in makes the command for a clip right after it has copied its arguments. It runs
        // that command whatever happens later.
        if (GetParam().clip) {
            EXPECT_LE(withoutClip, 4u);
        }
    }

  private:
    // Lines of the log may be missing, and so may the result. What exists must be right.
    static void CheckOutcome() {
        EXPECT_EQ(LogProblem(GetParam(), true), "") << testing::PrintToString(support::LogLines());
        for (const std::string& error : LoggedErrors())
            EXPECT_THAT(kMessagesWithoutMemory, testing::Contains(error));
        EXPECT_THAT(Problems(false), testing::IsEmpty());
    }
};

TEST_P(MemoryOutSweep, FromEveryAllocationOn) {
    SweepOver(kUnlimited);
}

TEST_P(MemoryOutSweep, ForOneAllocation) {
    SweepOver(1);
}

TEST_P(MemoryOutSweep, ForTwoInARow) {
    SweepOver(2, support::kShorter);
}

TEST_P(MemoryOutSweep, ForThreeInARow) {
    SweepOver(3, support::kShorter);
}

TEST_P(MemoryOutSweep, ForFourInARow) {
    SweepOver(4, support::kShorter);
}

INSTANTIATE_TEST_SUITE_P(, MemoryOutSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
