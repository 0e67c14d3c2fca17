// Makes each call of the host fail once. The failure is reported and leaves a sound scene.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

#include "headless/session.h"
#include "headless/testing.h"
#include "host/status.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using namespace Zelk::status;
using testing::IsEmpty;

enum class Kind { Nulls, Bones, Effectors };

void SetKind(CAcclaimImport& importer, Kind kind) {
    importer.SetOptions(kind == Kind::Nulls, true, kind == Kind::Effectors, true);
}

// Returns the outcome of the skeleton if its import fails, otherwise that of the motion.
Outcome ImportBoth(CAcclaimImport& importer) {
    const Outcome skeleton = ImportSkeleton(importer, kSampleAsf);
    return skeleton.status < 0 ? skeleton : ImportMotion(importer, kSampleAmc);
}

struct FaultRow {
    const char* name;
    const char* operation;
    std::uint64_t call;
    Kind kind;
    const char* message;
    std::int32_t status;  // or kHostStatus
};
// Stands for the status of the host's failure, whatever it is.
constexpr std::int32_t kHostStatus = 1;

const FaultRow kFaults[] = {
    {"Model", "AddModel", 1, Kind::Nulls, "Failed to create main model", kFail},
    {"SceneRoot", "GetActiveSceneRoot", 1, Kind::Nulls, "Failed to create main model", kFail},
    {"BasePose", "AddActionSource", 1, Kind::Nulls, "", kUnexpected},
    {"Null", "AddNull", 3, Kind::Nulls, "Failed to create Null object", kHostStatus},
    {"NullBetweenBones", "AddNull", 2, Kind::Bones, "Failed to create Null object", kHostStatus},
    {"Chain", "Add2DChain", 1, Kind::Bones, "Failed to create 2D chain", kHostStatus},
    {"Bones", "GetBones", 1, Kind::Bones, "", kFail},
    {"Bone", "AddBone", 1, Kind::Bones, "Failed to add bone to chain", kHostStatus},
    {"Effector", "AddChild", 1, Kind::Effectors, "", kHostStatus},
    {"Group", "AddGroup", 1, Kind::Nulls, "Failed to create animated objects group", kHostStatus},
    {"Motion", "AddActionSource", 2, Kind::Nulls, "", kUnexpected},
    {"ScratchProperty", "AddCustomProperty", 1, Kind::Nulls, "Failed to add channel FCurve",
     kHostStatus},
    {"ScratchCurve", "AddFCurveParameter", 1, Kind::Nulls, "Failed to add channel FCurve",
     kHostStatus},
    {"Keys", "SetKeys", 5, Kind::Nulls, "Failed to add channel FCurve", kHostStatus},
    {"BasePoseItem", "AddSourceItem", 2, Kind::Nulls, "", kOk},
    {"MotionItem", "AddSourceItem", 6 * 6 + 1, Kind::Nulls, "Failed to add channel FCurve", kFail},
    {"BasePoseApplied", "ApplyAction", 1, Kind::Nulls, "", kHostStatus},
    {"ScratchDeleted", "DeleteObj", 1, Kind::Nulls, "", kOk},
    {"Bar", "GetProgressBar", 1, Kind::Nulls, "", kOk},
    {"Toolkit", "Create", 1, Kind::Nulls, "", kOk},
};

void PrintTo(const FaultRow& row, std::ostream* out) {
    *out << row.operation << " " << row.call;
}

class HostFaults : public testing::TestWithParam<FaultRow> {};

TEST_P(HostFaults, AreReported) {
    StartSession(true);
    headless::FailOperation(GetParam().operation, GetParam().call);
    CAcclaimImport importer;
    SetKind(importer, GetParam().kind);
    const Outcome outcome = ImportBoth(importer);
    EXPECT_EQ(outcome.message, GetParam().message);
    if (GetParam().status == kHostStatus)
        EXPECT_LT(outcome.status, 0);
    else
        EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.line, 0u);
    EXPECT_THAT(SceneProblems(false), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, HostFaults, testing::ValuesIn(kFaults),
                         [](const auto& row) { return std::string(row.param.name); });

class EveryFault : public testing::TestWithParam<Kind> {};

// Makes each operation fail at each of its calls. After it a second import must succeed.
TEST_P(EveryFault, LeavesASoundScene) {
    for (const std::string_view operation : headless::FaultyOperations()) {
        for (std::uint64_t call = 1;; ++call) {
            StartSession(true);
            headless::FailOperation(operation, call);
            CAcclaimImport importer;
            SetKind(importer, GetParam());
            ImportBoth(importer);
            if (headless::OperationCalls(operation) < call) break;
            EXPECT_TRUE(operation == "PutVisible" || BarIsHidden()) << operation << " " << call;
            headless::ClearFaults();
            EXPECT_EQ(ImportBoth(importer), Outcome()) << operation << " " << call;
            if (HasFailure()) return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryFault, testing::Values(Kind::Nulls, Kind::Effectors));

// The bar's listener throws from event `first` on. The first events come while the bar is created,
// the later ones while it is used.
TEST(LackOfMemory, ForTheBarIsReported) {
    for (const bool hasSkeleton : {false, true}) {
        for (int first = 1; first < 6; ++first) {
            SCOPED_TRACE(first);
            StartSession(true);
            CAcclaimImport importer;
            if (hasSkeleton) {
                ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
            }
            headless::Session::Current().OnBar([left = first](const headless::BarEvent&) mutable {
                if (--left <= 0) throw std::bad_alloc();
            });
            const Outcome outcome = hasSkeleton ? ImportMotion(importer, kSampleAmc)
                                                : ImportSkeleton(importer, kSampleAsf);
            EXPECT_EQ(outcome.message, "Out of memory");
            EXPECT_TRUE(outcome.status == kOutOfMemory || outcome.status == kFail)
                << StatusText(outcome.status);
        }
    }
}

}  // namespace
