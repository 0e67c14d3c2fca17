#include "export/formats.h"

#include <gmock/gmock.h>

#include "export/json_record.h"
#include "tests/support/test_scene.h"
#include "text/byte_sink.h"

namespace {

using exporters::FindFormat;
using testing::ElementsAre;

TEST(Formats, AreFoundByTheirExtensions) {
    for (const exporters::Format& format : exporters::Formats())
        EXPECT_EQ(FindFormat(format.extension), &format);
    EXPECT_EQ(FindFormat(".xyz"), nullptr);
    EXPECT_EQ(FindFormat("glb"), nullptr);
    EXPECT_EQ(FindFormat(""), nullptr);
}

TEST(Formats, NameTheFilesOfAnOutput) {
    EXPECT_THAT(exporters::FilesOf(*FindFormat(".glb"), "a.b/walk.glb"),
                ElementsAre("a.b/walk.glb"));
    EXPECT_THAT(exporters::FilesOf(*FindFormat(".gltf"), "a.b/walk.GLTF"),
                ElementsAre("a.b/walk.GLTF", "a.b/walk.bin"));
}

class EveryFormat : public testing::TestWithParam<exporters::Format> {};

// What the table says about a format must be true.
TEST_P(EveryFormat, WritesToItsSinksAlone) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    scene.AddNull(model, L"Hips", 1, 2, 3);
    const headless::Session& session = headless::Session::Current();
    const exporters::RunRecord record{0, session.Log(), session.Bar(), session.Commands(), "{}"};
    const exporters::Options options;
    const exporters::Content content{session.GetScene(), options, &record};
    text::StringSink out;
    text::StringSink side;
    exporters::Notes notes;
    EXPECT_EQ(exporters::Write(GetParam(), content, {out, &side, "side"}, notes), "");
    EXPECT_FALSE(out.Bytes().empty());
    EXPECT_EQ(side.Bytes().empty(), GetParam().sideExtension.empty());
}

TEST_P(EveryFormat, OfAnEmptySceneIsRefusedUnlessItIsARecord) {
    const TestScene scene;
    const headless::Session& session = headless::Session::Current();
    const exporters::Options options;
    text::StringSink out;
    text::StringSink side;
    exporters::Notes notes;
    EXPECT_EQ(
        exporters::Write(GetParam(), {session.GetScene(), options}, {out, &side}, notes),
        GetParam().isRecord ? "there is no record of the import" : "there is no model to write");
}

INSTANTIATE_TEST_SUITE_P(, EveryFormat, testing::ValuesIn(exported::WrittenFormats()),
                         [](const auto& row) {
                             return std::string(row.param.extension.substr(1));
                         });

}  // namespace
