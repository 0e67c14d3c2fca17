// Whole commands: what they log, and what they pass to the importer and to the host.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "headless/session.h"
#include "headless/testing.h"
#include "plugin/contract.h"
#include "tests/bvh/samples.h"
#include "tests/plugin/plugin_library.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace biovision_command_test {

using bvh_test::kChain;
using bvh_test::kStill;
using bvh_test::kTree;
using namespace plugin::biovision;
using plugin::kBiovisionCommand;
using plugin::kFalse;
using plugin::kTrue;
using plugin_test::Biovision;
using plugin_test::Call;
using plugin_test::Wide;
using support::CommandLines;
using support::Lines;
using support::LogLines;
using support::Utf8;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const headless::Scene& Scene() {
    return headless::Session::Current().GetScene();
}

struct CommandRow {
    const char* name;
    std::string text;  // of the file; if it is empty, no file is written
    Lines log;         // after the opening line
};
std::ostream& operator<<(std::ostream& out, const CommandRow& row) {
    return out << row.name;
}

const CommandRow kCommandRows[] = {
    {"OneModel", kChain, {"8: Imported 1 model successfully"}},
    {"TwoModels", kChain + kTree, {"8: Imported 2 models successfully"}},
    {"ThreeModels", kStill + kStill + kStill, {"8: Imported 3 models successfully"}},
    {"NoFile", "", {"8: ERROR: Failed to read BVH file. Specify a valid file name"}},
    {"OtherFile", "hello", {"8: ERROR: BVH file is invalid. Specify a valid BVH file"}},
    {"FirstLineBroken", "HIERARCHY FOO", {"8: ERROR (LINE 1): Invalid BVH token found"}},
    {"ThirdLineBroken", "HIERARCHY\n\n}\n", {"8: ERROR (LINE 3): Too many closing brackets '}'"}},
    {"SecondSectionBroken",
     kStill + "HIERARCHY\nROOT A {\nOFFSET 0 x 0\n}",
     {"8: ERROR (LINE 10): Expected a float value for OFFSET y",
      "8: Imported 1 model successfully"}},
    {"ThirdSectionBroken",
     kStill + kStill + "HIERARCHY ROOT",
     {"8: ERROR (LINE 15): Unexpected end of file", "8: Imported 2 models successfully"}},
};

class BiovisionCommand : public testing::TestWithParam<CommandRow> {};

std::wstring Write(const support::TemporaryFolder& dir, const std::string& text) {
    return text.empty() ? Wide(dir.Path("none.bvh")) : Wide(dir.Write("walk.bvh", text));
}

TEST_P(BiovisionCommand, LogsItsOutcome) {
    Lines expected = {"-: Importing Biovision BVH File..."};
    expected.insert(expected.end(), GetParam().log.begin(), GetParam().log.end());
    for (const bool interactive : {true, false}) {
        support::StartSession(interactive);
        const support::TemporaryFolder dir;
        EXPECT_EQ(Call(kBiovisionCommand, Biovision(Write(dir, GetParam().text))), 0u);
        EXPECT_THAT(LogLines(), ElementsAreArray(expected));
        EXPECT_THAT(support::SceneProblems(true), IsEmpty());
    }
}

// The references are those of the last model that was completed, or empty.
TEST_P(BiovisionCommand, AddsAClipWhateverTheOutcome) {
    support::StartSession(true);
    const support::TemporaryFolder dir;
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(Write(dir, GetParam().text)).Word(kAddClip, kTrue)),
              0u);
    const auto& log = GetParam().log;
    const auto& commands = CommandLines();
    ASSERT_THAT(commands, testing::Not(IsEmpty()));
    if (!log.back().starts_with("8: Imported")) {
        EXPECT_THAT(commands.back(), testing::StartsWith("AddClip(-, -, -, -, -, -) 0x8"));
        return;
    }
    const int models = log.back()[12] - '0';
    const std::string name = models == 1 ? "walk" : "walk" + std::to_string(models - 1);
    EXPECT_EQ(commands.back(),
              "AddClip(" + name + ", " + name + "." + name + "_Motion, -, -, -, -) 0");
    const headless::Object& model = *Scene().Models()[static_cast<std::size_t>(models) - 1];
    ASSERT_THAT(model.modelData->clips, SizeIs(1));
    EXPECT_EQ(model.modelData->clips[0].source, model.modelData->actions[1]->id);
}

INSTANTIATE_TEST_SUITE_P(, BiovisionCommand, testing::ValuesIn(kCommandRows),
                         [](const auto& row) { return std::string(row.param.name); });

class PluginCommand : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }
};

TEST_F(PluginCommand, WithoutAFileNameMakesNoImporter) {
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(L"")), 0u);
    EXPECT_THAT(LogLines(), ElementsAre("2: File name not specified"));
    EXPECT_THAT(support::BarLines(), IsEmpty());
    EXPECT_THAT(CommandLines(), IsEmpty());
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(L"").Word(kAddClip, kTrue)), 0u);
    EXPECT_THAT(CommandLines(), ElementsAre(testing::StartsWith("AddClip(-, -, -, -, -, -) 0x8")));
}

TEST_F(PluginCommand, PassesTheOptionsOn) {
    const support::TemporaryFolder dir;
    const std::wstring path = Wide(dir.Write("walk.bvh", kTree));
    const auto count = [](headless::ObjectType type) {
        int found = 0;
        for (const headless::Object* object : Scene().Objects())
            found += object->type == type;
        return found;
    };
    Call(kBiovisionCommand, Biovision(path));
    EXPECT_EQ(count(headless::ObjectType::Null), 9);
    EXPECT_THAT(Scene().Models()[0]->modelData->groups, IsEmpty());

    support::StartSession(true);
    Call(kBiovisionCommand, Biovision(path).Word(kUseNulls, kFalse).Word(kCreateGroup, kTrue));
    EXPECT_EQ(count(headless::ObjectType::ChainRoot), 1);
    EXPECT_THAT(Scene().Models()[0]->modelData->groups, SizeIs(1));

    support::StartSession(true);
    Call(kBiovisionCommand, Biovision(path)
                                .Word(kUseNulls, kFalse)
                                .Word(kChainFromParentJoint, kTrue)
                                .Word(kEffectorToLastBone, kTrue));
    EXPECT_EQ(count(headless::ObjectType::ChainRoot), 3);
    for (const headless::Object* object : Scene().Objects())
        if (object->type == headless::ObjectType::ChainEffector) {
            EXPECT_EQ(object->parent->type, headless::ObjectType::ChainBone);
        }
}

TEST_F(PluginCommand, RunsTwiceInARow) {
    const support::TemporaryFolder dir;
    const std::wstring path = Wide(dir.Write("walk.bvh", kChain));
    Call(kBiovisionCommand, Biovision(path).Word(kAddClip, kTrue));
    Call(kBiovisionCommand, Biovision(L"/nonexistent").Word(kAddClip, kTrue));
    Call(kBiovisionCommand, Biovision(path).Word(kAddClip, kTrue));
    EXPECT_THAT(
        LogLines(),
        ElementsAre("-: Importing Biovision BVH File...", "8: Imported 1 model successfully",
                    "-: Importing Biovision BVH File...",
                    "8: ERROR: Failed to read BVH file. Specify a valid file name",
                    "-: Importing Biovision BVH File...", "8: Imported 1 model successfully"));
    Lines clips;
    for (const std::string& line : CommandLines())
        if (line.starts_with("AddClip")) clips.push_back(line.substr(0, line.find(')')));
    EXPECT_THAT(
        clips, ElementsAre("AddClip(walk, walk.walk_Motion, -, -, -, -", "AddClip(-, -, -, -, -, -",
                           "AddClip(walk1, walk1.walk1_Motion, -, -, -, -"));
    EXPECT_THAT(Scene().Models(), SizeIs(2));
    EXPECT_THAT(support::SceneProblems(true), IsEmpty());
}

TEST_F(PluginCommand, TellsACancelledImport) {
    const support::TemporaryFolder dir;
    const std::wstring path = Wide(dir.Write("walk.bvh", kChain));
    headless::PressCancelAtPoll(1);
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(path)), 0u);
    EXPECT_EQ(LogLines().back(), "8: ERROR (LINE 19): User cancelled command");
    support::StartSession(true);
    headless::PressCancelAtPoll(20);
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(path)), 0u);
    EXPECT_EQ(LogLines().back(), "8: ERROR: User cancelled command");
}

// --- the model's name ---

struct NameRow {
    const char* name;
    std::string file;
    std::wstring path;  // relative to the folder, as the host passes it
    std::string model;
};
std::ostream& operator<<(std::ostream& out, const NameRow& row) {
    return out << row.name;
}

const NameRow kNameRows[] = {
    {"Plain", "walk.bvh", L"walk.bvh", "walk"},
    {"OtherExtension", "walk.txt", L"walk.txt", "walk"},
    {"NoExtension", "walk", L"walk", "walk"},
    {"LastExtensionAlone", "walk.v2.final.bvh", L"walk.v2.final.bvh", "walk.v2.final"},
    {"DotAtTheEnd", "walk.", L"walk.", "walk"},
    {"Spaces", "my walk .bvh", L"my walk .bvh", "my walk "},
    {"Backslash", "a\\b.bvh", L"a\\b.bvh", "a\\b"},
    {"Japanese", "\xE6\xAD\xA9\xE3\x81\x8F.bvh", L"\u6B69\u304F.bvh", "\xE6\xAD\xA9\xE3\x81\x8F"},
    {"Longest", std::string(251, 'n') + ".bvh", std::wstring(251, L'n') + L".bvh",
     std::string(251, 'n')},
};

class ModelName : public testing::TestWithParam<NameRow> {};

TEST_P(ModelName, IsTheFilesWithoutItsExtension) {
    support::StartSession(false);
    const support::TemporaryFolder dir;
    dir.Write("folder.with.dots/" + GetParam().file, kStill);
    Call(kBiovisionCommand, Biovision(Wide(dir.Path("folder.with.dots/")) + GetParam().path));
    ASSERT_THAT(Scene().Models(), SizeIs(1)) << LogLines().back();
    EXPECT_EQ(Utf8(Scene().Models()[0]->name), GetParam().model);
}

INSTANTIATE_TEST_SUITE_P(, ModelName, testing::ValuesIn(kNameRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PluginCommand, NeedsANameBeforeTheExtension) {
    const support::TemporaryFolder dir;
    Call(kBiovisionCommand, Biovision(Wide(dir.Write(".bvh", kStill))));
    EXPECT_EQ(LogLines().back(),
              "8: ERROR: Container model name not specified. Specify a valid model name");
    Call(kBiovisionCommand, Biovision(Wide(dir.Path()) + L"/"));
    EXPECT_EQ(LogLines().back(),
              "8: ERROR: Container model name not specified. Specify a valid model name");
}

}  // namespace biovision_command_test
