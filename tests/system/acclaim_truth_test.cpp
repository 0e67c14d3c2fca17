// One truth for every joint: the skeleton as nulls, as bones and a plain walk of the files agree.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

#include "tests/support/acclaim/acclaim_prediction.h"
#include "tests/support/acclaim/acclaim_probe.h"
#include "tests/support/acclaim/acclaim_random.h"
#include "tests/support/acclaim/acclaim_walk.h"
#include "tests/support/effort.h"
#include "tests/support/files.h"
#include "tests/support/math.h"

namespace {

using namespace support;

// Of the skeleton's size. Near gimbal lock the decomposition rounds a cosine below 1e-5 to 0.
constexpr double kTolerance = 1e-6;
constexpr double kToleranceNearRightAngle = 3e-5;

struct Compared {
    std::size_t joints = 0;
    std::map<std::string, std::size_t> setApart;  // by reason
    double worst = 0.0;                           // of the size, away from right angles

    std::size_t SetApart() const {
        std::size_t count = 0;
        for (const auto& [reason, times] : setApart)
            count += times;
        return count;
    }
    void Add(const Compared& other) {
        joints += other.joints;
        for (const auto& [reason, count] : other.setApart)
            setApart[reason] += count;
        worst = std::max(worst, other.worst);
    }
};

// Rotations of ancestors carry their error down; a file may list a parent after its children.
bool IsNear(const AcclaimPair& pair, const std::vector<bool>& walked,
            const std::vector<bool>& built, std::size_t joint) {
    for (int j = static_cast<int>(joint); j >= 0;
         j = pair.bones[static_cast<std::size_t>(j)].parent)
        if (walked[static_cast<std::size_t>(j)] || built[static_cast<std::size_t>(j)]) return true;
    return false;
}

void CompareFrames(const AcclaimPair& pair, const ProbedSection& section,
                   const std::vector<std::string>& setApart, Compared& total) {
    SectionMotion motion(section);
    for (const AcclaimFrame& frame : pair.frames) {
        const auto expected = pair.At(frame);
        const auto actual = motion.At(frame.number);
        const double size = std::max(expected.size, 1.0);
        for (std::size_t j = 0; j < pair.bones.size(); ++j) {
            ++total.joints;
            if (!setApart[j].empty()) {
                ++total.setApart[setApart[j]];
                continue;
            }
            ASSERT_NE(section.joints[j], 0u) << pair.bones[j].name;
            const bool near = IsNear(pair, expected.nearRightAngle, actual.nearRightAngle, j);
            const double off = Distance(expected.positions[j], actual.positions[j]) / size;
            if (!near) total.worst = std::max(total.worst, off);
            ASSERT_LE(off, near ? kToleranceNearRightAngle : kTolerance)
                << "frame " << frame.number << ", joint " << j << " " << pair.bones[j].name;
        }
    }
}

Compared CompareWithWalk(const std::string& asf, const std::string& amc,
                         const AcclaimOptions& options) {
    Compared total;
    const AcclaimPair pair = ReadAcclaim(asf, amc, {options.length, options.limits});
    const ProbedPair import = ImportAcclaimText(asf, amc, options);
    EXPECT_EQ(import.skeletonStatus, 0) << import.error;
    const std::string failure = PredictFailure(pair, options);
    if (!failure.empty()) {
        EXPECT_LT(import.motionStatus, 0);
        EXPECT_EQ(import.error, failure);
        return total;
    }
    EXPECT_EQ(import.motionStatus, 0) << import.error;
    if (!testing::Test::HasFailure())
        CompareFrames(pair, import.section, PredictSetApart(pair, options), total);
    return total;
}

std::vector<AcclaimOptions> AllOptions() {
    std::vector<AcclaimOptions> all{{.nulls = true}};
    for (const bool fromParent : {true, false})
        for (const bool effector : {false, true})
            all.push_back(
                {.nulls = false, .chainFromParent = fromParent, .effectorToLastBone = effector});
    return all;
}

std::string NameOf(const AcclaimOptions& options) {
    if (options.nulls) return "nulls";
    return std::string("bones") + (options.chainFromParent ? ", from the parent's joint" : "") +
           (options.effectorToLastBone ? ", effector under the last bone" : "");
}

TEST(AcclaimTruth, RandomPairsAgreeInEverySkeleton) {
    Compared all;
    for (std::uint64_t seed = 0; seed < 3000 / support::kShorter; ++seed) {
        const AcclaimTexts texts = RandomAcclaim(seed);
        for (AcclaimOptions options : AllOptions()) {
            SCOPED_TRACE("seed " + std::to_string(seed) + " as " + NameOf(options));
            options.limits = texts.limits;
            options.length = texts.length;
            all.Add(CompareWithWalk(texts.asf, texts.amc, options));
            if (HasFailure()) FAIL() << texts.asf << texts.amc;
        }
    }
    // Most of what is tried must be compared, or the test proves nothing.
    EXPECT_GT(all.joints, 200000u / support::kShorter);
    EXPECT_LT(all.SetApart(), all.joints / 3);
    std::printf("    %zu joints in frames, worst %.1e of the size; set apart:\n", all.joints,
                all.worst);
    for (const auto& [reason, count] : all.setApart)
        std::printf("    %8zu %s\n", count, reason.c_str());
}

struct PairOfFiles {
    const char* name;
    const char* asf;
    const char* amc;
    bool isCapture = true;
};

const PairOfFiles kPairs[] = {
    {"Walk", "walk.asf", "walk.amc", false},
    {"Plain", "08.asf", "08_04.amc"},
    {"Zeros", "08.asf", "zeros.amc"},
    {"CarriageReturns", "11.asf", "11_01.amc"},
    {"FromFrame99", "14.asf", "14.amc"},
    {"Long", "135-martialArts.asf", "135_06-martialArts.amc"},
};

class AcclaimFiles : public testing::TestWithParam<PairOfFiles> {};

TEST_P(AcclaimFiles, AgreeInEverySkeleton) {
    if (GetParam().isCapture && !CaptureFolder()) GTEST_SKIP() << kNoCaptures;
    const std::filesystem::path folder =
        GetParam().isCapture ? *CaptureFolder() / "acclaim" : ZKMOCAP_EXAMPLES_DIR;
    const std::string asf = ReadText(folder / GetParam().asf);
    const std::string amc = ReadText(folder / GetParam().amc);
    for (AcclaimOptions options : AllOptions()) {
        for (const bool metres : {false, true}) {
            SCOPED_TRACE(NameOf(options));
            if (metres) options.length = 0.056444;
            const Compared total = CompareWithWalk(asf, amc, options);
            if (HasFailure()) return;
            EXPECT_EQ(total.SetApart(), 0u);
            std::printf("    %-60s %9zu joints in frames, worst %.1e of the size\n",
                        NameOf(options).c_str(), total.joints, total.worst);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, AcclaimFiles, testing::ValuesIn(kPairs),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
