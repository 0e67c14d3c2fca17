// Repeats an import; each time another call of another host operation fails.
#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "headless/testing.h"
#include "tests/sweep/known_messages.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

using HostSweep = Sweep;

bool IsOneOf(std::string_view operation, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), operation) != list.end();
}

// The problems of the scene, without those that the fault makes unavoidable. If the call that hides
// the bar fails, the bar stays visible. If the call that deletes the scratch property fails, the
// property stays; it also stays if its bone got no name, because it is deleted by its full name.
std::vector<std::string> Problems(std::string_view operation, bool imported) {
    std::vector<std::string> problems = support::SceneProblems(imported);
    std::erase_if(problems, [operation](const std::string& problem) {
        if (problem == "the bar is still visible") return operation == "PutVisible";
        if (problem.starts_with("a scratch property is left"))
            return IsOneOf(operation, {"DeleteObj", "ExecuteCommand", "GetFullName", "PutName"});
        return false;
    });
    return problems;
}

void CheckOutcome(const Sample& sample, std::string_view operation) {
    EXPECT_EQ(LogProblem(sample, operation == "LogMessage"), "");
    const auto errors = LoggedErrors();
    EXPECT_THAT(Problems(operation, errors.empty()), testing::IsEmpty());
    for (const std::string& error : errors)
        EXPECT_TRUE(error.empty() || KnownMessages().count(error) == 1) << error;
}

TEST_P(HostSweep, IsSurvivedAndReported) {
    std::size_t faults = 0;
    for (const std::string_view operation : headless::FaultyOperations()) {
        for (std::uint64_t n = 1;; ++n) {
            SCOPED_TRACE(std::string(operation) + " " + std::to_string(n));
            run_.Start();
            headless::FailOperation(operation, n);
            run_.Call();
            if (headless::OperationCalls(operation) < n) {
                EXPECT_EQ(SampleRun::Record(), undisturbed_);
                break;
            }
            ++faults;
            headless::ClearFaults();
            CheckOutcome(GetParam(), operation);
            ExpectNextImportUnharmed();
            if (HasFailure()) return;
        }
    }
    EXPECT_GT(faults, 50u);
}

INSTANTIATE_TEST_SUITE_P(, HostSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
