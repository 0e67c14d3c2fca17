// Files that are made to cost time or memory. The cost of a survey must be proportional to the size
// of the file, so each of these tests takes only moments.
#include <gtest/gtest.h>
#include <random>

#include "survey/codes.h"
#include "tests/support/effort.h"
#include "tests/survey/acclaim_case.h"

namespace {

using namespace acclaim_case;
using survey::Purpose;

constexpr std::size_t kMany = 100'000 / support::kShorter;

std::string Name(std::size_t index) {
    return "b" + std::to_string(index);
}

std::string Bones(std::size_t count, const char* parameters) {
    std::string text = ":version 1.10\n:root\norder TX\n:bonedata\n";
    for (std::size_t i = 0; i < count; ++i)
        text += "begin name " + Name(i) + " " + parameters + "\nend\n";
    return text + ":hierarchy\nbegin\n";
}

std::string Chain(const char* parameters) {
    std::string text = Bones(kMany, parameters) + "root b0\n";
    for (std::size_t i = 0; i + 1 < kMany; ++i)
        text += Name(i) + " " + Name(i + 1) + "\n";
    return text;
}

std::string Frame(std::size_t number) {
    std::string text = std::to_string(number) + "\nroot 1\n";
    for (std::size_t i = 0; i < kMany; ++i)
        text += Name(i) + " 1\n";
    return text;
}

void SurveyAll(const std::string& asf, const std::string& amc) {
    for (const Purpose purpose : {Purpose::Check, Purpose::Import, Purpose::Fix})
        Survey(asf, amc, For(purpose));
}

TEST(AcclaimHostile, AChainOfManyBones) {
    SurveyAll(Chain("length 1 direction 0 1 0 dof rx") + "end", ":FULLY-SPECIFIED\n" + Frame(1));
    SurveyAll(Chain("length 0.001 axis 1 2 3 ZYX dof l") + "end", Frame(1) + Frame(2));
}

TEST(AcclaimHostile, AChainFromItsEnd) {
    std::string text = Bones(kMany, "dof rx");
    for (std::size_t i = kMany - 1; i > 0; --i)
        text += Name(i) + " " + Name(i - 1) + "\n";
    SurveyAll(text + "end", Frame(1));
    // Each bone is its own ancestor.
    const auto found = Survey(text + "b0 " + Name(kMany - 1), "", For(Purpose::Import));
    ASSERT_FALSE(found.skeleton.findings.empty());
    EXPECT_TRUE(found.skeleton.Has(survey::Severity::Error));
}

TEST(AcclaimHostile, TheSameLinesManyTimes) {
    std::string text = CleanAsf();
    std::string bones;
    std::string lines;
    std::string sections;
    for (std::size_t i = 0; i < kMany; ++i) {
        bones += "begin name larm\nend\n";
        lines += "root nobody spine\n";
        sections += ":hierarchy\nbegin\nspine larm\n:units\nlength x\n:other 1\n";
    }
    SurveyAll(With(text, ":hierarchy", bones + ":hierarchy"), CleanAmc());
    SurveyAll(With(text, "root spine\n", "root spine\n" + lines), CleanAmc());
    SurveyAll(text + sections, CleanAmc());
}

TEST(AcclaimHostile, ManyEmptyFrames) {
    const std::string asf = Chain("dof rx") + "end";
    std::string amc = ":FULLY-SPECIFIED\n" + Frame(1);
    for (std::size_t i = 0; i < kMany; ++i)
        amc += std::to_string(3 * i) + (i % 2 == 0 ? "\nb1 1\n" : "\n");
    SurveyAll(asf, amc);
}

TEST(AcclaimHostile, ManyBadRows) {
    std::string amc = CleanAmc();
    for (std::size_t i = 0; i < kMany; ++i)
        amc += "-" + std::to_string(i) + "\n" + Name(i) +
               " 1 2\nspine 1,2 nan 3-4 5 6\n:word\nrarm 1\n";
    SurveyAll(CleanAsf(), amc);
}

TEST(AcclaimHostile, HugeLinesAndWords) {
    for (const char* part : {"1", "1-1", "1,", "1 ", "x", "#", ":", "(", "1\r", "root ", "\xFF"}) {
        std::string many;
        for (std::size_t i = 0; i < 5 * kMany; ++i)
            many += part;
        SurveyAll(With(CleanAsf(), "direction 1 0 0", "direction " + many), CleanAmc());
        SurveyAll(With(CleanAsf(), "spine larm rarm", "spine larm rarm " + many), CleanAmc());
        SurveyAll(CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine " + many));
        SurveyAll(CleanAsf(), With(CleanAmc(), "\n3\n", "\n" + many + "\n"));
        SurveyAll(many, many);
    }
}

// A mended text must not be mended again when it is surveyed once more.
TEST(AcclaimHostile, CutAndShuffledPairsAreMendedOnce) {
    std::mt19937 random(7);
    const std::string bytes = "\n\r 01-.,:#()|lxrend\x1A\v\xE9";
    for (int round = 0; round < 20'000 / static_cast<int>(support::kShorter); ++round) {
        std::string asf = CleanAsf();
        std::string amc = CleanAmc().substr(0, 400);
        std::string& text = round % 2 == 0 ? asf : amc;
        for (int edits = 1 + static_cast<int>(random() % 3); edits > 0; --edits) {
            const std::size_t at = random() % text.size();
            const std::size_t length = random() % 8;
            if (random() % 3 == 0)
                text.erase(at, length);
            else
                text.insert(at, 1, bytes[random() % bytes.size()]);
        }
        const auto once = Survey(asf, amc, For(Purpose::Fix));
        if (once.skeleton.Has(survey::Severity::Error) ||
            once.motions[0].Has(survey::Severity::Error))
            continue;
        const std::string fixedAsf = once.skeleton.mended ? once.skeleton.mended->Text() : asf;
        const std::string fixedAmc = once.motions[0].mended ? once.motions[0].mended->Text() : amc;
        const auto again = Survey(fixedAsf, fixedAmc, For(Purpose::Fix));
        ASSERT_FALSE(again.skeleton.mended) << asf << "----\n" << fixedAsf;
        ASSERT_FALSE(again.motions[0].mended) << amc << "----\n" << fixedAmc;
        for (const auto* found : {&again.skeleton.findings, &again.motions[0].findings})
            for (const auto& finding : *found)
                ASSERT_FALSE(finding.mended) << finding.code << asf << amc;
    }
}

}  // namespace
