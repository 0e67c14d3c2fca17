// If the survey does not mend a text, the plug-in must read it exactly as the survey does. The
// texts are clean ones with random changes.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "survey/survey.h"
#include "tests/support/bvh_probe.h"
#include "tests/support/bvh_random.h"
#include "tests/support/effort.h"

namespace {

using namespace support;

constexpr std::uint64_t kTexts = 6000 / kShorter;

// Pieces that are inserted at random: some that programs write in wrong positions, and others.
constexpr std::string_view kPieces[] = {
    " ",
    "\t",
    "\n",
    "\r",
    "\v",
    "\f",
    "{",
    "}",
    "0",
    "-",
    "+",
    ".",
    ",",
    "e",
    "1e5",
    " .0 ",
    " +0 ",
    "-0",
    " nan ",
    "#",
    "\n#\n",
    "//",
    "ROOT",
    " JOINT b ",
    " End ",
    " Site",
    "OFFSET ",
    "MOTION",
    "Frames",
    "Frame ",
    "Time:",
    " CHANNELS 0 ",
    "\xFC",
    "x",
    " inf ",
    "\x1A",
    "--",
    "0}",
    "1e999 ",
    " 1e-999 ",
    "\nHIERARCHY\nROOT q { OFFSET 0 0 0 CHANNELS 0 }\nMOTION\nFrames: 0\nFrame Time: 1\n"};

std::string Changed(std::string text, std::mt19937_64& random) {
    for (std::uint64_t changes = 1 + random() % 3; changes > 0; --changes) {
        const std::size_t at = random() % text.size();
        switch (random() % 4) {
            case 0:
                text.erase(at, 1 + random() % 3);
                break;
            case 1:
                text[at] = '\0';
                break;
            case 2:
                text.insert(at, text.substr(random() % text.size(), random() % 12));
                break;
            default:
                text.insert(at, kPieces[random() % std::size(kPieces)]);
        }
        if (text.empty()) text = "x";
    }
    return text;
}

void ExpectSameJoints(const ProbedSection& a, const ProbedSection& b) {
    ASSERT_EQ(a.parsed.joints.size(), b.parsed.joints.size());
    for (std::size_t i = 0; i < a.parsed.joints.size(); ++i) {
        const WalkJoint& one = a.parsed.joints[i];
        const WalkJoint& other = b.parsed.joints[i];
        EXPECT_EQ(one.name, other.name);
        EXPECT_EQ(one.parent, other.parent);
        EXPECT_EQ(one.isEndSite, other.isEndSite);
        EXPECT_EQ(one.offset, other.offset);
        EXPECT_EQ(one.channels, other.channels);
    }
}

// Positions in the first six frames of the last import's scene.
std::vector<std::vector<Vec3>> Positions(const ProbedImport& import) {
    std::vector<std::vector<Vec3>> positions;
    for (const ProbedSection& section : import.sections) {
        SectionMotion motion(section);
        for (int frame = 1; frame <= 6; ++frame)
            positions.push_back(motion.At(frame).positions);
    }
    return positions;
}

survey::BvhSurvey Survey(const std::string& text,
                         survey::Purpose purpose = survey::Purpose::Import) {
    survey::Options options;
    options.purpose = purpose;
    return survey::SurveyBvh(text, options);
}

// A text written for Purpose::Fix must not be mended again.
void ExpectFixedOnce(const std::string& text) {
    const survey::BvhSurvey fixed = Survey(text, survey::Purpose::Fix);
    if (!fixed.mended) return;
    const survey::BvhSurvey again = Survey(fixed.mended->Text());
    EXPECT_FALSE(again.mended);
    for (const auto& finding : again.findings)
        EXPECT_FALSE(finding.mended) << finding.message;
}

// Compares the plug-in's import of the text with that of the mended text, which shows how the
// survey reads it. A comment is added so that a mended text is written.
void ExpectAgreement(const std::string& text) {
    const std::string commented = "#\n" + text;
    const survey::BvhSurvey written = Survey(commented);
    ASSERT_TRUE(written.mended);
    const ProbedImport import = ImportBvhText(text, {});
    ASSERT_GE(import.status, 0) << import.error;
    const auto positions = Positions(import);
    const ProbedImport again = ImportBvhText(written.mended->Text(), {});
    ASSERT_GE(again.status, 0) << again.error << written.mended->Text();
    ASSERT_EQ(import.sections.size(), again.sections.size());
    for (std::size_t s = 0; s < import.sections.size(); ++s)
        ExpectSameJoints(import.sections[s], again.sections[s]);
    EXPECT_EQ(positions, Positions(again));
}

std::vector<std::string> CleanTexts() {
    std::vector<std::string> clean;
    for (std::uint64_t seed = 0; clean.size() < 60; ++seed)
        if (const std::string text = RandomBvh(seed); !Survey(text).mended) clean.push_back(text);
    return clean;
}

TEST(BvhAgreement, OfSurveyAndPlugInOnChangedTexts) {
    std::mt19937_64 random(11);
    const std::vector<std::string> clean = CleanTexts();
    std::size_t left = 0;
    std::size_t mended = 0;
    std::size_t refused = 0;
    for (std::uint64_t seed = 0; seed < kTexts; ++seed) {
        const std::string text = Changed(clean[seed % clean.size()], random);
        const survey::BvhSurvey found = Survey(text);
        if (found.Has(survey::Severity::Error)) {
            ++refused;
            EXPECT_FALSE(found.mended);
            continue;
        }
        if (found.mended) {
            ++mended;
            ExpectFixedOnce(text);
            EXPECT_GE(ImportBvhText(found.mended->Text(), {}).status, 0);
        } else {
            ++left;
            ExpectAgreement(text);
        }
        if (HasFailure()) FAIL() << "seed " << seed << '\n' << testing::PrintToString(text);
    }
    EXPECT_GT(left, kTexts / 25);
    EXPECT_GT(mended, kTexts / 10);
    EXPECT_GT(refused, kTexts / 10);
}

}  // namespace
