// Makes each call of the host fail once, and checks what the import reports and leaves in the
// scene.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "headless/testing.h"
#include "tests/bvh/host_failures.h"
#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"

namespace {

using bvh_test::HostFailure;
using bvh_test::Importer;
using bvh_test::kAllOptions;
using bvh_test::kHostFailures;
using bvh_test::Options;
using support::StatusText;
using testing::IsEmpty;

// Returns whether a row lists this failure, and adds that row to `reached`.
bool IsListed(std::string_view operation, const std::string& message, const std::string& status,
              std::set<const HostFailure*>& reached) {
    for (const HostFailure& row : kHostFailures) {
        if (operation != row.operation || message != row.message || status != row.status) continue;
        reached.insert(&row);
        return true;
    }
    return false;
}

// Returns whether the operation is needed to hide the bar or to delete the scratch property. If it
// fails, the bar stays visible or the property stays in the scene.
bool IsCleanup(std::string_view operation) {
    return operation == "PutVisible" || operation == "DeleteObj" || operation == "ExecuteCommand" ||
           operation == "GetFullName";
}

void CheckFault(std::string_view operation, const Importer& importer, std::int32_t status,
                std::set<const HostFailure*>& reached) {
    EXPECT_FALSE(importer.WasParsing());
    EXPECT_THAT(importer.Nodes(), IsEmpty());
    if (!IsCleanup(operation)) {
        EXPECT_THAT(support::SceneProblems(status == 0), IsEmpty());
    }
    if (status != 0) {
        EXPECT_TRUE(IsListed(operation, importer.Message(), StatusText(status), reached))
            << StatusText(status) << " '" << importer.Message() << "'";
    }
}

TEST(BvhHostFailure, OfEachCallIsReportedAsTheTableSays) {
    const support::TemporaryFolder dir;
    const std::string path = dir.Write("walk.bvh", bvh_test::kTree);
    std::set<const HostFailure*> reached;
    for (const Options& options : kAllOptions) {
        for (const std::string_view operation : headless::FaultyOperations()) {
            for (std::uint64_t call = 1;; ++call) {
                SCOPED_TRACE(std::string(operation) + " " + std::to_string(call));
                support::StartSession(true);
                headless::FailOperation(operation, call);
                Importer importer(options);
                const std::int32_t status = importer.ImportFile(path);
                if (headless::OperationCalls(operation) < call) {
                    EXPECT_EQ(status, 0);
                    break;
                }
                EXPECT_EQ(importer.GetModelsCount(), status == 0 ? 1u : 0u);
                CheckFault(operation, importer, status, reached);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
    for (const HostFailure& row : kHostFailures)
        EXPECT_EQ(reached.count(&row), 1u)
            << row.operation << " never gave '" << row.message << "'";
}

// Whatever fails in the second section, the last model, pose and motion are those of the first.
TEST(BvhHostFailure, InASecondSectionLeavesTheFirst) {
    const support::TemporaryFolder dir;
    const std::string path = dir.Write("walk.bvh", bvh_test::kChain + bvh_test::kTree);
    for (const bool nulls : {true, false}) {
        for (const std::string_view operation : headless::FaultyOperations()) {
            for (std::uint64_t call = 1;; ++call) {
                SCOPED_TRACE(std::string(operation) + " " + std::to_string(call));
                support::StartSession(true);
                headless::FailOperation(operation, call);
                Importer importer({nulls});
                const std::int32_t status = importer.ImportFile(path);
                if (headless::OperationCalls(operation) < call) break;
                if (status == 0 || importer.GetModelsCount() == 0) continue;
                headless::ClearFaults();
                EXPECT_EQ(support::Utf8(importer.GetLastModel().GetName()), "walk");
                EXPECT_EQ(support::Utf8(importer.GetLastMotion().GetParent().GetName()), "walk");
                EXPECT_TRUE(importer.GetLastBasePose().IsValid());
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

// The bar's listener throws from event `first` on. The first events come while the bar is created,
// the later ones while it is used.
TEST(BvhHostFailure, OfTheBarThroughLackOfMemoryIsReported) {
    for (int first = 1; first < 8; ++first) {
        SCOPED_TRACE(first);
        support::StartSession(true);
        headless::Session::Current().OnBar([left = first](const headless::BarEvent&) mutable {
            if (--left <= 0) throw std::bad_alloc();
        });
        Importer importer;
        const std::int32_t status = importer.Import(bvh_test::kTree);
        EXPECT_EQ(StatusText(status), importer.WasParsing() ? "0x80004005" : "0x8007000E");
        EXPECT_EQ(importer.Message(), "Out of memory");
        EXPECT_THAT(importer.Nodes(), IsEmpty());
    }
}

}  // namespace
