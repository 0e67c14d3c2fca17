// Files of extreme sizes and shapes, whose import must take time in proportion to their length. If
// the cost grew with the square of the length, these tests would exceed their time limit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/session.h"
#include "host/status.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/core/session_text.h"
#include "tests/support/effort.h"

namespace {

using namespace support;

std::string Repeated(const std::string& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    while (times-- > 0)
        all += text;
    return all;
}

std::string Name(std::size_t number) {
    return "n" + std::to_string(number);
}

std::string Bones(std::size_t count, const std::string& dof) {
    std::string text = ":bonedata\n";
    for (std::size_t i = 0; i < count; ++i)
        text += "begin name " + Name(i) + "\n direction 0 1 0 length 1\n dof " + dof + "\n end\n";
    return text;
}

std::string Frame(std::size_t bones, const std::string& values) {
    std::string text = "1\nroot 0\n";
    for (std::size_t i = 0; i < bones; ++i)
        text += Name(i) + values + "\n";
    return text;
}

void Import(bool nulls, const std::string& asf, const std::string& amc, std::size_t curves) {
    StartSession(true);
    CAcclaimImport importer;
    importer.SetOptions(nulls, true, false, true);
    ASSERT_EQ(ImportSkeleton(importer, ":version 1\n:root order tx\n" + asf), Outcome());
    ASSERT_EQ(ImportMotion(importer, ":fully-specified\n" + amc), Outcome());
    EXPECT_EQ(ActionNamed("motion").items.size(), curves);
}

class LargeSkeletons : public testing::TestWithParam<bool> {};

constexpr std::size_t kBones = 100'000 / support::kShorter;

TEST_P(LargeSkeletons, MayBeDeep) {
    std::string hierarchy = ":hierarchy begin\nroot n0\n";
    for (std::size_t i = 1; i < kBones; ++i)
        hierarchy += Name(i - 1) + " " + Name(i) + "\n";
    Import(GetParam(), Bones(kBones, "rz") + hierarchy + "end", Frame(kBones, " 1"),
           1 + 3 * kBones);
}

TEST_P(LargeSkeletons, MayBeWide) {
    std::string hierarchy = ":hierarchy begin\nroot n0\nn0";
    for (std::size_t i = 1; i < kBones; ++i)
        hierarchy += " " + Name(i);
    Import(GetParam(), Bones(kBones, "rz") + hierarchy + "\nend", Frame(kBones, " 1"),
           1 + 3 * kBones);
}

INSTANTIATE_TEST_SUITE_P(, LargeSkeletons, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

// Only a skeleton of nulls needs a pass that converts lengths.
TEST(LargeNulls, MayAnimateEveryLength) {
    constexpr std::size_t kFew = 30'000 / support::kShorter;
    std::string hierarchy = ":hierarchy begin\nroot n0\n";
    for (std::size_t i = 1; i < kFew; ++i)
        hierarchy += Name(i - 1) + " " + Name(i) + "\n";
    Import(true, Bones(kFew, "|") + hierarchy + "end", Frame(kFew, " 1"), 1 + 3 * kFew);
}

// The bones are written as shortly as possible, and the hierarchy names only one of them.
TEST(LargeSkeletonFiles, MayConsistOfTheShortestBones) {
    StartSession(false);
    std::string text = ":version 1\n:root order tx\n:bonedata\n";
    for (int i = 0; i < 40'000; ++i)
        text += "begin name a end\n";
    CAcclaimImport importer;
    EXPECT_EQ(ImportSkeleton(importer, text + ":hierarchy begin\nroot a\nend"), Outcome());
}

struct LargeFile {
    const char* name;
    std::string asf;
    std::size_t nodes;
};

void PrintTo(const LargeFile& row, std::ostream* out) {
    *out << row.asf.size() << " bytes";
}

class LargeFiles : public testing::TestWithParam<LargeFile> {};

TEST_P(LargeFiles, AreParsed) {
    ParsedAcclaim parsed;
    EXPECT_EQ(parsed.Parse(":version 1\n" + GetParam().asf), (Outcome{1, "", 0}));
    EXPECT_EQ(parsed.skeleton.models.size(), GetParam().nodes);
}

std::string RenamedRoots() {
    std::string text = Repeated(":root\n", kBones);
    for (std::size_t i = 0; i < kBones; ++i)
        text += ":hierarchy begin\n" + Name(i) + "\nend\n";
    return text;
}

const LargeFile kLargeFiles[] = {
    {"UnknownWordsInOneLine", ":bonedata begin name a " + Repeated("x ", 1'000'000) + "end", 1},
    {"ManyBonesInOneLine", ":bonedata" + Repeated(" begin name bone x y z end", kBones), kBones},
    {"CommentsAlone", Repeated("#\n", 1'000'000), 0},
    {"CommentsAfterEverySection", Repeated(":units" + Repeated("#\n", 100), 10'000), 0},
    {"CommentsAfterDof",
     ":bonedata " + Repeated("begin name a dof rx" + Repeated(" #\n", 100) + "end ", 10'000),
     10'000},
    {"UnknownSections", Repeated(":x ", kBones) + "#" + Repeated(" ", 1'000'000), 0},
    {"DocumentationsInOneLine",
     Repeated(":documentation # ", kBones) + "\n" + Repeated("#\n", kBones) + ":units", 0},
    {"LongDocumentation", ":documentation " + Repeated("word\n", 3'000'000) + ":units", 0},
    {"LongDocumentationToTheEnd", ":documentation " + Repeated("w ", 6'000'000), 0},
    {"Hierarchies", Bones(kBones, "") + Repeated(":hierarchy begin end\n", kBones), 2 * kBones},
    {"RenamedRoots", RenamedRoots(), kBones},
    {"OneNameForAll",
     ":root\n:bonedata\n" + Repeated("begin name a\n end\n", kBones) + ":hierarchy begin\nroot" +
         Repeated(" a", kBones) + "\nend",
     kBones + 1},
    {"LongNames",
     ":root\n:bonedata\n" +
         Repeated("begin name " + std::string(10'000, 'n') + "\n length 1\n end\n", 500) +
         ":hierarchy begin\nroot\nend",
     1001},
    {"RepeatedChildren",
     ":root\n:bonedata begin name a\n end\n:hierarchy begin\nroot a\n" +
         Repeated("a a a a\n", kBones) + "end",
     2},
};

INSTANTIATE_TEST_SUITE_P(, LargeFiles, testing::ValuesIn(kLargeFiles),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(LargeMotions, MayBeFullOfWarnings) {
    ParsedAcclaim parsed;
    ASSERT_EQ(parsed.Parse(":version 1\n:root order tx"), (Outcome{1, "", 0}));
    constexpr std::size_t kLines = 50'000;
    ASSERT_EQ(parsed.ParseMotion("1\nroot 1\n" + Repeated("x y\n", kLines)), Outcome());
    const Lines& lines = parsed.Warnings();
    ASSERT_EQ(lines.size(), kLines);
    EXPECT_EQ(lines.back(),
              "Invalid keyword found (x) at line " + std::to_string(kLines + 2) + ", ignoring...");
}

TEST(LargeMotions, MayBeFullOfUnknownBones) {
    ParsedAcclaim parsed;
    constexpr std::size_t kFew = 20'000;
    ASSERT_EQ(parsed.Parse(":version 1\n" + Bones(kFew, "rx")), (Outcome{1, "", 0}));
    ASSERT_EQ(parsed.ParseMotion("1\n" + Repeated("x\n", kFew / 2) + Repeated("2 ", kBones)),
              Outcome());
    EXPECT_GE(parsed.Warnings().size(), kFew / 2);
}

TEST(LargeMotions, MayConsistOfNumbers) {
    ParsedAcclaim parsed;
    ASSERT_EQ(parsed.Parse(":version 1\n:root order tx"), (Outcome{1, "", 0}));
    ASSERT_EQ(parsed.ParseMotion("1\nx\n" + Repeated("2\n", 3'000'000)), Outcome());
    EXPECT_EQ(parsed.skeleton.frameCount, 3'000'001u);
}

TEST(LargeMotions, MayAnimateTheLengthOfABoneWithManyChildren) {
    StartSession(false);
    CAcclaimImport importer;
    importer.SetOptions(true, true, false, true);
    std::string asf =
        ":version 1\n:root order tx\n:bonedata begin name a\n length 1\n dof |\n end\n";
    std::string children;
    for (std::size_t i = 0; i < 20'000; ++i) {
        asf += "begin name " + Name(i) + "\n end\n";
        children += " " + Name(i);
    }
    ASSERT_EQ(ImportSkeleton(importer, asf + ":hierarchy begin\nroot a\na" + children + "\nend"),
              Outcome());
    std::string frames;
    for (std::size_t i = 1; i <= 20'000; ++i)
        frames += std::to_string(i) + "\nroot 0\na 1\n";
    EXPECT_EQ(ImportMotion(importer, ":fully-specified\n" + frames), Outcome());
}

}  // namespace
