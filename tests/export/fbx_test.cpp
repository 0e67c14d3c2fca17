// The contents of exported .fbx files, but for the keys of their curves.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#include "tests/export/fbx_limb.h"

namespace fbx_test {

using exported::Fbx;
using exported::FbxFileReader;
using exported::FbxObject;
using exported::FbxRecord;
using exported::kLimb;
using exported::Values;
using exporters::Options;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr double kSecond = exported::kFbxSecond;

// The rotation around y by 60 degrees in a frame makes the scene's angles jump.
TEST(Fbx, HasTheSkeletonUnderTheModel) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx();
    const std::int64_t model = fbx.Find("Model", "take");
    EXPECT_EQ(fbx.Objects().at(model).variant, "Null");
    EXPECT_EQ(fbx.Objects().at(model).owner, 0);
    const std::pair<const char*, const char*> parents[] = {
        {"Hips", "take"}, {"Arm", "Hips"}, {"Arm_End", "Arm"}, {"Leg", "Hips"}};
    for (const auto& [name, parent] : parents) {
        const FbxObject& joint = fbx.Objects().at(fbx.Find("Model", name));
        EXPECT_EQ(joint.variant, "LimbNode") << name;
        EXPECT_EQ(joint.owner, fbx.Find("Model", parent)) << name;
        const auto attributes = fbx.ConnectedTo(fbx.Find("Model", name), "NodeAttribute");
        ASSERT_THAT(attributes, SizeIs(1)) << name;
        EXPECT_EQ((*fbx.Objects().at(attributes[0]).record)["TypeFlags"].Get<std::string>(),
                  "Skeleton");
    }
    const FbxRecord& arm = *fbx.Objects().at(fbx.Find("Model", "Arm")).record;
    EXPECT_THAT(arm.Numbers("Lcl Translation"), ElementsAre(0, 90, 0));
    EXPECT_THAT(arm.Numbers("Lcl Rotation"), ElementsAre(0, 0, 0));
    EXPECT_EQ(fbx["Definitions"]["Count"].Get<std::int32_t>(),
              static_cast<std::int32_t>(fbx.Objects().size()) + 1);
}

TEST(Fbx, HasABodyWhoseClustersAreAtRest) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx({.up = exporters::UpAxis::Z});
    const std::int64_t geometry = fbx.Find("Geometry", "take_Body");
    const FbxRecord& mesh = *fbx.Objects().at(geometry).record;
    EXPECT_EQ(fbx.Objects().at(geometry).owner, fbx.Find("Model", "take_Body"));
    const std::size_t vertices = mesh["Vertices"].Get<std::vector<double>>().size() / 3;
    EXPECT_EQ(mesh["PolygonVertexIndex"].Get<std::vector<std::int32_t>>().size(), vertices);
    EXPECT_EQ(mesh["LayerElementNormal"]["Normals"].Get<std::vector<double>>().size(),
              3 * vertices);

    const auto skins = fbx.ConnectedTo(geometry, "Deformer");
    ASSERT_THAT(skins, SizeIs(1));
    const auto clusters = fbx.ConnectedTo(skins[0], "SubDeformer");
    ASSERT_THAT(clusters, SizeIs(4));  // a cluster for each joint
    std::size_t weighted = 0;
    for (const std::int64_t id : clusters) {
        const FbxRecord& cluster = *fbx.Objects().at(id).record;
        if (cluster.Has("Indexes")) {
            weighted += cluster["Indexes"].Get<std::vector<std::int32_t>>().size();
            EXPECT_THAT(cluster["Weights"].Get<std::vector<double>>(), testing::Each(1.0));
        }
        EXPECT_THAT(fbx.ConnectedTo(id, "Model"), SizeIs(1));
        EXPECT_THAT(cluster["Transform"].Get<std::vector<double>>(), SizeIs(16));
    }
    EXPECT_EQ(weighted, vertices);
    // The arm is 90 above the hips along the scene's y axis, which --up z turns to -z.
    const FbxRecord& arm = *fbx.Objects().at(fbx.Find("SubDeformer", "Arm")).record;
    const auto& link = arm["TransformLink"].Get<std::vector<double>>();
    EXPECT_THAT((std::vector<double>{link[12], link[13], link[14]}), ElementsAre(1, 3, -92));
    const FbxRecord& pose = *fbx.Objects().at(fbx.Find("Pose", "take")).record;
    EXPECT_EQ(pose["NbPoseNodes"].Get<std::int32_t>(), 6);  // the model, its joints and its body
}

TEST(Fbx, HasNoBodyIfNoneIsWanted) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx({.mesh = false});
    for (const auto& [id, object] : fbx.Objects()) {
        EXPECT_NE(object.kind, "Geometry");
        EXPECT_NE(object.kind, "Deformer");
    }
    EXPECT_EQ(fbx["Objects"].children.size(), fbx.Objects().size());
}

TEST(Fbx, TurnsTheNodeAboveTheJoints) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader plain = Fbx();
    const FbxFileReader turned = Fbx({.up = exporters::UpAxis::Z});
    EXPECT_THAT(turned.Objects().at(turned.Find("Model", "take")).record->Numbers("Lcl Rotation"),
                ElementsAre(-90, 0, 0));
    for (const char* axis : {"d|X", "d|Y", "d|Z"})
        EXPECT_EQ(Values(turned.Curve("Hips", "Lcl Rotation", axis)),
                  Values(plain.Curve("Hips", "Lcl Rotation", axis)));
    EXPECT_THAT(turned["GlobalSettings"].Numbers("UpAxis"), ElementsAre(1));
}

struct UnitRow {
    const char* name;
    Options options;
    double centimetres;
};

const UnitRow kUnits[] = {
    {"Guessed", {}, 1.0},  // 1.7 m in centimetres
    {"Scaled", {.scale = 0.01}, 100.0},
    {"Known", {.metresPerUnit = 0.0254}, 2.54},
    {"KnownAndScaled", {.scale = 2.54, .metresPerUnit = 0.0254}, 1.0},
    {"Unknown", {.scale = 7.0, .metresPerUnit = 0.0}, 1.0},
};

TEST(Fbx, StatesTheUnit) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    for (const UnitRow& row : kUnits)
        EXPECT_THAT(Fbx(row.options)["GlobalSettings"].Numbers("UnitScaleFactor"),
                    ElementsAre(testing::DoubleNear(row.centimetres, 1e-12)))
            << row.name;
}

struct RateRow {
    double framesPerSecond;
    int mode;
};

constexpr RateRow kRates[] = {{120.0, 1},   {100.0, 2},  {60.0, 3},  {50.0, 4},
                              {48.0, 5},    {30.0, 6},   {25.0, 10}, {24.0, 11},
                              {119.88, 14}, {29.97, 14}, {7.5, 14}};

TEST(Fbx, StatesTheRate) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    for (const RateRow& row : kRates) {
        const FbxFileReader fbx = Fbx({.framesPerSecond = row.framesPerSecond});
        const FbxRecord& settings = fbx["GlobalSettings"];
        EXPECT_THAT(settings.Numbers("TimeMode"), ElementsAre(row.mode)) << row.framesPerSecond;
        EXPECT_THAT(settings.Numbers("CustomFrameRate"),
                    ElementsAre(testing::DoubleEq(row.framesPerSecond)));
        const auto stop = static_cast<double>(std::llround(3.0 / row.framesPerSecond * kSecond));
        EXPECT_THAT(settings.Numbers("TimeSpanStop"), ElementsAre(testing::DoubleNear(stop, 1.0)));
        const std::int64_t stack = fbx.Find("AnimStack", "take_Motion");
        EXPECT_EQ(fbx.Objects().at(stack).record->Numbers("LocalStop"),
                  settings.Numbers("TimeSpanStop"));
        EXPECT_EQ(fbx["Takes"]["Take"]["LocalTime"].Get<std::int64_t>(1),
                  static_cast<std::int64_t>(settings.Numbers("TimeSpanStop")[0]));
    }
}

TEST(Fbx, HoldsSeveralModels) {
    ASSERT_TRUE(exported::ImportText(kLimb + kLimb));
    const FbxFileReader fbx = Fbx();
    EXPECT_EQ(fbx["Takes"].children.size(), 3);  // "Current" and two takes
    for (const char* model : {"take", "take1"}) {
        const std::int64_t id = fbx.Find("Model", model);
        EXPECT_EQ(fbx.Objects().at(id).owner, 0);
        EXPECT_NO_THROW(fbx.Find("AnimStack", std::string(model) + "_Motion"));
        EXPECT_NO_THROW(fbx.Find("Geometry", std::string(model) + "_Body"));
    }
    // The times of both motions are the same, so they are the same bytes.
    std::map<std::string, int> times;
    for (const auto& [id, object] : fbx.Objects())
        if (object.kind == "AnimCurve") ++times[(*object.record)["KeyTime"].bytes];
    EXPECT_THAT(times, SizeIs(1));
}

TEST(Fbx, HoldsAModelWithoutMotion) {
    ASSERT_TRUE(exported::ImportText(kLimb.substr(0, kLimb.find("MOTION")) +
                                     "MOTION\nFrames: 0\nFrame Time: 0.1\n"));
    exporters::Notes notes;
    const FbxFileReader fbx = Fbx({}, &notes);
    EXPECT_THAT(notes, ElementsAre(HasSubstr("no motion")));
    EXPECT_THROW(fbx.Find("AnimStack", "take_Motion"), std::runtime_error);
    EXPECT_THROW(fbx["GlobalSettings"].Numbers("TimeMode"), std::runtime_error);
    EXPECT_EQ(fbx["Takes"]["Current"].Get<std::string>(), "");
}

TEST(Fbx, KeepsNamesAsTheyAre) {
    std::string text = kLimb;
    const std::string name = "a::b\"c\"[d]\xE8\x85\x95/.";
    text.replace(text.find("Arm"), 3, name);
    ASSERT_TRUE(exported::ImportText(text));
    const FbxFileReader fbx = Fbx();
    for (const std::string& joint :
         exported::Record(*exported::CurrentScene().Models().front()).names) {
        EXPECT_NO_THROW(fbx.Find("Model", joint)) << joint;
    }
}

TEST(Fbx, SaysWhereItComesFrom) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    Options options;
    options.source.files = {{"folder/walk.bvh", 12, {}}};
    options.source.tool = "tool 1.2";
    const FbxFileReader fbx = Fbx(options);
    EXPECT_EQ(fbx["Creator"].Get<std::string>(), "tool 1.2");
    const FbxRecord& info = fbx["FBXHeaderExtension"]["SceneInfo"];
    EXPECT_EQ(info["MetaData"]["Title"].Get<std::string>(), "walk.bvh");
    const auto comment = nlohmann::json::parse(info["MetaData"]["Comment"].Get<std::string>());
    EXPECT_EQ(comment["sources"][0]["bytes"], 12);
    EXPECT_EQ(comment["options"]["sourceUp"], "y");
}

TEST(Fbx, IsTheSameEveryTime) {
    ASSERT_TRUE(exported::Import({exported::Samples().front()}));
    const std::string once = exported::Export(".fbx");
    EXPECT_EQ(exported::Export(".fbx"), once);
}

struct RefusedRow {
    const char* name;
    Options options;
    const char* message;
};

TEST(Fbx, RefusesWhatItCannotHold) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const RefusedRow rows[] = {
        {"SlowestRate", {.framesPerSecond = 1e-9}, "the motion is too long for FBX"},
        {"HugeLengths",
         {.scale = 1e38, .mesh = false},
         "a number is not finite, or too large for a 32-bit float"},
    };
    for (const RefusedRow& row : rows) {
        try {
            exported::Export(".fbx", row.options);
            ADD_FAILURE() << row.name;
        } catch (const exporters::ExportError& error) {
            EXPECT_THAT(error.what(), HasSubstr(row.message)) << row.name;
        }
    }
}

}  // namespace fbx_test
