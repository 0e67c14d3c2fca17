#include "mocap/scene_helpers.h"

#include <clocale>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "headless/session.h"
#include "headless/testing.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/mocap/scene.h"
#include "tests/support/core/session_text.h"
#include "tests/support/math.h"

namespace {

using mocap_test::MakeModel;
using mocap_test::MakeNull;
using mocap_test::Turn;
using support::kIdentity4;
using support::Matrix4;
using support::RowRotationOfDegrees;
using support::Utf8;
using testing::ElementsAre;

class SceneHelpers : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }
};

// --- GetKineParamFullName ---

std::string Path(const wchar_t* parameter, const wchar_t* stop, Zelk3DObject object) {
    return Utf8(GetKineParamFullName(parameter, stop, object));
}

TEST_F(SceneHelpers, PathBeginsBelowTheStop) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null hips = MakeNull(model, L"Hips");
    const Zelk::Null arm = MakeNull(hips, L"LeftArm");
    EXPECT_EQ(Path(L"rotx", L"Skel", arm), "Hips.LeftArm.kine.local.rotx");
    EXPECT_EQ(Path(L"posz", L"Skel", hips), "Hips.kine.local.posz");
    EXPECT_EQ(Path(L"posz", L"Hips", arm), "LeftArm.kine.local.posz");
}

TEST_F(SceneHelpers, PathOfALengthHasNoKinematics) {
    Zelk::Model model = MakeModel(L"Skel");
    Zelk::ChainRoot root;
    ASSERT_TRUE(
        model.Add2DChain({0, 0, 0}, {0, 1, 0}, {0, 0, 1}, Zelk::zk2DChainNormalAlign, L"Root", root)
            .Succeeded());
    Zelk::ChainBone first(root.GetBones()[0]);
    first.PutName(L"B1");
    Zelk::ChainBone second;
    ASSERT_TRUE(root.AddBone({0, 2, 0}, Zelk::zkChainBonePin, L"B2", second).Succeeded());
    EXPECT_EQ(Path(L"bone.length", L"Root", second), "B1.B2.bone.length");
    EXPECT_EQ(Path(L"rotx", L"Root", second), "B1.B2.kine.local.rotx");
    EXPECT_EQ(Path(L"bone.length", L"Skel", second), "Root.B1.B2.bone.length");
    // Only "bone.length" is a length, not every name that ends in "length".
    EXPECT_EQ(Path(L"length", L"Root", second), "B1.B2.kine.local.length");
}

TEST_F(SceneHelpers, PathWithoutAStopHoldsEveryAncestor) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null arm = MakeNull(MakeNull(model, L"Hips"), L"LeftArm");
    const std::string path = Path(L"rotx", L"nobody", arm);
    EXPECT_THAT(path, testing::EndsWith("Skel.Hips.LeftArm.kine.local.rotx"));
    // The scene root above the models is an ancestor too, if it is an object.
    std::string expected = "kine.local.rotx";
    for (ZKObject object = arm; object.IsValid(); object = object.GetParent())
        expected = Utf8(object.GetName()) + "." + expected;
    EXPECT_EQ(path, expected);
}

TEST_F(SceneHelpers, PathAlwaysHoldsTheObjectItself) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null hips = MakeNull(model, L"Hips");
    EXPECT_THAT(Path(L"rotx", L"Hips", hips), testing::EndsWith("Skel.Hips.kine.local.rotx"));
}

TEST_F(SceneHelpers, PathDependsOnTheLetterCaseOfTheStop) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null hips = MakeNull(model, L"Hips");
    EXPECT_THAT(Path(L"rotx", L"skel", hips), testing::EndsWith("Skel.Hips.kine.local.rotx"));
}

TEST_F(SceneHelpers, PathOfAnEmptyHandleIsTheParameterAlone) {
    EXPECT_EQ(Path(L"posx", L"Skel", Zelk3DObject()), "kine.local.posx");
    EXPECT_EQ(Path(L"bone.length", L"Skel", Zelk3DObject()), "bone.length");
}

TEST_F(SceneHelpers, PathKeepsEveryCharacterOfItsNames) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null dotted = MakeNull(model, L"a.b:c \u53F3");
    EXPECT_EQ(Path(L"posx", L"Skel", dotted), "a.b:c \xE5\x8F\xB3.kine.local.posx");
}

// --- AddActionSource ---

TEST_F(SceneHelpers, MakesAnActionWithItsEnd) {
    Zelk::Model model = MakeModel(L"Skel");
    Zelk::ActionSource source;
    EXPECT_EQ(AddActionSource(model, L"Skel_Motion", source, 2.5).GetCode(), 0);
    ASSERT_TRUE(source.IsValid());
    const auto* action =
        headless::Session::Current().GetScene().FindAction(source.GetRef().Object());
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(Utf8(action->name), "Skel_Motion");
    EXPECT_EQ(action->animEnd, 2.5);
    EXPECT_TRUE(action->items.empty());
}

TEST_F(SceneHelpers, ReportsThatTheHostMadeNoAction) {
    Zelk::Model model = MakeModel(L"Skel");
    Zelk::ActionSource source;
    ASSERT_TRUE(AddActionSource(model, L"first", source, 1.0).Succeeded());
    headless::FailOperation("AddActionSource", 1);
    EXPECT_EQ(AddActionSource(model, L"second", source, 1.0).GetCode(), Zelk::status::kUnexpected);
    EXPECT_FALSE(source.IsValid());
    Zelk::Model nothing;
    EXPECT_EQ(AddActionSource(nothing, L"third", source, 1.0).GetCode(), Zelk::status::kUnexpected);
}

TEST_F(SceneHelpers, IgnoresAnEndThatCannotBeSet) {
    Zelk::Model model = MakeModel(L"Skel");
    Zelk::ActionSource source;
    headless::FailOperation("PutParameterValue", 1);
    EXPECT_EQ(AddActionSource(model, L"action", source, 2.5).GetCode(), 0);
    EXPECT_TRUE(source.IsValid());
}

// --- GetBoneGlobalMatrix ---

struct Matrices {
    Matrix4 global;
    Matrix4 inverse;
};

Matrices MatricesOf(Zelk3DObject object, const wchar_t* stop) {
    Matrices matrices;
    GetBoneGlobalMatrix(object, stop, matrices.global.m, matrices.inverse.m);
    return matrices;
}

TEST_F(SceneHelpers, MatricesOfUnrotatedObjectsAreTheIdentity) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null arm = MakeNull(MakeNull(model, L"Hips"), L"LeftArm");
    const Matrices matrices = MatricesOf(arm, L"Skel");
    EXPECT_TRUE(matrices.global == kIdentity4);
    EXPECT_TRUE(matrices.inverse == kIdentity4);
}

TEST_F(SceneHelpers, MatricesOfAnEmptyHandleAreTheIdentity) {
    const Matrices matrices = MatricesOf(Zelk3DObject(), L"Skel");
    EXPECT_TRUE(matrices.global == kIdentity4);
    EXPECT_TRUE(matrices.inverse == kIdentity4);
}

TEST_F(SceneHelpers, MatrixOfOneObjectIsItsRotation) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null hips = MakeNull(model, L"Hips");
    Turn(hips, 0, 0, 90);
    const Matrices matrices = MatricesOf(hips, L"Skel");
    Matrix4 quarter;
    MatrixRotationZ(quarter.m, math::kPi / 2);
    EXPECT_TRUE(matrices.global == quarter);
    EXPECT_TRUE(matrices.inverse == Transposed(quarter));
}

// The tolerances below allow for a few roundings of numbers up to 1.
TEST_F(SceneHelpers, MatricesApplyTheObjectFirstAndExcludeTheStop) {
    const Zelk::Model model = MakeModel(L"Skel");
    const Zelk::Null hips = MakeNull(model, L"Hips");
    const Zelk::Null arm = MakeNull(hips, L"LeftArm");
    const Zelk::Null hand = MakeNull(arm, L"Hand");
    Turn(model, 33, 44, 55);
    Turn(hips, 10, 20, 30);
    Turn(arm, -40, 50, -60);
    Turn(hand, 170, 80, 5);
    const Matrix4 expected = RowRotationOfDegrees(170, 80, 5) * RowRotationOfDegrees(-40, 50, -60) *
                             RowRotationOfDegrees(10, 20, 30);
    const Matrices matrices = MatricesOf(hand, L"Skel");
    EXPECT_LE(Distance(matrices.global, expected), 1e-15);
    EXPECT_LE(Distance(matrices.inverse, Transposed(expected)), 1e-15);
    EXPECT_LE(Distance(matrices.global * matrices.inverse, kIdentity4), 2e-15);

    EXPECT_LE(Distance(MatricesOf(hand, L"Hips").global,
                       RowRotationOfDegrees(170, 80, 5) * RowRotationOfDegrees(-40, 50, -60)),
              1e-15);
    // The object itself always counts, and a stop that is no ancestor has no effect.
    EXPECT_LE(
        Distance(MatricesOf(hand, L"Hand").global, expected * RowRotationOfDegrees(33, 44, 55)),
        2e-15);
}

TEST_F(SceneHelpers, MatricesContainNoTranslation) {
    Zelk::Model model = MakeModel(L"Skel");
    Zelk::Null hips = MakeNull(model, L"Hips");
    Zelk::MATH::CTransformation transform;
    transform.SetTranslationFromValues(1, 2, 3);
    hips.GetKinematics().GetLocal().PutTransform(transform, Zelk::kCurrentTime);
    EXPECT_TRUE(MatricesOf(hips, L"Skel").global == kIdentity4);
}

// --- ZelkStringFromANSI ---

// Sets the character locale until the end of the scope.
class Locale {
  public:
    explicit Locale(const char* name) : before_(std::setlocale(LC_CTYPE, nullptr)) {
        EXPECT_NE(std::setlocale(LC_CTYPE, name), nullptr);
    }
    ~Locale() { std::setlocale(LC_CTYPE, before_.c_str()); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

  private:
    std::string before_;
};

TEST_F(SceneHelpers, TextOfANullPointerIsEmpty) {
    EXPECT_TRUE(ZelkStringFromANSI(nullptr).IsEmpty());
    EXPECT_TRUE(ZelkStringFromANSI("").IsEmpty());
}

struct TextRow {
    const char* name;
    const char* locale;
    std::string bytes;
    std::string text;
};
std::ostream& operator<<(std::ostream& out, const TextRow& row) {
    return out << row.name;
}

const TextRow kTextRows[] = {
    {"Plain", "C", "LeftArm", "LeftArm"},
    {"Japanese", "C.UTF-8", "\xE5\x8F\xB3\xE8\x85\x95", "\xE5\x8F\xB3\xE8\x85\x95"},
    {"BeyondTheBasicPlane", "C.UTF-8", "\xF0\x9F\x95\xBA", "\xF0\x9F\x95\xBA"},
    {"UpToTheFirstInvalidByte", "C.UTF-8",
     "ab\xFF"
     "cd",
     "ab"},
    {"CutCharacter", "C.UTF-8", "ab\xE5\x8F", "ab"},
    {"InvalidAtOnce", "C.UTF-8", "\x80", ""},
    {"Punctuation", "C.UTF-8", "mixamorig:Hips.R", "mixamorig:Hips.R"},
    {"Long", "C.UTF-8", std::string(10'000, 'n'), std::string(10'000, 'n')},
};

class WideText : public testing::TestWithParam<TextRow> {};

TEST_P(WideText, FollowsTheCharacterLocale) {
    const Locale locale(GetParam().locale);
    EXPECT_EQ(Utf8(ZelkStringFromANSI(GetParam().bytes.c_str())), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(, WideText, testing::ValuesIn(kTextRows),
                         [](const auto& row) { return std::string(row.param.name); });

// --- LogStatus ---

TEST_F(SceneHelpers, LogsWithTheDefaultSeverityOfTheHost) {
    LogStatus(L"Importing Biovision BVH File...");
    LogStatus(L"");
    LogStatus(L"\u6B69\u304F");
    EXPECT_THAT(support::LogLines(), ElementsAre("-: Importing Biovision BVH File...",
                                                 "-: ", "-: \xE6\xAD\xA9\xE3\x81\x8F"));
}

}  // namespace
