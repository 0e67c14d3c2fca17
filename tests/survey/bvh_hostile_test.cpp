// Texts that are made to cost time or memory. The cost of a survey must be proportional to the size
// of the text.
#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "survey/survey.h"

namespace bvh_hostile_test {

constexpr int kMany = 200'000;
const std::string kTail = "MOTION\nFrames: 1\nFrame Time: 0.04\n";

std::string Repeated(const std::string& text, int count) {
    std::string repeated;
    repeated.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

std::string Root(const std::string& channels, const std::string& rest) {
    return "HIERARCHY\nROOT a\n{\nOFFSET 0 1 0\nCHANNELS " + channels + "\n}\n" + rest;
}

struct Row {
    const char* name;
    std::string (*text)();
};

const Row kRows[] = {
    {"DeepChain",
     [] {
         return "HIERARCHY\n" + Repeated("JOINT a\n{\nOFFSET 0 1 0\nCHANNELS 0\n", kMany) +
                Repeated("}\n", kMany) + kTail;
     }},
    {"DeepRisingChainWithOpenBraces",
     [] {
         return "HIERARCHY\n" + Repeated("JOINT a\n{\nCHANNELS 2 Xrotation Yrotation\n", kMany) +
                kTail + Repeated("1 2 ", kMany) + "\n";
     }},
    {"DeepChainByIndentation",
     [] {
         std::string text = "HIERARCHY\n";
         for (int i = 0; i < 2000; ++i)
             text += std::string(static_cast<std::size_t>(i), ' ') + "JOINT a\n{\nOFFSET 0 1 0\n";
         return text + kTail;
     }},
    {"JointsInOneLine",
     [] { return "HIERARCHY " + Repeated("ROOT a{OFFSET 0 1 0}", kMany) + kTail; }},
    {"WideEndSites", [] { return Root("0\n" + Repeated("EndSite{}", kMany), kTail); }},
    {"BracesAlone", [] { return "HIERARCHY" + Repeated("{", kMany); }},
    {"Comments", [] { return Repeated("#\n", kMany) + Root("0", kTail); }},
    {"Channels", [] { return Root(Repeated("9", 1000) + Repeated(" Xrotation", kMany), kTail); }},
    {"AbsurdFrames",
     [] { return Root("1 Xrotation", "MOTION\nFrames: 99999999999\nFrame Time: 1\n1\n"); }},
    {"NoNumbers", [] { return Root("1 Xrotation", kTail + Repeated("1\nnan\n", kMany)); }},
    {"TextLines", [] { return Root("1 Xrotation", kTail + Repeated("1\nx y\n", kMany)); }},
    {"ShortRows",
     [] { return Root("2 Zrotation Xrotation", kTail + Repeated("1\n1 2\n", kMany)); }},
    {"BrokenRows", [] { return Root("2 Zrotation Xrotation", kTail + Repeated("1\n", kMany)); }},
    {"Glued", [] { return Root("2 Zrotation Xrotation", kTail + Repeated("1-2\n", kMany)); }},
    {"GluedInOneWord", [] { return Root("2 Zrotation Xrotation", kTail + Repeated("-1", kMany)); }},
    {"LongNumber", [] { return Root("1 Zrotation", kTail + Repeated("1234567890", kMany)); }},
    {"LongWord", [] { return Root("1 Zrotation", kTail + Repeated("abcdefghij", kMany)); }},
    {"LongName",
     [] { return "HIERARCHY\nROOT " + Repeated("abcdefghi ", kMany) + "\n{\n}\n" + kTail; }},
    {"BracesInAName",
     [] { return "HIERARCHY\nROOT a" + Repeated("{b", kMany) + "\n{\n}\n" + kTail; }},
    {"Sections", [] { return Repeated("HIERARCHY\nROOT a{}\nMOTION\n", 20'000); }},
    {"SectionsWithRows",
     [] { return Repeated(Root("1 Zrotation", "MOTION\nFrames: 1\nFrame Time: 1\n1\n"), 20'000); }},
    {"ManyChannelsAndShortRows",
     [] {
         return "HIERARCHY\n" +
                Repeated("ROOT a{OFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation}\n",
                         20'000) +
                kTail + Repeated("1 2\n", kMany);
     }},
    {"LineEnds", [] { return Root("1 Zrotation", kTail + Repeated("\n\r", kMany) + "1"); }},
    {"Nuls", [] { return Root("1 Zrotation", kTail + std::string(kMany, '\0') + "1"); }},
};

class BvhHostile : public testing::TestWithParam<Row> {};

TEST_P(BvhHostile, CostsAreProportional) {
    const std::string text = GetParam().text();
    for (const auto purpose :
         {survey::Purpose::Check, survey::Purpose::Import, survey::Purpose::Fix}) {
        survey::Options options;
        options.purpose = purpose;
        options.bones = true;
        const auto start = std::chrono::steady_clock::now();
        const survey::BvhSurvey found = survey::SurveyBvh(text, options);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        EXPECT_LT(seconds.count(), 10.0);  // quadratic time would be minutes
        EXPECT_LE(found.findings.size(), 20U);
        if (found.mended) {
            EXPECT_LT(found.mended->Text().size(), 40 * text.size() + 1000);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, BvhHostile, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace bvh_hostile_test
