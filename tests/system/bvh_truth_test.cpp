// The position of every joint is the same in a skeleton of nulls, in one of bones, and in a simple
// evaluation of the file.
#include <filesystem>
#include <gtest/gtest.h>

#include "tests/support/bvh_probe.h"
#include "tests/support/bvh_random.h"
#include "tests/support/bvh_walk.h"
#include "tests/support/chain_prediction.h"
#include "tests/support/effort.h"
#include "tests/support/files.h"
#include "tests/support/math.h"

namespace {

using namespace support;

// Relative to the skeleton's size. Near gimbal lock the importer rounds a cosine below 1e-5 to 0.
constexpr double kTolerance = 1e-6;
constexpr double kToleranceNearRightAngle = 3e-5;

struct Compared {
    std::size_t joints = 0;
    std::size_t setApart = 0;
    double worst = 0.0;  // relative to the size, without joints near right angles
};

// A joint is affected if its own rotation or that of an ancestor is near a right angle.
std::vector<bool> NearRightAngle(const WalkFile& file, const std::vector<bool>& own) {
    std::vector<bool> near(own);
    for (std::size_t j = 0; j < near.size(); ++j) {
        const int parent = file.joints[j].parent;
        if (parent >= 0 && near[static_cast<std::size_t>(parent)]) near[j] = true;
    }
    return near;
}

void CompareSection(const WalkFile& file, const ProbedSection& section,
                    const std::vector<JointPrediction>& predictions, Compared& total) {
    SectionMotion motion(section);
    const double size = std::max(file.Size(), 1.0);
    for (std::size_t frame = 0; frame < file.frames.size(); ++frame) {
        const auto expected = file.Positions(frame);
        const auto actual = motion.At(static_cast<double>(frame + 1));
        const auto near = NearRightAngle(file, actual.nearRightAngle);
        for (std::size_t j = 0; j < expected.size(); ++j) {
            ++total.joints;
            if (!predictions[j].setApart.empty()) {
                ++total.setApart;
                continue;
            }
            ASSERT_NE(section.joints[j], 0u) << file.joints[j].name;
            const double off = Distance(expected[j], actual.positions[j]) / size;
            if (!near[j]) total.worst = std::max(total.worst, off);
            ASSERT_LE(off, near[j] ? kToleranceNearRightAngle : kTolerance)
                << "frame " << frame + 1 << ", joint " << j << " " << file.joints[j].name;
        }
    }
}

Compared CompareWithWalk(const std::string& text, const ImportOptions& options) {
    Compared total;
    const std::vector<WalkFile> files = ReadBvh(text);
    const ProbedImport import = ImportBvhText(text, options);
    for (std::size_t s = 0; s < files.size(); ++s) {
        const WalkFile& file = files[s];
        std::vector<JointPrediction> predictions(file.joints.size());
        if (!options.nulls) predictions = PredictChains(file, options.chainFromParent);
        if (PredictFailure(file, predictions)) {
            EXPECT_LT(import.status, 0);
            EXPECT_EQ(import.error, "Failed to add channel FCurve");
            EXPECT_EQ(import.sections.size(), s);
            return total;
        }
        if (import.sections.size() <= s) {
            ADD_FAILURE() << "section " << s << " failed: " << import.error;
            return total;
        }
        CompareSection(file, import.sections[s], predictions, total);
        if (testing::Test::HasFatalFailure()) return total;
    }
    return total;
}

std::vector<ImportOptions> AllOptions() {
    std::vector<ImportOptions> all{{.nulls = true}};
    for (const bool fromParent : {true, false})
        for (const bool effector : {false, true})
            all.push_back({false, fromParent, effector});
    return all;
}

std::string NameOf(const ImportOptions& options) {
    if (options.nulls) return "nulls";
    return std::string("bones") + (options.chainFromParent ? ", from the parent's joint" : "") +
           (options.effectorToLastBone ? ", effector under the last bone" : "");
}

TEST(BvhTruth, RandomTreesAgreeInEverySkeleton) {
    std::size_t compared = 0;
    std::size_t setApart = 0;
    for (std::uint64_t seed = 0; seed < 2000 / support::kShorter; ++seed) {
        const std::string text = RandomBvh(seed);
        for (const ImportOptions& options : AllOptions()) {
            SCOPED_TRACE("seed " + std::to_string(seed) + " as " + NameOf(options));
            const Compared total = CompareWithWalk(text, options);
            if (HasFailure()) FAIL() << text;
            compared += total.joints;
            setApart += total.setApart;
        }
    }
    // The test proves something only if most joints are compared.
    EXPECT_GT(compared, 100000u / support::kShorter);
    EXPECT_LT(setApart, compared / 5);
    RecordProperty("joints", std::to_string(compared));
    RecordProperty("setApart", std::to_string(setApart));
}

class BvhFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(BvhFile, AgreesInEverySkeleton) {
    const std::string text = ReadText(GetParam().string());
    for (const ImportOptions& options : AllOptions()) {
        SCOPED_TRACE(NameOf(options));
        const Compared total = CompareWithWalk(text, options);
        std::printf("    %-60s %9zu joints in frames, %6zu set apart, worst %.1e of the size\n",
                    NameOf(options).c_str(), total.joints, total.setApart, total.worst);
    }
}

// The reader accepts an end site only if its keywords are the two words "End" and "Site".
bool IsRefused(const std::filesystem::path& file) {
    return ReadText(file.string()).find("End Site-") != std::string::npos;
}

std::vector<std::filesystem::path> Files(bool refused) {
    std::vector<std::filesystem::path> files;
    if (!refused) files.push_back(std::filesystem::path(ZKMOCAP_EXAMPLES_DIR) / "walk.bvh");
    if (!CaptureFolder()) return files;
    for (const auto& file : FilesIn(*CaptureFolder() / "bvh", ".bvh"))
        if (IsRefused(file) == refused) files.push_back(file);
    return files;
}

std::string TestName(const testing::TestParamInfo<std::filesystem::path>& row) {
    std::string name = row.param.stem().string();
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(, BvhFile, testing::ValuesIn(Files(false)), TestName);

class RefusedBvhFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(RefusedBvhFile, FailsAtTheEndSite) {
    const ProbedImport import = ImportBvhText(ReadText(GetParam().string()), {});
    EXPECT_LT(import.status, 0);
    EXPECT_EQ(import.error, "Invalid BVH token found");
}

INSTANTIATE_TEST_SUITE_P(, RefusedBvhFile, testing::ValuesIn(Files(true)), TestName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RefusedBvhFile);

}  // namespace
