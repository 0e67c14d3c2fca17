// Repeats an import; each time another allocation of the plug-in fails.
#include <algorithm>
#include <map>

#include "tests/support/core/session_text.h"
#include "tests/sweep/allocation_faults.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

using AllocationSweep = Sweep;

long CommandsNamed(const std::string& name) {
    const support::Lines lines = support::CommandLines();
    return std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.find(name) != std::string::npos;
    });
}

TEST_P(AllocationSweep, IsSurvivedAndReported) {
    std::map<std::string, int> outcomes;
    int withoutClip = 0;
    for (std::uint64_t n = 1;; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        run_.Start();
        FailAllocationsOf(SampleRun::PluginAddress(), {n, 1});
        run_.Call();
        const std::uint64_t allocations = EndAllocationFaults();
        if (allocations < n) {
            EXPECT_EQ(SampleRun::Record(), undisturbed_);
            EXPECT_GT(n, 10u) << "hardly anything was allocated";
            break;
        }
        EXPECT_EQ(LogProblem(GetParam(), false), "");
        const auto errors = LoggedErrors();
        EXPECT_THAT(Problems(errors.empty()), testing::IsEmpty());
        withoutClip += CommandsNamed("AddClip") == 0;
        ++outcomes[errors.empty() ? "success" : errors.front()];
        for (const std::string& error : errors)
            EXPECT_THAT(kMessagesWithoutMemory, testing::Contains(error));
        ExpectNextImportUnharmed();
        if (HasFailure()) return;
    }
    // The command for a clip is run after failed imports, too.
    if (GetParam().clip) {
        EXPECT_EQ(withoutClip, 0);
    }
    for (const auto& [outcome, count] : outcomes)
        RecordProperty(outcome.empty() ? "none" : outcome, count);
}

INSTANTIATE_TEST_SUITE_P(, AllocationSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
