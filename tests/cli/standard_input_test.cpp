// Command lines that name the standard input or packed files.
#include "cli/standard_input.h"

#include <gmock/gmock.h>

#include "cli/arguments.h"

namespace standard_input_test {

using testing::HasSubstr;

cli::Request Parse(const std::vector<std::string>& words) {
    std::vector<const char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    return cli::ParseArguments(arguments);
}

take::Request Import(const std::vector<std::string>& words) {
    return std::get<cli::ImportRequest>(Parse(words)).take;
}

TEST(StandardInput, IsAFileOfAnImport) {
    const take::Request bvh = Import({"import", "-", "--as", "BVH"});
    EXPECT_EQ(bvh.file.path, "<stdin>");
    EXPECT_EQ(bvh.file.name, "stdin.bvh");
    EXPECT_EQ(bvh.format, take::Format::Biovision);
    const take::Request skeleton =
        Import({"import", "-", "07_01.amc.gz", "--as", "asf", "--limits"});
    EXPECT_EQ(skeleton.file.name, "stdin.asf");
    EXPECT_EQ(skeleton.motion->path, "07_01.amc.gz");
    EXPECT_EQ(skeleton.format, take::Format::Acclaim);
    EXPECT_EQ(Import({"import", "07.asf", "-"}).motion->name, "stdin.amc");
    EXPECT_EQ(Import({"import", "07.asf", "-", "--as", "amc"}).motion->name, "stdin.amc");
}

TEST(StandardInput, IsAFileOfACheck) {
    const auto check = std::get<cli::CheckRequest>(Parse({"check", "07.asf", "-", "--as=Amc"}));
    EXPECT_EQ(check.as, pairing::CaptureKind::Motion);
    EXPECT_EQ(std::get<cli::CheckRequest>(Parse({"check", "07.asf"})).as, std::nullopt);
}

struct WrongUsage {
    const char* name;
    std::vector<std::string> words;
    const char* message;
};

void PrintTo(const WrongUsage& row, std::ostream* out) {
    *out << row.name;
}

class WrongInputs : public testing::TestWithParam<WrongUsage> {};

TEST_P(WrongInputs, AreRefused) {
    try {
        Parse(GetParam().words);
        FAIL() << "was accepted";
    } catch (const cli::UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().message));
    }
}

const WrongUsage kWrongUsages[] = {
    {"NoKind", {"import", "-"}, "--as bvh or --as asf must say"},
    {"MotionAlone", {"import", "-", "--as", "amc"}, "needs its skeleton"},
    {"Twice", {"import", "-", "-", "--as", "asf"}, "only one file"},
    {"AfterBvh", {"import", "a.bvh", "-"}, "takes no second file"},
    {"SecondSkeleton", {"import", "a.asf", "-", "--as", "asf"}, "not an .amc file"},
    {"OtherKind", {"import", "-", "--as", "fbx"}, "--as fbx: expected bvh, asf or amc"},
    {"KindWithADot", {"import", "-", "--as", ".bvh"}, "expected bvh, asf or amc"},
    {"PackedKind", {"import", "-", "--as", "bvh.gz"}, "expected bvh, asf or amc"},
    {"KindOfAFile", {"import", "a.bvh", "--as", "bvh"}, "--as is for the standard input"},
    {"LimitsOfBvh", {"import", "-", "--as", "bvh", "--limits"}, "are for Acclaim files"},
    {"PackedFbx", {"import", "walk.fbx.gz"}, "not a .bvh or .asf file"},
    {"PackedOutput", {"import", "a.bvh", "-o", "b.glb.gz"}, "unknown output format"},
    {"CheckOfNoKind", {"check", "-"}, "--as bvh, asf or amc must say"},
    {"CheckTwice", {"check", "-", "a.bvh", "-", "--as", "bvh"}, "only one file"},
    {"CheckKindOfAFile", {"check", "a.bvh", "--as", "bvh"}, "--as is for the standard input"},
    {"FixToPacked", {"check", "a.bvh", "--fix", "-o", "b.bvh.GZ"}, "leave out .gz"},
    {"FixOfPackedAndPlain",
     {"check", "a/x.bvh", "b/x.bvh.gz", "--fix", "--out-dir", "o"},
     "two files are called x.bvh"},
};
INSTANTIATE_TEST_SUITE_P(, WrongInputs, testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

}  // namespace standard_input_test
