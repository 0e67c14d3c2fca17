// Runs a whole command again and again; each time another call of the host fails.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "headless/testing.h"
#include "plugin/contract.h"
#include "tests/bvh/samples.h"
#include "tests/plugin/plugin_library.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace host_failure_test {

using namespace plugin::biovision;
using plugin::kBiovisionCommand;
using plugin::kFalse;
using plugin::kTrue;
using plugin_test::Biovision;
using plugin_test::Call;
using support::Lines;

// The log is complete, except for the one line that is missing if LogMessage failed.
void CheckLog(std::string_view operation) {
    const Lines lines = support::LogLines();
    if (operation == "LogMessage") {
        EXPECT_EQ(lines.size(), 1u);
        return;
    }
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "-: Importing Biovision BVH File...");
    EXPECT_TRUE(lines[1] == "8: Imported 1 model successfully" ||
                lines[1].starts_with("8: ERROR: "))
        << lines[1];
}

// "AddClip" gets the model and its motion if the import succeeded, and empty references otherwise.
void CheckClip(std::string_view operation) {
    if (operation == "LogMessage" || operation == "ExecuteCommand" || operation == "GetName" ||
        operation == "GetFullName")
        return;
    const bool imported = support::LogLines().back() == "8: Imported 1 model successfully";
    const std::string expected =
        imported ? "AddClip(walk, walk.walk_Motion, -, -, -, -)" : "AddClip(-, -, -, -, -, -)";
    EXPECT_THAT(support::CommandLines().back(), testing::StartsWith(expected));
}

TEST(PluginHostFailure, IsLoggedAndNeverReturned) {
    const support::TemporaryFolder dir;
    const std::wstring path = plugin_test::Wide(dir.Write("walk.bvh", bvh_test::kChain));
    for (const std::uint16_t nulls : {kTrue, kFalse}) {
        for (const std::string_view operation : headless::FaultyOperations()) {
            for (std::uint64_t call = 1;; ++call) {
                SCOPED_TRACE(std::string(operation) + " " + std::to_string(call));
                support::StartSession(true);
                headless::FailOperation(operation, call);
                EXPECT_EQ(Call(kBiovisionCommand, Biovision(path)
                                                      .Word(kAddClip, kTrue)
                                                      .Word(kUseNulls, nulls)
                                                      .Word(kCreateGroup, kTrue)),
                          0u);
                if (headless::OperationCalls(operation) < call) break;
                CheckLog(operation);
                CheckClip(operation);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

}  // namespace host_failure_test
