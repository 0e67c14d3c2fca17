// Imports of files that are packed by gzip, and of files without a path.
#include <gmock/gmock.h>

#include "export/formats.h"
#include "files/system_storage.h"
#include "headless/text.h"
#include "take/import.h"
#include "tests/support/files.h"
#include "tests/support/gzip_data.h"
#include "tests/support/temporary_folder.h"
#include "text/wide_text.h"

namespace packed_files_test {

using support::PackGzip;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

take::Result Import(const take::Request& request) {
    static const take::LoadedPlugin loaded = take::LoadPlugin(ZKMOCAP_PLUGIN);
    files::SystemStorage storage;
    return take::Import(*loaded.plugin, request, storage);
}

std::string Sample(const std::string& name) {
    return support::ReadText(std::string(ZKMOCAP_EXAMPLES_DIR "/") + name);
}

std::string Glb(const take::Result& result) {
    text::StringSink out;
    exporters::Notes notes;
    exporters::Write(*exporters::FindFormat(".glb"), {result.Scene(), {}}, {out}, notes);
    return out.Bytes();
}

std::string ModelName(const take::Result& result) {
    return text::EncodeUtf8(headless::View(result.Scene().Models().front()->name));
}

take::Request Biovision(take::InputFile file, bool asIs = false) {
    take::Request request;
    request.file = std::move(file);
    request.asIs = asIs;
    return request;
}

TEST(PackedBvh, GivesTheSameSceneAsThePlainFile) {
    const support::TemporaryFolder folder;
    const std::string text = Sample("walk.bvh");
    const std::string plain = folder.Write("walk.bvh", text);
    const std::string packed = folder.Write("walk.bvh.gz", PackGzip(text));
    const std::string upper = folder.Write("WALK.BVH.GZ", PackGzip(text));
    for (const bool asIs : {false, true}) {
        const take::Result a = Import(Biovision({plain}, asIs));
        const take::Result b = Import(Biovision({packed}, asIs));
        ASSERT_TRUE(a.IsImported() && b.IsImported()) << b.FirstError();
        EXPECT_TRUE(Glb(a) == Glb(b));
        EXPECT_EQ(ModelName(b), "walk");
        EXPECT_THAT(text::EncodeUtf8(headless::View(b.userInput.strBVHFile)),
                    EndsWith("/walk.bvh.gz"));
        EXPECT_EQ(ModelName(Import(Biovision({upper}, asIs))), "WALK");
    }
}

TEST(PackedBvh, IsMendedLikeThePlainFile) {
    std::string text = Sample("walk.bvh");
    text.replace(text.find("Frames: 257"), 11, "Frames: 300");
    const take::Result result = Import(Biovision({"walk.bvh.gz", PackGzip(text)}));
    ASSERT_TRUE(result.IsImported()) << result.FirstError();
    ASSERT_EQ(result.findings.size(), 1U);
    EXPECT_EQ(result.findings[0].file, "walk.bvh.gz");
    EXPECT_EQ(result.findings[0].findings.at(0).code, "frames-fewer");
    EXPECT_EQ(ModelName(result), "walk");
}

TEST(PackedPair, MayHaveOnePlainFile) {
    const std::string asf = Sample("walk.asf");
    const std::string amc = Sample("walk.amc");
    const std::pair<take::InputFile, take::InputFile> pairs[] = {
        {{"walk.asf", asf}, {"walk.amc", amc}},
        {{"walk.asf.gz", PackGzip(asf)}, {"walk.amc", amc}},
        {{"walk.asf", asf}, {"walk.amc.gz", PackGzip(amc)}},
        {{"walk.asf.gz", PackGzip(asf)}, {"walk.amc.gz", PackGzip(amc)}},
    };
    for (const bool asIs : {false, true}) {
        std::string expected;
        for (const auto& [skeleton, motion] : pairs) {
            take::Request request = Biovision(skeleton, asIs);
            request.format = take::Format::Acclaim;
            request.motion = motion;
            const take::Result result = Import(request);
            ASSERT_TRUE(result.IsImported()) << result.FirstError();
            if (expected.empty()) expected = Glb(result);
            EXPECT_TRUE(Glb(result) == expected) << skeleton.path << ' ' << motion.path;
        }
    }
}

TEST(PackedFiles, LeaveNothingInTheTemporaryFolder) {
    const support::TemporaryFolder temporary;
    setenv("TMPDIR", temporary.Path("").c_str(), 1);
    EXPECT_TRUE(Import(Biovision({"walk.bvh.gz", PackGzip(Sample("walk.bvh"))})).IsImported());
    EXPECT_FALSE(Import(Biovision({"walk.bvh.gz", PackGzip("no capture\n")})).IsImported());
    EXPECT_THAT(temporary.Names(), IsEmpty());
    unsetenv("TMPDIR");
}

struct Refusal {
    const char* name;
    take::InputFile file;
    const char* error;
    bool isRefusedAsIs = true;
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.name;
}

class RefusedPackedFile : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedPackedFile, SaysWhy) {
    const take::Result result = Import(Biovision(GetParam().file));
    EXPECT_TRUE(result.isRefused);
    EXPECT_THAT(result.FirstError(), HasSubstr(GetParam().error));
    const take::Result asIs = Import(Biovision(GetParam().file, true));
    EXPECT_FALSE(asIs.IsImported());
    EXPECT_EQ(asIs.isRefused, GetParam().isRefusedAsIs);
    EXPECT_EQ(asIs.FirstError() == result.FirstError(), GetParam().isRefusedAsIs);
}

const std::string kPacked = PackGzip("HIERARCHY\n");
const Refusal kRefusals[] = {
    {"Missing", {"/nonexistent/walk.bvh.gz"}, "walk.bvh.gz: error: no such file [unreadable]"},
    {"NotPacked",
     {"walk.bvh.gz", "HIERARCHY\n"},
     "walk.bvh.gz: error: does not contain gzip data; it looks like a BVH file [unreadable]"},
    {"Cut", {"a.bvh.gz", kPacked.substr(0, kPacked.size() - 4)}, "end too early; the file was"},
    {"NoBytes", {"a.bvh.gz", ""}, "a.bvh.gz: error: the file is empty [empty]", false},
    {"NothingInIt", {"a.bvh.gz", PackGzip("")}, "the file is empty [empty]", false},
    {"NoText", {"a.bvh.gz", PackGzip(std::string(99, '\1'))}, "it looks like binary data", false},
    {"PackedTwice", {"a.bvh.gz", PackGzip(kPacked)}, "it looks like gzip data", false},
    {"OtherName", {"a.bvh", kPacked}, "it looks like gzip data", false},
};
INSTANTIATE_TEST_SUITE_P(, RefusedPackedFile, testing::ValuesIn(kRefusals),
                         [](const auto& row) { return row.param.name; });

TEST(FileWithoutAPath, IsNamedAsTheRequestSays) {
    const std::string text = Sample("walk.bvh");
    const take::InputFile files[] = {{"<stdin>", text, "stdin.bvh"},
                                     {"<stdin>", PackGzip(text), "stdin.bvh.gz"}};
    for (const take::InputFile& file : files) {
        const take::Result result = Import(Biovision(file));
        ASSERT_TRUE(result.IsImported()) << result.FirstError();
        EXPECT_EQ(ModelName(result), "stdin");
        EXPECT_EQ(result.findings.at(0).file, "<stdin>");
        EXPECT_EQ(headless::View(result.userInput.strBVHFile), L"<stdin>");
    }
}

}  // namespace packed_files_test
