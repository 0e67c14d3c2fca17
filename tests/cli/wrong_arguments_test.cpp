#include <gmock/gmock.h>
#include <ostream>
#include <string>
#include <vector>

#include "cli/arguments.h"

namespace {

using testing::HasSubstr;

struct WrongUsage {
    const char* name;
    std::vector<std::string> words;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const WrongUsage& row) {
    return out << row.name;
}

class WrongArguments : public testing::TestWithParam<WrongUsage> {};

TEST_P(WrongArguments, AreRefused) {
    try {
        std::vector<const char*> words;
        for (const std::string& word : GetParam().words)
            words.push_back(word.c_str());
        cli::ParseArguments(words);
        FAIL() << "was accepted";
    } catch (const cli::UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().message));
    }
}

const WrongUsage kWrongUsages[] = {
    {"UnknownCommand",
     {"export", "walk.bvh"},
     "export: unknown command: expected import, check, convert or command"},
    {"CommandNearlyRight",
     {"improt", "walk.bvh"},
     "improt: unknown command; did you mean 'import'?"},
    {"CommandForgotten", {"walk.bvh"}, "unknown command; did you mean 'zkhost import walk.bvh'?"},
    {"OptionNearlyRight",
     {"import", "walk.bvh", "--bonse"},
     "--bonse: unknown option; did you mean '--bones'?"},
    {"OptionNearlyRightWithAValue",
     {"import", "walk.bvh", "--scael=2"},
     "--scael: unknown option; did you mean '--scale'?"},
    {"OptionNearlyRightAndNoFile", {"import", "--bonse"}, "did you mean '--bones'?"},
    {"NegatedOptionNearlyRight",
     {"import", "walk.bvh", "--no-gruop"},
     "did you mean '--no-group'?"},
    {"OptionOfTheProgram", {"--hlep"}, "--hlep: unknown option; did you mean '--help'?"},
    {"HiddenOption", {"import", "walk.bvh", "--reprot"}, "--reprot: unknown option"},
    {"FlagWithAValue", {"import", "walk.bvh", "--bones=1"}, "bones was given"},
    {"FlagWithTheValueFalse", {"import", "walk.bvh", "--nulls=false"}, "nulls was given"},
    {"NegatedFlagWithAValue", {"import", "walk.bvh", "--no-group=3"}, "no-group was given"},
    {"FlagOfConvert",
     {"convert", "a", "--to", "glb", "--out-dir", "o", "--clip=false"},
     "clip was given"},
    {"NoFile", {"import"}, "file is required"},
    {"EmptyFile", {"import", ""}, "not a .bvh or .asf file"},
    {"OtherExtension", {"import", "walk.fbx"}, "walk.fbx: not a .bvh or .asf file"},
    {"ExtensionOfAFolder", {"import", "a.bvh/walk"}, "not a .bvh or .asf file"},
    {"MotionAlone", {"import", "07_01.amc"}, "needs its skeleton"},
    {"MotionAfterBvh", {"import", "walk.bvh", "07_01.amc"}, "takes no second file"},
    {"MotionOfAnotherKind", {"import", "07.asf", "07_01.txt"}, "not an .amc file"},
    {"ThirdFile",
     {"import", "07.asf", "07_01.amc", "07_02.amc: one argument too many"},
     "07_02.amc: one argument too many"},
    {"UnknownOption", {"import", "walk.bvh", "--fast"}, "--fast"},
    {"NullsAndBones", {"import", "walk.bvh", "--nulls", "--bones"}, "excludes"},
    {"LimitsOfBvh", {"import", "walk.bvh", "--limits"}, "are for Acclaim files"},
    {"LengthOfBvh", {"import", "walk.bvh", "--length", "2"}, "are for Acclaim files"},
    {"PresetOfBvh", {"import", "walk.bvh", "--preset", "cmu"}, "are for Acclaim files"},
    {"LengthWord", {"import", "07.asf", "--length", "2m"}, "--length 2m: not a number"},
    {"LengthEmpty", {"import", "07.asf", "--length", ""}, "not a number"},
    {"LengthNan", {"import", "07.asf", "--length", "nan"}, "not a number"},
    {"UnknownPreset",
     {"import", "07.asf", "--preset", "sfu"},
     "--preset sfu: expected auto, cmu or none"},
    {"PresetNearlyRight", {"import", "07.asf", "--preset", "cum"}, "did you mean 'cmu'?"},
    {"AsIsAndStrict", {"import", "a.bvh", "--as-is", "--strict"}, "which --as-is skips"},
    {"AsIsAndEncoding", {"import", "a.bvh", "--as-is", "--encoding", "LATIN1"}, "--as-is skips"},
    {"UnknownEncoding",
     {"import", "a.bvh", "--encoding", "KLINGON"},
     "--encoding KLINGON: unknown"},
    {"CheckNothing", {"check"}, "files is required"},
    {"CheckOtherExtension", {"check", "a.txt"}, "a.txt: not a .bvh, .asf or .amc file"},
    {"CheckUnknownEncoding", {"check", "a.bvh", "--encoding", "KLINGON"}, "KLINGON"},
    {"CheckOutputWithoutFix", {"check", "a.bvh", "-o", "b.bvh"}, "need --fix"},
    {"CheckFolderWithoutFix", {"check", "a.bvh", "--out-dir", "b"}, "need --fix"},
    {"CheckFixNowhere", {"check", "a.bvh", "--fix"}, "--fix needs either"},
    {"CheckFixTwice",
     {"check", "a.bvh", "--fix", "-o", "b.bvh", "--out-dir", "c"},
     "--fix needs either"},
    {"CheckOneOutputOfTwo",
     {"check", "a.bvh", "b.bvh", "--fix", "-o", "c.bvh"},
     "-o is for one file"},
    {"CheckSameNames",
     {"check", "x/a.bvh", "y/a.bvh", "--fix", "--out-dir", "c"},
     "two files are called a.bvh"},
    {"ResampleWithoutARate", {"import", "walk.bvh", "--resample"}, "--resample needs a rate"},
    {"ScaleZero", {"import", "walk.bvh", "--scale", "0"}, "must be greater than zero"},
    {"FpsNegative", {"import", "walk.bvh", "--fps", "-30"}, "must be greater than zero"},
    {"UpAxis", {"import", "walk.bvh", "--up", "w"}, "--up w: expected x, y or z"},
    {"Progress", {"import", "walk.bvh", "--progress", "yes"}, "expected auto, on or off"},
    {"OutputWithoutExtension", {"import", "walk.bvh", "-o", "walk"}, "walk: unknown output format"},
    {"OutputExtension", {"import", "walk.bvh", "-o", "walk.xyz"}, "unknown output format"},
    {"OutputNearlyRight",
     {"import", "walk.bvh", "-o", "walk.gbl"},
     "walk.gbl: unknown output format; known are .glb .gltf .bvh .csv .npz .json; did you mean "
     "'.glb'?"},
    {"OutputWithATrailingSlash",
     {"import", "walk.bvh", "-o", "out/"},
     "-o out/: a folder is no output; name a file in it, such as out/take.glb"},
    {"OutputThatIsAFolder", {"import", "walk.bvh", "-o", "/"}, "-o /: a folder is no output"},
    {"FormatNearlyRight",
     {"convert", "t", "--to", "gbl", "--out-dir", "o"},
     "--to gbl: unknown format; known are glb gltf bvh csv npz json; did you mean 'glb'?"},
    {"OutputMissing", {"import", "walk.bvh", "-o"}, "-o"},
    {"OutputTwice",
     {"import", "walk.bvh", "-o", "a.json", "-o", "./a.json"},
     "two outputs would write this file"},
    {"NoName", {"command"}, "name is required"},
    {"ArgumentWithoutKind", {"command", "X", "walk.bvh"}, "must begin with str:"},
    {"ArgumentOfAnotherKind", {"command", "X", "int:1"}, "must begin with str:"},
    {"NumberForAPath", {"command", "Biovision Import function", "word:1"}, "argument 1 of Bio"},
    {"RealForAPath", {"command", "Biovision Import function", "real:1e-9"}, "must be a text"},
    {"BooleanForAPath",
     {"command", "Acclaim Import function", "str:a.asf", "bool:true"},
     "argument 2 of"},
    {"ArgumentOfAKindNearlyRight", {"command", "X", "bol:true"}, "did you mean 'bool:'?"},
    {"BooleanNearlyRight", {"command", "X", "bool:ture"}, "did you mean 'true'?"},
    {"ArgumentLikeAList", {"command", "X", "[str:a]"}, "must begin with str:"},
    {"CommandProgress", {"command", "X", "--progress", "maybe"}, "expected auto, on or off"},
};
INSTANTIATE_TEST_SUITE_P(, WrongArguments, testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

}  // namespace
