#include "export/json_record.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "host/automation.h"
#include "tests/support/test_scene.h"
#include "text/byte_sink.h"

namespace {

using nlohmann::ordered_json;

std::string RecordText(std::int32_t result = 0, const std::string& userInput = "{}") {
    const headless::Session& session = headless::Session::Current();
    exporters::RunRecord record{result, session.Log(), session.Bar(), session.Commands()};
    record.userInput = userInput;
    text::StringSink sink;
    exporters::WriteJsonRecord(sink, session.GetScene(), record);
    return sink.Bytes();
}

ordered_json Record(std::int32_t result = 0, const std::string& userInput = "{}") {
    return ordered_json::parse(RecordText(result, userInput));
}

TEST(JsonRecord, OfAnEmptySceneIsComplete) {
    const TestScene scene;
    EXPECT_EQ(Record(), ordered_json::parse(R"({
        "result": 0, "log": [], "bar": [], "commands": [],
        "userInput": {},
        "scene": []})"));
}

TEST(JsonRecord, HasItsMembersInOrder) {
    const TestScene scene;
    std::vector<std::string> keys;
    const ordered_json record = Record();
    for (const auto& [key, value] : record.items())
        keys.push_back(key);
    EXPECT_THAT(keys,
                testing::ElementsAre("result", "log", "bar", "commands", "userInput", "scene"));
}

TEST(JsonRecord, HoldsTheUnsignedResultAndTheArguments) {
    const TestScene scene;
    const ordered_json record = Record(Zelk::status::kFail, R"({"bAddClip": true})");
    EXPECT_EQ(record["result"], 0x80004005u);
    EXPECT_EQ(record["userInput"], ordered_json::parse(R"({"bAddClip": true})"));
}

TEST(JsonRecord, HoldsFindingsAndAFactorIfThereAreAny) {
    const TestScene scene;
    const headless::Session& session = headless::Session::Current();
    exporters::RunRecord record{0, session.Log(), session.Bar(), session.Commands(), "{}"};
    record.findings = {R"({"code": "a"})", R"({"code": "b"})"};
    record.multiplied = 0.5;
    text::StringSink sink;
    exporters::WriteJsonRecord(sink, session.GetScene(), record);
    const ordered_json read = ordered_json::parse(sink.Bytes());
    EXPECT_EQ(read["findings"], ordered_json::parse(R"([{"code": "a"}, {"code": "b"}])"));
    EXPECT_EQ(read["multiplied"], 0.5);
}

TEST(JsonRecord, HoldsLogAndBar) {
    const TestScene scene;
    headless::Session::Current().SetInteractive(true);
    Zelk::Application().LogMessage(L"a \"b\"\n", Zelk::zkWarningSeverity);
    Zelk::AutomationApplication().LogMessage(L"plain");
    Zelk::UIToolkit toolkit;
    Zelk::UIToolkit::Create(toolkit);
    Zelk::ProgressBar bar = toolkit.GetProgressBar();
    bar.PutMinimum(0);
    bar.PutMaximum(32000);
    bar.PutStep(1);
    bar.PutValue(-5);
    bar.PutCaption(L"Importing Motion...");
    bar.PutVisible(Zelk::kAutomationTrue);
    bar.PutVisible(Zelk::kAutomationFalse);
    const ordered_json record = Record();
    EXPECT_EQ(record["log"], ordered_json::parse(R"([{"severity": 4, "text": "a \"b\"\n"},
                                                     {"severity": null, "text": "plain"}])"));
    EXPECT_EQ(record["bar"], ordered_json::parse(R"([["minimum", 0], ["maximum", 32000],
        ["step", 1], ["value", -5], ["caption", "Importing Motion..."],
        ["visible", true], ["visible", false]])"));
}

TEST(JsonRecord, HoldsCommandsWithReferencesByName) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    Zelk::CValueArray arguments(4);
    arguments[0] = Zelk::CValue(model.GetRef());
    arguments[1] = Zelk::CValue(Zelk::CRef());
    arguments[3] = Zelk::CValue(Zelk::CString(L"text"));
    Zelk::CValue ignored;
    const Zelk::CStatus status =
        Zelk::Application().ExecuteCommand(L"ApplyAction", arguments, ignored);
    const ordered_json command = Record()["commands"].at(0);
    EXPECT_EQ(command["name"], "ApplyAction");
    EXPECT_EQ(command["args"], ordered_json::parse(R"(["walk", null, null, "text"])"));
    EXPECT_EQ(command["status"], static_cast<std::uint32_t>(status.GetCode()));
}

TEST(JsonRecord, HoldsTheSceneInTheOrderItWasMade) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    Zelk::Null hips = scene.AddNull(model, L"Hips", 1, -0.0, 0.1);
    Zelk::CRefArray members;
    members.Add(hips.GetRef());
    Zelk::Group group;
    model.AddGroup(members, L"walk_Animated_Objects", false, group);
    scene.AddAction(model, L"walk_BasePose", 0.5, {});
    model.AddActionSource(L"Rest").AddSourceItem(L"Hips.kine.local.posx", 1.0, true);
    scene.AddAction(model, L"walk_Motion", 1.0, {{L"Hips.kine.local.posx", {1, 2}, {5, HUGE_VAL}}});
    EXPECT_EQ(Record()["scene"], ordered_json::parse(R"([
        {"name": "walk", "fullName": "walk", "type": "Model", "parent": null,
         "local": {"posx": 0.0, "posy": 0.0, "posz": 0.0, "rotx": 0.0, "roty": 0.0, "rotz": 0.0},
         "properties": [],
         "actions": [
           {"name": "walk_BasePose", "animEnd": 0.5, "items": []},
           {"name": "Rest", "animEnd": 0.0, "items": [
             {"target": "Hips.kine.local.posx", "active": true, "value": 1.0}]},
           {"name": "walk_Motion", "animEnd": 1.0, "items": [
             {"target": "Hips.kine.local.posx", "active": true, "interpolation": 1,
              "times": [1.0, 2.0], "values": [5.0, "inf"]}]}],
         "groups": [{"name": "walk_Animated_Objects", "members": ["walk.Hips"]}],
         "clips": []},
        {"name": "Hips", "fullName": "walk.Hips", "type": "Null", "parent": "walk",
         "local": {"posx": 1.0, "posy": -0.0, "posz": 0.1, "rotx": 0.0, "roty": 0.0, "rotz": 0.0},
         "properties": []}])"));
}

TEST(JsonRecord, HoldsClipsAndProperties) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    Zelk::CustomProperty property;
    model.AddCustomProperty(L"FcurvePset", false, property);
    Zelk::ActionSource motion = scene.AddAction(model, L"walk_Motion", 1.0, {});
    Zelk::CValueArray arguments(6);
    arguments[0] = Zelk::CValue(model.GetRef());
    arguments[1] = Zelk::CValue(motion.GetRef());
    Zelk::CValue ignored;
    Zelk::Application().ExecuteCommand(L"AddClip", arguments, ignored);
    const ordered_json object = Record()["scene"].at(0);
    EXPECT_EQ(object["properties"], ordered_json::parse(R"(["FcurvePset"])"));
    EXPECT_EQ(
        object["clips"],
        ordered_json::parse(R"([{"name": "walk_Motion_Clip", "source": "walk.walk_Motion"}])"));
}

TEST(JsonRecord, HoldsLengthsOfBonesOnly) {
    const TestScene scene;
    scene.AddChain(scene.AddModel(L"walk"), L"LegRoot");
    const ordered_json objects = Record()["scene"];
    ASSERT_FALSE(objects.empty());
    for (const auto& object : objects) {
        EXPECT_EQ(object.contains("length"), object["type"] == "ChainBone") << object;
        EXPECT_EQ(object.contains("actions"), object["type"] == "Model") << object;
        if (object.contains("length")) {
            EXPECT_EQ(object["length"], 2.0);
        }
    }
}

TEST(JsonRecord, KeepsAnObjectOnALine) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    scene.AddNull(model, L"Hips", 0, 0, 0);
    EXPECT_THAT(RecordText(), testing::HasSubstr("\n  {\"name\": \"Hips\", "));
}

TEST(JsonRecord, OfALongMotionIsComplete) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    std::vector<double> times;
    std::vector<double> values;
    for (int frame = 1; frame <= 100'000; ++frame) {
        times.push_back(frame);
        values.push_back(frame / 3.0);
    }
    scene.AddAction(
        model, L"walk_Motion", 1.0,
        {{L"walk.kine.local.posx", times, values}, {L"walk.kine.local.posy", times, values}});
    const ordered_json record = Record();
    const auto& items = record["scene"][0]["actions"][0]["items"];
    ASSERT_EQ(items.size(), 2u);
    for (const auto& item : items) {
        EXPECT_TRUE(item["times"].get<std::vector<double>>() == times);
        EXPECT_TRUE(item["values"].get<std::vector<double>>() == values);
    }
}

}  // namespace
