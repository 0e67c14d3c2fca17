#include "dataset/job_arguments.h"

#include <gmock/gmock.h>
#include <set>

#include "cli/arguments.h"
#include "export/formats.h"
#include "text/shell_words.h"

namespace {

using dataset::Job;
using dataset::Request;
using testing::HasSubstr;

dataset::Request RequestOf(std::vector<const char*> words) {
    words.insert(words.begin(), {"convert", "t", "--to", "glb", "--out-dir", "out"});
    return std::get<dataset::Request>(cli::ParseArguments(words));
}

std::string LineOf(const Job& job, const std::vector<const char*>& options) {
    return text::ShellLine(dataset::ImportArguments(job, RequestOf(options)));
}

const Job kBiovision{"t/walk.bvh", "", "walk.bvh", {"walk.glb"}, ""};
const Job kAcclaim{"t/a.amc", "t/s.asf", "a.amc", {"a.glb"}, ""};
const Job kSkeleton{"t/s.asf", "", "s.asf", {"s.glb"}, ""};

TEST(JobArguments, NameInputsAndOutput) {
    EXPECT_EQ(LineOf(kBiovision, {}),
              "import t/walk.bvh --progress=off --provenance --make-folders -o out/walk.glb");
    EXPECT_EQ(LineOf(kAcclaim, {}),
              "import t/s.asf t/a.amc --progress=off --provenance --make-folders -o out/a.glb");
}

TEST(JobArguments, NameEveryOutput) {
    const Job job{"t/w.bvh", "", "w.bvh", {"w.glb", "w.npz"}, ""};
    EXPECT_EQ(
        LineOf(job, {}),
        "import t/w.bvh --progress=off --provenance --make-folders -o out/w.glb -o out/w.npz");
}

TEST(JobArguments, HaveTheOptionsInAFixedOrder) {
    const std::string one =
        LineOf(kBiovision, {"--scale", "0.01", "--no-group", "--bones", "--clip", "--fps=30",
                            "--up", "z", "--no-chain-from-parent", "--effector-to-last-bone"});
    EXPECT_EQ(one, LineOf(kBiovision, {"--clip", "--effector-to-last-bone", "--fps", "30",
                                       "--no-chain-from-parent", "--up=z", "--bones", "--no-group",
                                       "--scale=0.01"}));
    EXPECT_EQ(one,
              "import t/walk.bvh --bones --no-chain-from-parent --effector-to-last-bone --no-group "
              "--clip --scale=0.01 --up=z --fps=30 --progress=off --provenance --make-folders -o "
              "out/walk.glb");
}

TEST(JobArguments, KeepOutputsThatExist) {
    EXPECT_EQ(LineOf(kBiovision, {"--no-clobber"}),
              "import t/walk.bvh --progress=off --no-clobber --provenance --make-folders -o "
              "out/walk.glb");
    // An import that writes nothing keeps everything, and the option changes no output.
    EXPECT_EQ(
        text::ShellLine(dataset::ImportArguments(kBiovision, RequestOf({"--no-clobber"}), false)),
        "import t/walk.bvh --progress=off");
    EXPECT_EQ(dataset::OptionsLine(RequestOf({"--no-clobber"})),
              dataset::OptionsLine(RequestOf({})));
}

TEST(JobArguments, HaveTheOptionsOfOutputs) {
    EXPECT_EQ(LineOf(kBiovision, {"--frames", "2:9", "--in-place", "--all-nodes", "--aim",
                                  "--animations", "per-model", "--provenance"}),
              "import t/walk.bvh --frames=2:9 --in-place --all-nodes --aim --animations=per-model "
              "--progress=off --provenance --make-folders -o out/walk.glb");
}

TEST(JobArguments, HaveAcclaimOptionsOnlyForAcclaimFiles) {
    const std::vector<const char*> options = {"--limits", "--length=-2", "--preset", "cmu",
                                              "--nulls"};
    EXPECT_EQ(
        LineOf(kBiovision, options),
        "import t/walk.bvh --nulls --progress=off --provenance --make-folders -o out/walk.glb");
    EXPECT_EQ(LineOf(kAcclaim, options),
              "import t/s.asf t/a.amc --nulls --limits --length=-2 --preset=cmu --progress=off "
              "--provenance --make-folders -o out/a.glb");
    EXPECT_THAT(LineOf(kSkeleton, options), HasSubstr("--limits"));
}

TEST(JobArguments, ResampleAtThePresetsRateOnlyForAcclaimFiles) {
    const std::vector<const char*> options = {"--preset", "cmu", "--resample"};
    EXPECT_EQ(LineOf(kBiovision, options),
              "import t/walk.bvh --progress=off --provenance --make-folders -o out/walk.glb");
    EXPECT_THAT(LineOf(kAcclaim, options), HasSubstr("--preset=cmu --resample"));
    EXPECT_THAT(LineOf(kBiovision, {"--preset", "cmu", "--resample", "--fps", "60"}),
                HasSubstr("--fps=60 --resample"));
}

TEST(JobArguments, NameFilesThatLookLikeOptionsByAPath) {
    dataset::Request request = RequestOf({});
    request.outDir = "-out";
    const Job job{"-s.bvh", "", "-s.bvh", {"-s.glb"}, ""};
    EXPECT_EQ(text::ShellLine(dataset::ImportArguments(job, request)),
              "import ./-s.bvh --progress=off --provenance --make-folders -o ./-out/-s.glb");
}

TEST(JobArguments, AreParsedByImport) {
    std::vector<std::string> words = dataset::ImportArguments(
        kAcclaim, RequestOf({"--limits", "--length", "-0.5", "--bones", "--no-group", "--plugin",
                             "p.so", "--scale=2"}));
    const std::vector<const char*> pointers = [&] {
        std::vector<const char*> all;
        for (const std::string& word : words)
            all.push_back(word.c_str());
        return all;
    }();
    const auto import = std::get<cli::ImportRequest>(cli::ParseArguments(pointers));
    EXPECT_EQ(import.take.file.path, "t/s.asf");
    EXPECT_EQ(import.take.motion->path, "t/a.amc");
    EXPECT_TRUE(import.take.applyLimits && !import.take.useNulls && !import.take.createGroup &&
                import.makeFolders);
    EXPECT_EQ(import.take.lengthMultiplier, -0.5);
    EXPECT_EQ(import.exports.scale, 2.0);
    EXPECT_EQ(import.plugin, "p.so");
    EXPECT_EQ(import.progress, cli::Progress::Off);
    ASSERT_EQ(import.outputs.size(), 1u);
    EXPECT_EQ(import.outputs[0].path, "out/a.glb");
}

TEST(OptionsLine, NamesTheFormats) {
    EXPECT_THAT(dataset::OptionsLine(RequestOf({})), HasSubstr(" .glb "));
    EXPECT_THAT(dataset::OptionsLine(RequestOf({"--to", "json"})), HasSubstr(" .glb.json "));
}

TEST(OptionsLine, ChangesOnlyWithOptionsThatChangeOutputs) {
    const std::string line = dataset::OptionsLine(RequestOf({}));
    for (const std::vector<const char*>& options : std::vector<std::vector<const char*>>{
             {"--bones"}, {"--limits"}, {"--asf=s.asf"}, {"--plugin=p.so"}, {"--scale=2"}})
        EXPECT_NE(dataset::OptionsLine(RequestOf(options)), line) << options[0];
    for (const std::vector<const char*>& options :
         std::vector<std::vector<const char*>>{{"-j3"}, {"--resume"}, {"--time-limit=9"}})
        EXPECT_EQ(dataset::OptionsLine(RequestOf(options)), line) << options[0];
}

std::string FormatsIn(const std::vector<const char*>& options) {
    std::vector<const char*> words = {"convert", "t", "--out-dir", "out"};
    words.insert(words.end(), options.begin(), options.end());
    const auto request = std::get<dataset::Request>(cli::ParseArguments(words));
    std::string list;
    for (const dataset::OutputFormat& format : request.formats)
        list += format.extension + format.sideExtension + ' ';
    return list;
}

TEST(Formats, AreAListInAnyOrder) {
    EXPECT_EQ(FormatsIn({"--to", "glb"}), ".glb ");
    EXPECT_EQ(FormatsIn({"--to", "glb,npz"}), ".glb .npz ");
    EXPECT_EQ(FormatsIn({"--to=NPZ,gltf"}), ".gltf.bin .npz ");
    EXPECT_EQ(FormatsIn({"--to", "npz", "--to", "json,glb"}), ".glb .npz .json ");
    EXPECT_EQ(FormatsIn({"--to", "glb,npz,glb", "--to", "npz"}), ".glb .npz ");
}

// Otherwise two outputs of one source could have the same path.
TEST(Formats, HaveDifferentExtensions) {
    std::set<std::string_view> extensions;
    for (const exporters::Format& format : exporters::Formats())
        for (const std::string_view extension : {format.extension, format.sideExtension})
            EXPECT_TRUE(extension.empty() || extensions.insert(extension).second) << extension;
}

struct Wrong {
    const char* name;
    std::vector<const char*> words;
    const char* message;
};

void PrintTo(const Wrong& row, std::ostream* out) {
    *out << row.name;
}

const Wrong kWrong[] = {
    {"NoPath", {"--to", "json", "--out-dir", "o"}, "paths"},
    {"NoFormat", {"t", "--out-dir", "o"}, "--to"},
    {"NoOutDir", {"t", "--to", "json"}, "--out-dir"},
    {"EmptyOutDir", {"t", "--to", "json", "--out-dir", ""}, "--out-dir"},
    {"Format", {"t", "--to", "obj", "--out-dir", "o"}, "--to obj"},
    {"OneFormatOfTwo", {"t", "--to", "json,obj", "--out-dir", "o"}, "--to obj"},
    {"NoFormatAfterTheComma", {"t", "--to", "json,", "--out-dir", "o"}, "--to"},
    {"EmptyFormat", {"t", "--to", "", "--out-dir", "o"}, "--to"},
    {"NoJobs", {"t", "--to", "json", "--out-dir", "o", "-j0"}, "--jobs 0"},
    {"HalfAJob", {"t", "--to", "json", "--out-dir", "o", "-j", "1.5"}, "--jobs 1.5"},
    {"ManyJobs", {"t", "--to", "json", "--out-dir", "o", "-j", "1e9"}, "--jobs 1e9"},
    {"Asf", {"t", "--to", "json", "--out-dir", "o", "--asf", "s.bvh"}, "--asf s.bvh"},
    {"Scale", {"t", "--to", "json", "--out-dir", "o", "--scale", "no"}, "--scale no"},
    {"NotHonoured",
     {"t", "--to", "csv", "--out-dir", "o", "--digits", "3"},
     "--digits: no output honours it; .bvh does"},
    {"NotHonouredByJson",
     {"t", "--to", "json", "--out-dir", "o", "--scale", "2"},
     "--scale: no output honours it; .glb, .gltf, .fbx, .bvh, .csv, .npz, .html and .svg do"},
    {"TimeLimit", {"t", "--to", "json", "--out-dir", "o", "--time-limit", "x"}, "--time-limit x"},
    {"BothSkeletons", {"t", "--to", "json", "--out-dir", "o", "--nulls", "--bones"}, "--nulls"},
    {"Tree", {"t", "--to", "json", "--out-dir", "o", "--tree"}, "--tree"},
};

class ConvertUsage : public testing::TestWithParam<Wrong> {};

TEST_P(ConvertUsage, IsRefused) {
    std::vector<const char*> words = GetParam().words;
    words.insert(words.begin(), "convert");
    try {
        cli::ParseArguments(words);
        FAIL() << "was accepted";
    } catch (const cli::UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().message));
    }
}

INSTANTIATE_TEST_SUITE_P(, ConvertUsage, testing::ValuesIn(kWrong),
                         [](const auto& row) { return row.param.name; });

}  // namespace
