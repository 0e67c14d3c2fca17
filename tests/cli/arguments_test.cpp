#include "cli/arguments.h"

#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <tuple>

#include "tests/support/temporary_folder.h"

namespace {

using cli::ImportRequest;
using cli::RawArgument;

cli::Request Parse(const std::vector<std::string>& words) {
    std::vector<const char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    return cli::ParseArguments(arguments);
}

ImportRequest ParseImport(std::vector<std::string> words) {
    words.insert(words.begin(), "import");
    return std::get<ImportRequest>(Parse(words));
}

TEST(ImportArguments, HaveTheirDefaults) {
    const ImportRequest request = ParseImport({"walk.bvh"});
    EXPECT_EQ(request.take.format, take::Format::Biovision);
    EXPECT_EQ(request.take.file.path, "walk.bvh");
    EXPECT_TRUE(request.take.useNulls);
    EXPECT_TRUE(request.take.chainFromParentJoint);
    EXPECT_FALSE(request.take.effectorToLastBone);
    EXPECT_TRUE(request.take.createGroup);
    EXPECT_FALSE(request.take.addClip);
    EXPECT_FALSE(request.take.applyLimits);
    EXPECT_EQ(request.take.lengthMultiplier, std::nullopt);
    EXPECT_EQ(request.exports.scale, 1.0);
    EXPECT_EQ(request.exports.up, exporters::UpAxis::Y);
    EXPECT_EQ(request.take.framesPerSecond, std::nullopt);
    EXPECT_FALSE(request.tree || request.quiet || request.timing);
    EXPECT_EQ(request.progress, cli::Progress::Auto);
    EXPECT_TRUE(request.outputs.empty() && request.plugin.empty());
}

TEST(ImportArguments, AreAllParsed) {
    const ImportRequest request = ParseImport({"--bones",
                                               "--no-chain-from-parent",
                                               "--effector-to-last-bone",
                                               "--no-group",
                                               "--clip",
                                               "--limits",
                                               "--length",
                                               "-2.5",
                                               "-o",
                                               "a.json",
                                               "S.ASF",
                                               "--output",
                                               "b.JSON",
                                               "m.Amc",
                                               "--scale",
                                               "0.01",
                                               "--up",
                                               "z",
                                               "--fps",
                                               "59.94",
                                               "--tree",
                                               "--quiet",
                                               "--timing",
                                               "--progress",
                                               "off",
                                               "--plugin",
                                               "p.so"});
    EXPECT_EQ(request.take.format, take::Format::Acclaim);
    EXPECT_EQ(request.take.file.path, "S.ASF");
    EXPECT_EQ(request.take.motion->path, "m.Amc");
    EXPECT_FALSE(request.take.useNulls);
    EXPECT_FALSE(request.take.chainFromParentJoint);
    EXPECT_TRUE(request.take.effectorToLastBone);
    EXPECT_FALSE(request.take.createGroup);
    EXPECT_TRUE(request.take.addClip && request.take.applyLimits);
    EXPECT_EQ(request.take.lengthMultiplier, -2.5);
    ASSERT_EQ(request.outputs.size(), 2u);
    EXPECT_EQ(request.outputs[0].path, "a.json");
    EXPECT_EQ(request.outputs[1].path, "b.JSON");
    EXPECT_EQ(request.exports.scale, 0.01);
    EXPECT_EQ(request.exports.up, exporters::UpAxis::Z);
    EXPECT_EQ(request.take.framesPerSecond, 59.94);
    EXPECT_TRUE(request.tree && request.quiet && request.timing);
    EXPECT_EQ(request.progress, cli::Progress::Off);
    EXPECT_EQ(request.plugin, "p.so");
}

TEST(ImportArguments, ResamplesAtItsOwnRateOrAtTheOneOfFps) {
    const auto rates = [](std::vector<std::string> words) {
        words.insert(words.begin(), {"07.asf", "-o", "07.glb"});
        const ImportRequest request = ParseImport(words);
        return std::pair(request.take.framesPerSecond, request.exports.resampleTo);
    };
    using Rates = std::pair<std::optional<double>, std::optional<double>>;
    EXPECT_EQ(rates({"--fps", "60"}), Rates(60.0, std::nullopt));
    EXPECT_EQ(rates({"--resample", "60"}), Rates(std::nullopt, 60.0));
    EXPECT_EQ(rates({"--resample=60"}), Rates(std::nullopt, 60.0));
    EXPECT_EQ(rates({"--fps", "30", "--resample", "60"}), Rates(30.0, 60.0));
    EXPECT_EQ(rates({"--fps", "60", "--resample"}), Rates(std::nullopt, 60.0));
    EXPECT_EQ(rates({"--resample", "--fps", "60"}), Rates(std::nullopt, 60.0));
    EXPECT_EQ(rates({"--preset", "cmu", "--resample"}), Rates(std::nullopt, 120.0));
    EXPECT_EQ(rates({"--preset", "cmu", "--fps", "60", "--resample"}), Rates(std::nullopt, 60.0));
    EXPECT_THROW(rates({"--resample"}), cli::UsageError);
    EXPECT_THROW(rates({"--resample", "0"}), cli::UsageError);
}

TEST(ImportArguments, TheValueOfResampleIsTheNextWordOnlyIfThatIsANumber) {
    const ImportRequest request =
        ParseImport({"-o", "a.glb", "--fps", "60", "--resample", "walk.bvh"});
    EXPECT_EQ(request.take.file.path, "walk.bvh");
    EXPECT_EQ(request.exports.resampleTo, 60.0);
}

TEST(ImportArguments, ThePresetIsKeptForTheSurvey) {
    EXPECT_EQ(ParseImport({"07.asf"}).take.preset, take::Preset::Auto);
    EXPECT_EQ(ParseImport({"07.asf", "--preset", "auto"}).take.preset, take::Preset::Auto);
    EXPECT_EQ(ParseImport({"07.asf", "--preset", "cmu"}).take.preset, take::Preset::Cmu);
    EXPECT_EQ(ParseImport({"07.asf", "--preset", "none"}).take.preset, take::Preset::None);
    const ImportRequest request =
        ParseImport({"07.asf", "--length", "1", "--fps", "60", "--preset", "cmu"});
    EXPECT_EQ(request.take.lengthMultiplier, 1.0);
    EXPECT_EQ(request.take.framesPerSecond, 60.0);
}

TEST(ImportArguments, HaveOptionsOfOutputs) {
    const ImportRequest plain = ParseImport({"walk.bvh", "-o", "a.glb"});
    EXPECT_FALSE(plain.exports.frames.has_value());
    EXPECT_FALSE(plain.exports.inPlace || plain.exports.allNodes || plain.exports.aim);
    EXPECT_FALSE(plain.exports.animationPerModel || plain.exports.float32);
    EXPECT_FALSE(plain.exports.compress.has_value() || plain.provenance || plain.noClobber);
    EXPECT_EQ(plain.csvNames, "");
    const ImportRequest request =
        ParseImport({"walk.bvh", "-o", "a.glb", "-o", "a.npz", "-o", "a.csv", "--in-place",
                     "--all-nodes", "--aim", "--animations", "Per-Model", "--float32", "--compress",
                     "--provenance", "--no-clobber", "--csv-names", "names.csv"});
    EXPECT_TRUE(request.exports.inPlace && request.exports.allNodes && request.exports.aim);
    EXPECT_TRUE(request.exports.animationPerModel && request.exports.float32);
    EXPECT_TRUE(request.exports.compress == true && request.provenance && request.noClobber);
    EXPECT_EQ(request.csvNames, "names.csv");
    EXPECT_FALSE(ParseImport({"walk.bvh", "-o", "a.glb", "--animations", "merged"})
                     .exports.animationPerModel);
}

TEST(ImportArguments, FramesIncludeBothEnds) {
    constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
    const std::tuple<const char*, std::int64_t, std::int64_t> rows[] = {
        {"10:20", 10, 20}, {"7:7", 7, 7},      {"-10:-2", -10, -2},
        {"-3:4", -3, 4},   {"10:", 10, kLast}, {":20", kFirst, 20}};
    for (const auto& [text, first, last] : rows) {
        const auto frames =
            ParseImport({"walk.bvh", "-o", "a.glb", "--frames", text}).exports.frames;
        ASSERT_TRUE(frames.has_value()) << text;
        EXPECT_EQ(std::pair(frames->first, frames->last), std::pair(first, last)) << text;
    }
}

TEST(ImportArguments, TheProcessesOfConvertGetOptionsWithoutAnOutput) {
    EXPECT_EQ(ParseImport({"walk.bvh", "--report", "--scale", "2"}).exports.scale, 2.0);
}

TEST(ImportArguments, KeywordsMayHaveAnyLetterCase) {
    const ImportRequest request =
        ParseImport({"07.asf", "--tree", "--preset", "CMU", "--up", "Z", "--progress", "Off"});
    EXPECT_EQ(request.take.preset, take::Preset::Cmu);
    EXPECT_EQ(request.exports.up, exporters::UpAxis::Z);
    EXPECT_EQ(request.progress, cli::Progress::Off);
    EXPECT_EQ(std::get<dataset::Request>(Parse({"convert", "t", "--to", "GLTF", "--out-dir", "o"}))
                  .formats.front()
                  .extension,
              ".gltf");
}

TEST(ImportArguments, ChooseHowFilesAreSurveyed) {
    const ImportRequest plain = ParseImport({"walk.bvh"});
    EXPECT_FALSE(plain.take.asIs || plain.take.strict);
    EXPECT_EQ(plain.take.encoding, "");
    const ImportRequest strict = ParseImport({"walk.bvh", "--strict", "--encoding", "SHIFT_JIS"});
    EXPECT_TRUE(strict.take.strict);
    EXPECT_EQ(strict.take.encoding, "SHIFT_JIS");
    EXPECT_TRUE(ParseImport({"walk.bvh", "--as-is"}).take.asIs);
}

TEST(CheckArguments, AreParsed) {
    const auto request = std::get<cli::CheckRequest>(
        Parse({"check", "a.BVH", "07.asf", "07_01.amc", "--json", "--strict", "--fix", "--out-dir",
               "fixed", "--encoding", "LATIN1"}));
    EXPECT_THAT(request.files, testing::ElementsAre("a.BVH", "07.asf", "07_01.amc"));
    EXPECT_TRUE(request.json && request.strict && request.fix);
    EXPECT_EQ(request.outDir, "fixed");
    EXPECT_EQ(request.encoding, "LATIN1");
    EXPECT_EQ(std::get<cli::CheckRequest>(Parse({"check", "a.bvh", "--fix", "-o", "b.bvh"})).output,
              "b.bvh");
}

TEST(CheckArguments, AnInputIsNotOverwritten) {
    const support::TemporaryFolder folder;
    folder.Write("walk.bvh", "text");
    EXPECT_THROW(
        Parse({"check", folder.Path("walk.bvh"), "--fix", "-o", folder.Path("./walk.bvh")}),
        cli::UsageError);
    EXPECT_THROW(Parse({"check", folder.Path("walk.bvh"), "--fix", "--out-dir", folder.Path("")}),
                 cli::UsageError);
}

TEST(ImportArguments, AFileMayBeginWithADash) {
    EXPECT_EQ(ParseImport({"--", "-walk.bvh"}).take.file.path, "-walk.bvh");
}

TEST(CommandArguments, MayBeZeroWhereATextIsRead) {
    for (const char* zero : {"word:0", "bool:false", "real:0", "str:"})
        EXPECT_NO_THROW(Parse({"command", "Biovision Import function", zero, "bool:true"})) << zero;
    EXPECT_NO_THROW(Parse({"command", "Another function", "word:1"}));
}

TEST(ImportArguments, AnInputIsNotOverwritten) {
    const support::TemporaryFolder folder;
    folder.Write("walk.bvh", "text");
    std::filesystem::create_hard_link(folder.Path("walk.bvh"), folder.Path("linked.json"));
    std::filesystem::create_symlink("walk.bvh", folder.Path("symbolic.json"));
    for (const char* output : {"linked.json", "symbolic.json"})
        EXPECT_THROW(ParseImport({folder.Path("walk.bvh"), "-o", folder.Path(output)}),
                     cli::UsageError)
            << output;
    EXPECT_THROW(Parse({"command", "X", "str:" + folder.Path("walk.bvh"), "--json",
                        folder.Path("walk.bvh")}),
                 cli::UsageError);
}

TEST(CommandArguments, AreParsedInOrder) {
    const auto request =
        std::get<cli::CommandRequest>(Parse({"command", "import", "str:-o", "--json", "r.json",
                                             "bool:true", "word:1", "real:2", "--progress", "on"}));
    EXPECT_EQ(request.name, "import");
    ASSERT_EQ(request.arguments.size(), 4u);
    EXPECT_EQ(request.arguments[0].text, "-o");
    EXPECT_TRUE(request.arguments[1].boolean);
    EXPECT_EQ(request.arguments[2].word, 1);
    EXPECT_EQ(request.arguments[3].real, 2.0);
    EXPECT_EQ(request.jsonFile, "r.json");
    EXPECT_EQ(request.progress, cli::Progress::On);
}

TEST(RawArguments, HoldTexts) {
    for (const std::string text : {"", "walk.bvh", "a:b", "str:", " "}) {
        const RawArgument argument = cli::ParseRawArgument("str:" + text);
        EXPECT_EQ(argument.kind, RawArgument::Kind::Text);
        EXPECT_EQ(argument.text, text);
    }
}

TEST(RawArguments, HoldBooleans) {
    EXPECT_TRUE(cli::ParseRawArgument("bool:true").boolean);
    EXPECT_FALSE(cli::ParseRawArgument("bool:false").boolean);
    EXPECT_TRUE(cli::ParseRawArgument("bool:TRUE").boolean);
    EXPECT_FALSE(cli::ParseRawArgument("bool:False").boolean);
    EXPECT_EQ(cli::ParseRawArgument("bool:false").kind, RawArgument::Kind::Boolean);
}

TEST(RawArguments, HoldWords) {
    const std::pair<const char*, int> rows[] = {
        {"0", 0}, {"1", 1}, {"65535", 65535}, {"0xFFFF", 65535}, {"0X1f", 31}};
    for (const auto& [text, word] : rows) {
        const RawArgument argument = cli::ParseRawArgument(std::string("word:") + text);
        EXPECT_EQ(argument.kind, RawArgument::Kind::Word);
        EXPECT_EQ(argument.word, word) << text;
    }
}

TEST(RawArguments, HoldNumbers) {
    const std::pair<const char*, double> rows[] = {
        {"1", 1.0}, {"+1.5", 1.5}, {"-0", -0.0}, {"1e-3", 1e-3}, {"-inf", -HUGE_VAL}};
    for (const auto& [text, number] : rows) {
        const RawArgument argument = cli::ParseRawArgument(std::string("real:") + text);
        EXPECT_EQ(argument.kind, RawArgument::Kind::Real);
        EXPECT_EQ(argument.real, number) << text;
        EXPECT_EQ(std::signbit(argument.real), std::signbit(number)) << text;
    }
    EXPECT_TRUE(std::isnan(cli::ParseRawArgument("real:nan").real));
}

TEST(RawArguments, AreRefusedWithoutAKindOrWithAnotherValue) {
    for (const char* text :
         {"",         "str",          "walk.bvh",   ":",        "text:a",  "STR:a",
          "bool:",    "bool:1",       "bool:yes",   "word:",    "word:-1", "word:65536",
          "word:0x",  "word:0x10000", "word:1 ",    "word:1.0", "real:",   "real:a",
          "real:1,5", "real:1 ",      "real:1e999", "real:+-1"})
        EXPECT_THROW(cli::ParseRawArgument(text), cli::UsageError) << text;
}

}  // namespace
