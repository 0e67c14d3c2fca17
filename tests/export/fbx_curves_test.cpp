// The curves of exported .fbx files.
#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "headless/text.h"
#include "tests/export/fbx_limb.h"

namespace fbx_curves_test {

using exported::Fbx;
using exported::FbxFileReader;
using exported::FbxRecord;
using exported::kLimb;
using exported::Times;
using exported::Values;
using headless::Channel;
using testing::ElementsAre;
using testing::SizeIs;

constexpr double kSecond = exported::kFbxSecond;

// The keys of the scene's curve for a channel of the object with this name, as 32-bit floats. Empty
// if there is no curve.
std::vector<float> SceneKeys(const std::wstring& name, Channel channel) {
    const headless::Object& model = *exported::CurrentScene().Models().front();
    std::vector<float> keys;
    for (const headless::ActionItem& item : exported::MotionOf(model)->items) {
        const auto target = exported::CurrentScene().ResolveTarget(model, item);
        if (!target.object || headless::View(target.object->name) != name) continue;
        if (target.channel != channel || !item.IsCurve()) continue;
        for (const double value : *item.GetCurve().keys.values)
            keys.push_back(static_cast<float>(value));
    }
    return keys;
}

double GreatestStep(const std::vector<float>& keys) {
    double greatest = 0.0;
    for (std::size_t key = 1; key < keys.size(); ++key)
        greatest = std::max(greatest, std::abs(double{keys[key]} - keys[key - 1]));
    return greatest;
}

TEST(FbxCurves, HasTheKeysOfTheScene) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx();
    EXPECT_EQ(Values(fbx.Curve("Hips", "Lcl Translation", "d|Y")),
              SceneKeys(L"Hips", Channel::PosY));
    EXPECT_EQ(Values(fbx.Curve("Hips", "Lcl Rotation", "d|Z")), SceneKeys(L"Hips", Channel::RotZ));
    EXPECT_THAT(Values(fbx.Curve("Leg", "Lcl Translation", "d|X")),
                ElementsAre(2.0F, 3.0F, 4.0F, 5.1F));
    const std::vector<std::int64_t> times = Times(fbx.Curve("Hips", "Lcl Translation", "d|Y"));
    ASSERT_THAT(times, SizeIs(4));
    for (std::size_t frame = 0; frame < times.size(); ++frame)
        EXPECT_EQ(times[frame], std::llround(static_cast<double>(frame) * 0.3 * kSecond));
}

TEST(FbxCurves, LeavesOutChannelsThatDoNotMove) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx();
    for (const char* axis : {"d|X", "d|Y", "d|Z"}) {
        EXPECT_EQ(fbx.Curve("Arm", "Lcl Rotation", axis), nullptr) << axis;
        EXPECT_EQ(fbx.Curve("Arm", "Lcl Translation", axis), nullptr) << axis;
        EXPECT_EQ(fbx.Curve("Leg", "Lcl Rotation", axis), nullptr) << axis;
        // Those of the first joint's rotation stay, so that every motion has curves.
        EXPECT_THAT(Values(fbx.Curve("Hips", "Lcl Rotation", axis)), SizeIs(4)) << axis;
    }
    EXPECT_EQ(fbx.Curve("Hips", "Lcl Translation", "d|X"), nullptr);
    EXPECT_EQ(fbx.Curve("Leg", "Lcl Translation", "d|Y"), nullptr);
    // No curve node is without curves, and there are only those of the three that move.
    const std::int64_t layer = fbx.Find("AnimLayer", "BaseLayer");
    const auto nodes = fbx.ConnectedTo(layer, "AnimCurveNode");
    EXPECT_THAT(nodes, SizeIs(3));
    for (const std::int64_t node : nodes)
        EXPECT_FALSE(fbx.ConnectedTo(node, "AnimCurve").empty());
}

TEST(FbxCurves, GivesTwoKeysToAChannelThatHasAnotherValueThanAtRest) {
    std::string text = kLimb;
    const std::string held = "0 0 0  2 -4 0 0 0 0";
    text.replace(text.find(held), held.size(), "0 0 7  2 -4 0 0 0 0");
    for (const char* row : {"0 0 0  3 -4", "0 0 0  4 -4", "0 0 0  5.1 -4"})
        text.replace(text.find(row), 5, "0 0 7");
    ASSERT_TRUE(exported::ImportText(text));
    const FbxFileReader fbx = Fbx();
    const FbxRecord* curve = fbx.Curve("Arm", "Lcl Rotation", "d|X");
    const float value = SceneKeys(L"Arm", Channel::RotX).front();
    EXPECT_THAT(Values(curve), ElementsAre(value, value));
    EXPECT_THAT(Times(curve), ElementsAre(0, std::llround(3 * 0.3 * kSecond)));
    EXPECT_EQ(fbx.Curve("Arm", "Lcl Translation", "d|Y"), nullptr);
}

TEST(FbxCurves, HasAnglesThatDoNotJump) {
    std::string text = kLimb;
    for (const auto& [row, angles] :
         {std::pair("0 0 0  2 -4 0 0 0 0", "10 40 0"), std::pair("0 0 0  3 -4", "10 100 20"),
          std::pair("0 0 0  4 -4", "30 160 5"), std::pair("0 0 0  5.1 -4", "10 220 0")})
        text.replace(text.find(row), 5, angles);
    for (const bool nulls : {true, false}) {
        ASSERT_TRUE(exported::ImportText(text, {.nulls = nulls}));
        if (nulls) {
            EXPECT_GT(GreatestStep(SceneKeys(L"Arm", Channel::RotX)), 180.0);
        }
        const FbxFileReader fbx = Fbx();
        for (const char* axis : {"d|X", "d|Y", "d|Z"}) {
            EXPECT_LT(GreatestStep(Values(fbx.Curve("Arm", "Lcl Rotation", axis))), 180.0) << axis;
        }
    }
}

TEST(FbxCurves, HasNoStepOfAHalfTurn) {
    std::string text = kLimb;
    for (const auto& [row, angles] :
         {std::pair("3 -4 0 0 0 0", "3 -4 0 0 0 180"), std::pair("4 -4 0 0 0 0", "4 -4 0 0 0 0")})
        text.replace(text.find(row), 12, angles);
    ASSERT_TRUE(exported::ImportText(text));
    const FbxFileReader fbx = Fbx();
    int halfTurns = 0;
    for (const char* axis : {"d|X", "d|Y", "d|Z"}) {
        const double step = GreatestStep(Values(fbx.Curve("Leg", "Lcl Rotation", axis)));
        EXPECT_LT(step, 180.0) << axis;
        halfTurns += step > 179.99 ? 1 : 0;
    }
    EXPECT_GE(halfTurns, 1);
}

TEST(FbxCurves, UsesTheSameBytesForEqualTimes) {
    ASSERT_TRUE(exported::Import({exported::Samples().front()}));
    const FbxFileReader fbx = Fbx();
    std::map<std::string, int> found;
    for (const auto& [id, object] : fbx.Objects())
        if (object.kind == "AnimCurve") ++found[(*object.record)["KeyTime"].bytes];
    EXPECT_THAT(found,
                SizeIs(testing::Le(2)));  // all frames, and perhaps the first and the last one
    const std::size_t frames = Times(fbx.Curve("Hips", "Lcl Rotation", "d|X")).size();
    for (const auto& [bytes, count] : found)
        if (count > 10) {
            EXPECT_LT(bytes.size(), frames * sizeof(std::int64_t) * 3 / 4);
        }
}

TEST(FbxCurves, SaysHowKeysAreJoined) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx();
    const FbxRecord& curve = *fbx.Curve("Hips", "Lcl Rotation", "d|Z");
    const auto& flags = curve["KeyAttrFlags"].Get<std::vector<std::int32_t>>();
    ASSERT_THAT(flags, SizeIs(1));
    EXPECT_EQ(flags.front() & 0xE, 4);  // linear
    EXPECT_THAT(curve["KeyAttrDataFloat"].Get<std::vector<float>>(), SizeIs(4));
    EXPECT_THAT(curve["KeyAttrRefCount"].Get<std::vector<std::int32_t>>(), ElementsAre(4));
}

TEST(FbxCurves, HoldsSamplesOfTheMotion) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx({.resampleTo = 10.0});
    EXPECT_THAT(Values(fbx.Curve("Hips", "Lcl Translation", "d|Y")), SizeIs(10));
    EXPECT_EQ(Times(fbx.Curve("Hips", "Lcl Translation", "d|Y"))[1], std::llround(0.1 * kSecond));
    EXPECT_THAT(fbx["GlobalSettings"].Numbers("CustomFrameRate"), ElementsAre(10.0));
}

TEST(FbxCurves, HasTheSameKeysIfTheyAreCompressed) {
    ASSERT_TRUE(exported::Import({exported::Samples().front()}));
    const std::string plain = exported::Export(".fbx", {.compress = false});
    const std::string packed = exported::Export(".fbx");
    EXPECT_LT(packed.size(), plain.size());
    const FbxFileReader a(plain);
    const FbxFileReader b(packed);
    for (const auto& [id, object] : a.Objects())
        if (object.kind == "AnimCurve") {
            EXPECT_EQ(Values(object.record), Values(b.Objects().at(id).record));
        }
}

TEST(FbxCurves, SeparatesTimesThatRoundingMadeEqual) {
    ASSERT_TRUE(exported::ImportText(kLimb));
    const FbxFileReader fbx = Fbx({.framesPerSecond = 1e12});
    EXPECT_THAT(Times(fbx.Curve("Hips", "Lcl Translation", "d|Y")), ElementsAre(0, 1, 2, 3));
}

}  // namespace fbx_curves_test
