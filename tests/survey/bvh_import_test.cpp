// Surveys and imports texts, and compares every joint's position with forward kinematics (the
// "walk") that reads the original text by the format's own rules: first that of the mended text, or
// of the original if it is not mended, then that of the plug-in's import.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "survey/survey.h"
#include "tests/support/bvh_probe.h"
#include "tests/support/bvh_random.h"
#include "tests/support/bvh_walk.h"
#include "tests/support/chain_prediction.h"
#include "tests/support/effort.h"
#include "tests/support/files.h"
#include "tests/support/math.h"

namespace {

using namespace support;

// Tolerances as parts of the figure's size. Positions that become offsets may vary a little. Near
// gimbal lock the import rounds a cosine below 1e-5 to 0.
constexpr double kMended = 1e-9;
constexpr double kFolded = 1e-5;
constexpr double kImported = 1e-6;
constexpr double kImportedNearRightAngle = 3e-5;

// For each joint of the original, its index in the mended text. If end sites were added there, one
// follows each joint without children.
std::vector<std::size_t> MendedIndexes(const WalkFile& original, const WalkFile& mended) {
    std::vector<bool> ends(original.joints.size(), true);
    for (const WalkJoint& joint : original.joints)
        if (joint.parent >= 0) ends[static_cast<std::size_t>(joint.parent)] = false;
    const bool added = mended.joints.size() != original.joints.size();
    std::vector<std::size_t> indexes;
    std::size_t next = 0;
    for (std::size_t i = 0; i < original.joints.size(); ++i) {
        indexes.push_back(next++);
        if (added && ends[i] && !original.joints[i].isEndSite) ++next;
    }
    return indexes;
}

bool ComparesWalks(const WalkFile& original, const WalkFile& mended, double bound) {
    const auto indexes = MendedIndexes(original, mended);
    const double size = std::max(original.Size(), 1.0);
    if (mended.frames.size() != original.frames.size()) return false;
    for (std::size_t frame = 0; frame < original.frames.size(); ++frame) {
        const auto expected = original.Positions(frame, false);
        // By the plug-in's rule for the order of rotations.
        const auto actual = mended.Positions(frame, true);
        for (std::size_t joint = 0; joint < expected.size(); ++joint)
            if (Distance(expected[joint], actual.at(indexes[joint])) > bound * size) return false;
    }
    return true;
}

std::vector<bool> NearRightAngle(const WalkFile& file, std::vector<bool> near) {
    for (std::size_t j = 0; j < near.size(); ++j) {
        const int parent = file.joints[j].parent;
        if (parent >= 0 && near[static_cast<std::size_t>(parent)]) near[j] = true;
    }
    return near;
}

// Compares the import of the mended text with the walk of the original.
void CompareImport(const WalkFile& original, const WalkFile& mended, const ProbedSection& section,
                   const std::vector<JointPrediction>& predictions) {
    SectionMotion motion(section);
    const auto indexes = MendedIndexes(original, mended);
    const double size = std::max(original.Size(), 1.0);
    for (std::size_t frame = 0; frame < original.frames.size(); ++frame) {
        const auto expected = original.Positions(frame, false);
        const auto actual = motion.At(static_cast<double>(frame + 1));
        const auto near = NearRightAngle(mended, actual.nearRightAngle);
        for (std::size_t joint = 0; joint < expected.size(); ++joint) {
            const std::size_t index = indexes[joint];
            if (!predictions[index].setApart.empty()) continue;
            ASSERT_NE(section.joints[index], 0U) << original.joints[joint].name;
            ASSERT_LE(Distance(expected[joint], actual.positions[index]) / size,
                      near[index] ? kImportedNearRightAngle : kImported)
                << "frame " << frame + 1 << ", joint " << original.joints[joint].name;
        }
    }
}

survey::Options ImportOptionsOf(bool bones) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.bones = bones;
    return options;
}

// Surveys, mends and imports a text that the walk can read.
void ComparesEndToEnd(const std::string& text, const ImportOptions& options) {
    const survey::BvhSurvey found = survey::SurveyBvh(text, ImportOptionsOf(!options.nulls));
    ASSERT_FALSE(found.Has(survey::Severity::Error)) << found.findings[0].message;
    const std::string readText = found.mended ? found.mended->Text() : text;
    const std::vector<WalkFile> originals = ReadBvh(text);
    const std::vector<WalkFile> mended = ReadBvh(readText);
    ASSERT_EQ(mended.size(), originals.size());
    const ProbedImport import = ImportBvhText(readText, options);
    ASSERT_GE(import.status, 0) << import.error << '\n' << readText;
    ASSERT_EQ(import.sections.size(), originals.size());
    for (std::size_t s = 0; s < originals.size(); ++s) {
        ASSERT_TRUE(ComparesWalks(originals[s], mended[s], options.nulls ? kMended : kFolded))
            << readText;
        std::vector<JointPrediction> predictions(mended[s].joints.size());
        if (!options.nulls) predictions = PredictChains(mended[s], options.chainFromParent);
        CompareImport(originals[s], mended[s], import.sections[s], predictions);
    }
}

TEST(BvhImport, RandomTreesAreWhereTheFormatPutsThem) {
    std::size_t mended = 0;
    for (std::uint64_t seed = 0; seed < 1000 / kShorter; ++seed) {
        const std::string text = RandomBvh(seed);
        for (const bool nulls : {true, false}) {
            SCOPED_TRACE("seed " + std::to_string(seed) + (nulls ? " as nulls" : " as bones"));
            ComparesEndToEnd(text, {.nulls = nulls});
            if (HasFailure()) FAIL() << text;
        }
        mended += survey::SurveyBvh(text, ImportOptionsOf(false)).mended ? 1 : 0;
    }
    EXPECT_GT(mended, 100U / kShorter);
    EXPECT_LT(mended, 900U / kShorter);
}

// Changes white space and line ends in ways that do not matter.
std::string WithOtherSpaces(std::string text) {
    const std::size_t motion = text.find("MOTION");
    std::string changed;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{' && i < motion)
            changed += "\r\n\t{\n";
        else if (text[i] == '\n')
            changed += "\r\n";
        else if (text[i] == ' ' && i > motion && i % 3 == 0)
            changed += " \t";
        else
            changed += text[i];
    }
    return changed;
}

TEST(BvhImport, SpacesChangeNothing) {
    for (std::uint64_t seed = 0; seed < 300 / kShorter; ++seed) {
        const std::string text = RandomBvh(seed);
        const std::string spacedText = WithOtherSpaces(text);
        const auto plain = survey::SurveyBvh(text, ImportOptionsOf(false));
        const auto spaced = survey::SurveyBvh(spacedText, ImportOptionsOf(false));
        ASSERT_EQ(spaced.mended != nullptr, plain.mended != nullptr) << text;
        if (!plain.mended) continue;
        EXPECT_EQ(spaced.mended->Text(), plain.mended->Text());
    }
}

// If a text has only one quirk, here a comment, the mended text means the same as the original.
TEST(BvhImport, AQuirkChangesNothingElse) {
    for (std::uint64_t seed = 0; seed < 300 / kShorter; ++seed) {
        const std::string text = RandomBvh(seed);
        const std::string quirk = "# by hand\n" + text;
        const auto found = survey::SurveyBvh(quirk, ImportOptionsOf(false));
        ASSERT_TRUE(found.mended);
        const auto originals = ReadBvh(text);
        const auto mended = ReadBvh(found.mended->Text());
        ASSERT_EQ(mended.size(), originals.size());
        ASSERT_EQ(mended[0].joints.size(), originals[0].joints.size());
        EXPECT_TRUE(ComparesWalks(originals[0], mended[0], kMended)) << text;
        survey::Options fix;
        fix.purpose = survey::Purpose::Fix;
        const auto fixed = survey::SurveyBvh(quirk, fix);
        ASSERT_TRUE(fixed.mended);
        const auto again = survey::SurveyBvh(fixed.mended->Text(), ImportOptionsOf(false));
        EXPECT_FALSE(again.mended) << fixed.mended->Text();
    }
}

class BvhCapture : public testing::TestWithParam<std::filesystem::path> {};

// Removes what follows "End Site", since the walk only knows these two words.
std::string Walkable(std::string text) {
    for (std::size_t at = 0; (at = text.find("End Site-", at)) != std::string::npos;) {
        const std::size_t end = text.find_first_of("\r\n", at);
        text.erase(at + 8, end - at - 8);
    }
    return text;
}

TEST_P(BvhCapture, IsWhereTheFormatPutsIt) {
    const std::string text = ReadText(GetParam().string());
    const auto found = survey::SurveyBvh(text, ImportOptionsOf(false));
    ASSERT_FALSE(found.Has(survey::Severity::Error));
    const auto mended = ReadBvh(found.mended ? found.mended->Text() : text);
    const auto original = ReadBvh(Walkable(text));
    ASSERT_EQ(mended[0].joints.size(), original[0].joints.size());
    const bool isRelative =
        std::any_of(found.findings.begin(), found.findings.end(),
                    [](const auto& finding) { return finding.code == "position-relative"; });
    EXPECT_EQ(ComparesWalks(original[0], mended[0], kMended), !isRelative);
    const ProbedImport nulls = ImportBvhText(found.mended ? found.mended->Text() : text, {});
    EXPECT_GE(nulls.status, 0) << nulls.error;
    const auto forBones = survey::SurveyBvh(text, ImportOptionsOf(true));
    const ProbedImport bones =
        ImportBvhText(forBones.mended ? forBones.mended->Text() : text, {.nulls = false});
    EXPECT_GE(bones.status, 0) << bones.error;
}

std::vector<std::filesystem::path> Captures() {
    if (!CaptureFolder()) return {};
    return FilesIn(*CaptureFolder() / "bvh", ".bvh");
}

std::string TestName(const testing::TestParamInfo<std::filesystem::path>& row) {
    std::string name = row.param.stem().string();
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(, BvhCapture, testing::ValuesIn(Captures()), TestName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(BvhCapture);

}  // namespace
