// Memory that stays out: from the n-th allocation on, or for a few in a row, the plug-in's and the
// host's alike.
#include "headless/testing.h"
#include "tests/support/core/session_text.h"
#include "tests/sweep/allocation_faults.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

class MemoryOutSweep : public Sweep {
  protected:
    // Fails so many allocations in a row at every place of an import.
    void SweepOver(std::uint64_t count) {
        std::uint64_t withoutClip = 0;
        for (std::uint64_t n = 1; !HasFailure(); ++n) {
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
        // What asks for a clip is made right after the arguments were copied. From then on nothing
        // keeps it from being asked for.
        if (GetParam().clip) {
            EXPECT_LE(withoutClip, 4u);
        }
    }

  private:
    // Lines may be lost, and so may the result. What is there must be true.
    static void CheckOutcome() {
        EXPECT_EQ(LogProblem(GetParam(), true), "") << testing::PrintToString(support::LogLines());
        for (const std::string& error : LoggedErrors())
            EXPECT_THAT(kMessagesWithoutMemory, testing::Contains(error));
        EXPECT_THAT(Problems(false), testing::IsEmpty());
    }
};

TEST_P(MemoryOutSweep, FromEveryAllocationOn) {
    SweepOver(kForGood);
}

TEST_P(MemoryOutSweep, ForOneAllocation) {
    SweepOver(1);
}

TEST_P(MemoryOutSweep, ForTwoInARow) {
    SweepOver(2);
}

TEST_P(MemoryOutSweep, ForThreeInARow) {
    SweepOver(3);
}

TEST_P(MemoryOutSweep, ForFourInARow) {
    SweepOver(4);
}

INSTANTIATE_TEST_SUITE_P(, MemoryOutSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
