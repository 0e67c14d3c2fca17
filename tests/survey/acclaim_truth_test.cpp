// Surveys and imports random pairs, and compares every joint's position with forward kinematics
// that reads the original files by the format's own rules.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>

#include "survey/survey.h"
#include "tests/support/acclaim/acclaim_prediction.h"
#include "tests/support/acclaim/acclaim_probe.h"
#include "tests/support/acclaim/acclaim_random.h"
#include "tests/support/acclaim/acclaim_walk.h"
#include "tests/support/effort.h"
#include "tests/support/math.h"
#include "tests/survey/acclaim_case.h"

namespace {

using namespace support;

// As parts of the figure's size.
constexpr double kTolerance = 1e-9;
constexpr double kToleranceOfBones = 1e-6;
constexpr double kToleranceNearRightAngle = 3e-5;

// Reads the pair by the format's rules, with lengths multiplied by `factor`.
AcclaimPair ReadAsMeant(const AcclaimTexts& texts, double factor) {
    AcclaimPair pair = ReadAcclaim(texts.asf, texts.amc, {factor, texts.limits});
    pair.axesAsListed = true;
    for (AcclaimBone& bone : pair.bones) {
        for (double& component : bone.position)
            component *= factor;
        const double size = Length(bone.direction);
        const bool hasLength = bone.length != 0.0 || bone.AnimatesLength();
        if (!hasLength || size == 0.0 || std::fabs(size - 1.0) <= 0.02) continue;
        for (double& component : bone.direction)
            component /= size;
    }
    return pair;
}

bool IsNearRightAngle(const AcclaimPair& pair, const std::vector<bool>& walked, std::size_t joint) {
    for (int j = static_cast<int>(joint); j >= 0;
         j = pair.bones[static_cast<std::size_t>(j)].parent)
        if (walked[static_cast<std::size_t>(j)]) return true;
    return false;
}

struct Compared {
    std::size_t joints = 0;
    std::size_t refused = 0;
    std::size_t failed = 0;
    std::size_t mendedSkeletons = 0;
    std::size_t mendedMotions = 0;
    double worst = 0.0;
};

void CompareFrames(const AcclaimPair& meant, const AcclaimPair& handed,
                   const ProbedSection& section, const std::vector<std::string>& setApart,
                   double tolerance, Compared& total) {
    std::map<std::string, std::size_t> joints;
    for (std::size_t j = 0; j < handed.bones.size(); ++j)
        joints[handed.bones[j].name] = j;
    SectionMotion motion(section);
    for (const AcclaimFrame& frame : meant.frames) {
        const auto expected = meant.At(frame);
        const auto actual = motion.At(frame.number);
        const double size = std::max(expected.size, 1.0);
        for (std::size_t j = 0; j < meant.bones.size(); ++j) {
            ASSERT_EQ(joints.count(meant.bones[j].name), 1U) << meant.bones[j].name;
            const std::size_t k = joints[meant.bones[j].name];
            if (!setApart[k].empty()) continue;
            const bool near = IsNearRightAngle(meant, expected.nearRightAngle, j) ||
                              IsNearRightAngle(handed, actual.nearRightAngle, k);
            const double off = Distance(expected.positions[j], actual.positions[k]) / size;
            if (!near) total.worst = std::max(total.worst, off);
            ++total.joints;
            ASSERT_LE(off, near ? kToleranceNearRightAngle : tolerance)
                << "frame " << frame.number << ", joint " << meant.bones[j].name;
        }
    }
}

void Compare(const AcclaimTexts& texts, bool nulls, Compared& total) {
    survey::Options options = acclaim_case::For(survey::Purpose::Import);
    options.bones = !nulls;
    options.lengthMultiplier = texts.length;
    options.preset = survey::Preset::None;
    const auto found = acclaim_case::Survey(texts.asf, texts.amc, options);
    if (found.skeleton.Has(survey::Severity::Error)) {
        ++total.refused;
        return;
    }
    ASSERT_FALSE(found.motions[0].Has(survey::Severity::Error))
        << found.motions[0].findings[0].message;
    const std::string asf = found.skeleton.mended ? found.skeleton.mended->Text() : texts.asf;
    const std::string amc = found.motions[0].mended ? found.motions[0].mended->Text() : texts.amc;
    total.mendedSkeletons += found.skeleton.mended != nullptr ? 1 : 0;
    total.mendedMotions += found.motions[0].mended != nullptr ? 1 : 0;

    const AcclaimPair meant = ReadAsMeant(texts, found.lengthMultiplier.value_or(1.0));
    const AcclaimPair handed = ReadAcclaim(asf, amc, {found.lengthMultiplier, texts.limits});
    AcclaimOptions how;
    how.nulls = nulls;
    how.limits = texts.limits;
    how.length = found.lengthMultiplier;
    const std::string failure = PredictFailure(handed, how);
    const ProbedPair import = ImportAcclaimText(asf, amc, how);
    ASSERT_EQ(import.skeletonStatus, 0) << import.error << asf;
    if (!failure.empty()) {
        EXPECT_FALSE(nulls) << failure;
        ++total.failed;
        return;
    }
    ASSERT_EQ(import.motionStatus, 0) << import.error << asf << amc;
    const auto setApart = PredictSetApart(handed, how);
    for (const std::string& reason : setApart)
        EXPECT_EQ(reason, "");
    CompareFrames(meant, handed, import.section, setApart, nulls ? kTolerance : kToleranceOfBones,
                  total);
}

// Whether a length that keeps one value may become the bone's own length: if the bone has several
// children or, for bone chains, if it is too short at rest. Its limits are then lost.
bool MayFoldLength(const AcclaimTexts& texts, bool nulls) {
    const AcclaimPair pair = ReadAcclaim(texts.asf, texts.amc, {});
    return std::any_of(pair.bones.begin(), pair.bones.end(), [&](const AcclaimBone& bone) {
        return bone.AnimatesLength() && (bone.children > 1 || !nulls);
    });
}

TEST(SurveyTruth, RandomPairsAreWhereTheFormatPutsThem) {
    for (const bool nulls : {true, false}) {
        Compared total;
        for (std::uint64_t seed = 0; seed < 1000 / support::kShorter; ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed) + (nulls ? " as nulls" : " as bones"));
            AcclaimTexts texts = RandomAcclaim(seed);
            if (MayFoldLength(texts, nulls)) texts.limits = false;
            Compare(texts, nulls, total);
            if (HasFailure()) FAIL() << texts.asf << texts.amc;
        }
        EXPECT_GT(total.joints, 10000U / support::kShorter);
        EXPECT_GT(total.mendedSkeletons, 0U);
        RecordProperty(nulls ? "worst_nulls" : "worst_bones", std::to_string(total.worst));
    }
}

}  // namespace
