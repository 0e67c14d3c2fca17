// The contents of exported .glb and .gltf files.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/export/exported.h"
#include "tests/export/glb.h"
#include "tests/support/bvh_random.h"

namespace {

using exported::Glb;
using headless::Transform;
using nlohmann::json;
using testing::HasSubstr;

const std::string kLimb =
    "HIERARCHY\nROOT a:Hips\n{\nOFFSET 1 2 3\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\nJOINT leg.L\n{\nOFFSET 0 -4 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 -4 0\n}\n}\nJOINT legL\n{\nOFFSET 2 -4 0\nCHANNELS 3 Zrotation "
    "Xrotation "
    "Yrotation\n}\n}\n"
    "MOTION\nFrames: 4\nFrame Time: 0.5\n"
    "1 2 3 0 0 0  0 0 0  10 20 30\n"
    "1 2 3 90 0 0  0 0 0  10 20 30\n"
    "1 5 3 180 0 0  0 0 0  10 20 30\n"
    "1 5 3 270 0 0  0 0 0  10 20 30\n";

Transform LocalOf(const json& node) {
    const auto t = node.value("translation", std::vector<double>{0, 0, 0});
    const auto q = node.value("rotation", std::vector<double>{0, 0, 0, 1});
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    return {{{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
             {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
             {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}},
            {t[0], t[1], t[2]}};
}

// The global transforms of all nodes, computed from the transforms in the file.
std::vector<Transform> GlobalsOf(const json& file) {
    std::vector<Transform> globals;
    for (const json& node : file["nodes"])
        globals.push_back(LocalOf(node));
    // Parents come before their children.
    for (std::size_t node = 0; node < globals.size(); ++node)
        for (const std::size_t child :
             file["nodes"][node].value("children", std::vector<std::size_t>()))
            globals[child] = globals[child] * globals[node];
    return globals;
}

void ExpectTrueInverses(const Glb& glb) {
    const std::vector<Transform> globals = GlobalsOf(glb.json);
    for (const json& skin : glb.json["skins"]) {
        const auto binds = glb.Floats(skin["inverseBindMatrices"].get<std::size_t>());
        const std::vector<std::size_t> joints = skin["joints"];
        ASSERT_EQ(binds.size(), joints.size() * 16);
        for (std::size_t joint = 0; joint < joints.size(); ++joint) {
            Transform bind;
            for (std::size_t row = 0; row < 3; ++row) {
                for (std::size_t column = 0; column < 3; ++column)
                    bind.axes[row][column] =
                        static_cast<double>(binds[16 * joint + 4 * row + column]);
                bind.origin[row] = static_cast<double>(binds[16 * joint + 12 + row]);
            }
            const Transform product = bind * globals[joints[joint]];
            const double reach = 1.0 + std::hypot(bind.origin[0], bind.origin[1], bind.origin[2]);
            for (int row = 0; row < 3; ++row) {
                EXPECT_NEAR(product.origin[row], 0.0, 1e-6 * reach);
                for (int column = 0; column < 3; ++column)
                    EXPECT_NEAR(product.axes[row][column], row == column ? 1.0 : 0.0, 1e-6);
            }
        }
    }
}

TEST(Gltf, BindsTheSkinInTheBasePose) {
    for (const bool nulls : {true, false}) {
        for (const auto& files : exported::Samples()) {
            ASSERT_TRUE(exported::Import(files, {.nulls = nulls}));
            ExpectTrueInverses(Glb(exported::Export(".glb")));
            ExpectTrueInverses(
                Glb(exported::Export(".glb", {.scale = 0.01, .up = exporters::UpAxis::Z})));
        }
    }
}

TEST(Gltf, HoldsOneSkinForEachModel) {
    ASSERT_TRUE(exported::ImportText(kLimb + kLimb));
    const json file = Glb(exported::Export(".glb")).json;
    ASSERT_EQ(file["skins"].size(), 2u);
    ASSERT_EQ(file["animations"].size(), 1u);
    EXPECT_EQ(file["animations"][0]["name"], "take_Motion");
    EXPECT_EQ(file["scenes"][0]["nodes"].size(), 4u);  // two holders, two bodies
    for (const json& skin : file["skins"]) {
        const std::size_t holder = skin["skeleton"];
        EXPECT_EQ(file["nodes"][holder]["name"], skin["name"]);
        EXPECT_EQ(file["nodes"][holder]["children"].size(), 1u);
        EXPECT_EQ(skin["joints"].size(), 4u);
    }
}

TEST(Gltf, HoldsEveryKeyAtSharedTimes) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const Glb glb(exported::Export(".glb"));
    EXPECT_THAT(glb.Times(), testing::ElementsAre(0.0F, 0.5F, 1.0F, 1.5F));
    const json& animation = glb.json["animations"][0];
    for (const json& sampler : animation["samplers"]) {
        EXPECT_EQ(sampler["input"], animation["samplers"][0]["input"]);
        EXPECT_EQ(glb.json["accessors"][sampler["output"].get<std::size_t>()]["count"], 4);
    }
    const json& times = glb.json["accessors"][animation["samplers"][0]["input"].get<std::size_t>()];
    EXPECT_EQ(times["min"], json::array({0.0}));
    EXPECT_EQ(times["max"], json::array({1.5}));
}

TEST(Gltf, KeepsTranslationsOnlyWhereTheyChange) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const Glb glb(exported::Export(".glb"));
    EXPECT_THAT(glb.Track("a:Hips", "translation"),
                testing::ElementsAre(1, 2, 3, 1, 2, 3, 1, 5, 3, 1, 5, 3));
    EXPECT_TRUE(glb.Track("leg.L", "translation").empty());
    // A curve whose values do not change is written too. An end site has no curve.
    EXPECT_EQ(glb.Track("leg.L", "rotation").size(), 16u);
    EXPECT_TRUE(glb.Track("leg.L_End", "rotation").empty());
}

TEST(Gltf, WritesUnitQuaternionsNearToTheOneBefore) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        ASSERT_TRUE(exported::ImportText(support::RandomBvh(seed)));
        const Glb glb(exported::Export(".glb"));
        if (!glb.json.contains("animations")) continue;
        for (const json& channel : glb.json["animations"][0]["channels"]) {
            if (channel["target"]["path"] != "rotation") continue;
            const std::size_t sampler = channel["sampler"];
            const auto values = glb.Floats(
                glb.json["animations"][0]["samplers"][sampler]["output"].get<std::size_t>());
            for (std::size_t key = 0; key < values.size(); key += 4) {
                float length = 0.0F;
                float side = 0.0F;
                for (std::size_t part = 0; part < 4; ++part) {
                    length += values[key + part] * values[key + part];
                    if (key > 0) side += values[key + part] * values[key + part - 4];
                }
                EXPECT_NEAR(length, 1.0F, 1e-6F);
                EXPECT_GE(side, 0.0F);
            }
        }
    }
}

TEST(Gltf, RepeatsNamesThatViewersWouldChange) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const Glb glb(exported::Export(".glb"));
    EXPECT_EQ(glb.Node("a:Hips")["extras"]["name"], "a:Hips");
    EXPECT_EQ(glb.Node("leg.L")["extras"]["name"], "leg.L");
    EXPECT_EQ(glb.Node("legL")["extras"]["name"], "legL");  // "leg.L" would become the same
    EXPECT_FALSE(glb.Node("take").contains("extras"));
}

TEST(Gltf, NamesItsSourceAndOptions) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    exporters::Options options{.scale = 0.5};
    options.source = {
        {{"/some/where/take 1.bvh", 12, "ab"}}, "Biovision BVH", {{"nulls", "true"}}, "tool 1.0"};
    const Glb glb(exported::Export(".glb", options));
    const json& extras = glb.json["asset"]["extras"];
    EXPECT_EQ(extras["sourceFiles"], json::array({"take 1.bvh"}));
    EXPECT_EQ(extras["sources"],
              json::array({{{"name", "take 1.bvh"}, {"bytes", 12}, {"sha256", "ab"}}}));
    EXPECT_EQ(extras["sourceFormat"], "Biovision BVH");
    EXPECT_EQ(extras["tool"], "tool 1.0");
    EXPECT_EQ(extras["options"]["scale"], 0.5);
    EXPECT_EQ(extras["options"]["nulls"], true);
    EXPECT_EQ(glb.json["animations"][0]["extras"]["framesPerSecond"], 2.0);
    EXPECT_EQ(glb.json["animations"][0]["extras"]["sourceFramesPerSecond"], 2.0);
}

TEST(Gltf, PutsMotionsIntoOneAnimationIfTheirTimesAllow) {
    std::string slower = kLimb;
    slower.replace(slower.find("0.5"), 3, "0.7");
    const auto animations = [](const std::string& text, const exporters::Options& options) {
        EXPECT_TRUE(exported::ImportText(text));
        return Glb(exported::Export(".glb", options)).json["animations"];
    };
    const json merged = animations(kLimb + kLimb, {});
    ASSERT_EQ(merged.size(), 1u);
    const json apart = animations(kLimb + kLimb, {.animationPerModel = true});
    ASSERT_EQ(apart.size(), 2u);
    EXPECT_EQ(apart[1]["name"], "take1_Motion");
    EXPECT_EQ(merged[0]["channels"].size(),
              apart[0]["channels"].size() + apart[1]["channels"].size());
    EXPECT_EQ(animations(kLimb + slower, {}).size(), 2u);
    EXPECT_EQ(animations(kLimb + slower, {.framesPerSecond = 30.0}).size(), 1u);
}

TEST(Gltf, WritesTheSkinWithoutAMesh) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const json file = Glb(exported::Export(".glb", {.mesh = false})).json;
    EXPECT_FALSE(file.contains("meshes"));
    EXPECT_EQ(file["skins"].size(), 1u);
    EXPECT_EQ(file["scenes"][0]["nodes"].size(), 1u);
}

TEST(Gltf, HonoursRateAndResampling) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const Glb faster(exported::Export(".glb", {.framesPerSecond = 10.0}));
    EXPECT_THAT(faster.Times(), testing::ElementsAre(0.0F, 0.1F, 0.2F, 0.3F));
    const json& extras = faster.json["animations"][0]["extras"];
    EXPECT_EQ(extras["framesPerSecond"], 10.0);
    EXPECT_EQ(extras["sourceFramesPerSecond"], 2.0);
    const Glb denser(exported::Export(".glb", {.resampleTo = 4.0}));
    EXPECT_THAT(denser.Times(), testing::ElementsAre(0.0F, 0.25F, 0.5F, 0.75F, 1.0F, 1.25F, 1.5F));
    const Glb both(exported::Export(".glb", {.framesPerSecond = 10.0, .resampleTo = 20.0}));
    EXPECT_EQ(both.Times().size(), 7u);
    EXPECT_FLOAT_EQ(both.Times().back(), 0.3F);
}

TEST(Gltf, WritesOnlyThePoseWithoutARate) {
    std::string text = kLimb;
    text.replace(text.find("0.5"), 3, "0.0");
    ASSERT_TRUE(exported::ImportText(text));
    exporters::Notes notes;
    const json file = Glb(exported::Export(".glb", {}, &notes)).json;
    EXPECT_FALSE(file.contains("animations"));
    EXPECT_EQ(file["skins"].size(), 1u);
    EXPECT_THAT(notes, testing::ElementsAre(HasSubstr("take: the motion has no frame time")));
}

TEST(Gltf, MakesEffectorsChildrenOfTheLastBone) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0], {.nulls = false}));
    const Glb glb(exported::Export(".glb", {.allNodes = true}));
    std::size_t effectors = 0;
    for (const headless::Object* object : exported::CurrentScene().Objects()) {
        if (object->type != headless::ObjectType::ChainEffector) continue;
        ++effectors;
        const std::string name(object->name.GetWideString(),
                               object->name.GetWideString() + object->name.Length());
        EXPECT_TRUE(glb.Track(name, "rotation").empty()) << name;
        EXPECT_TRUE(glb.Track(name, "translation").empty()) << name;
        const json& node = glb.Node(name);
        EXPECT_NEAR(node["translation"][0].get<double>(),
                    object->chainRoot->chainData->bones.back()->length, 1e-12);
    }
    EXPECT_GT(effectors, 3u);
}

TEST(Gltf, RefersToItsSecondFileByName) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const json file = json::parse(exported::Export(".gltf"));
    EXPECT_EQ(file["buffers"][0]["uri"], "export.bin");
}

}  // namespace
