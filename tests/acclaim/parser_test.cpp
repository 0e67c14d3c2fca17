// The nodes that the parser makes of the sections of an ASF file.
#include <clocale>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class AsfParser : public testing::Test {
  protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    // Parses a valid file; `text` is what follows its version line.
    void Parse(const std::string& text) {
        ASSERT_EQ(parsed.Parse(":version 1.10\n" + text), (Outcome{1, "", 0}));
    }
    static std::vector<int> Types(const MOCAPMODEL& node) {
        std::vector<int> types;
        for (std::size_t slot = 0; slot < MOCAPMODEL::kSlotCount; ++slot)
            types.push_back(node.channels.TypeAt(slot));
        return types;
    }
    static std::vector<double> Vector(const double* v) { return {v[0], v[1], v[2]}; }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& node : parsed.skeleton.models)
            names.emplace_back(node->name.get());
        return names;
    }

    ParsedAcclaim parsed;
};

TEST_F(AsfParser, ReadsTheRoot) {
    Parse(":units length 0.5\n:root order tx TZ ry\n position 1 2 3 orientation 4 5 6 axis xyz");
    const MOCAPMODEL& root = parsed.Node("ROOT");
    EXPECT_THAT(Types(root), ElementsAre(1, 3, 5, 0, 0, 0, 0));
    EXPECT_EQ(parsed.skeleton.channelCount, 3u);
    EXPECT_THAT(Vector(root.offset), ElementsAre(1, 2, 3));
    EXPECT_THAT(Vector(root.globalPosition), ElementsAre(1, 2, 3));
    EXPECT_THAT(Vector(root.orientation), ElementsAre(4, 5, 6));
    EXPECT_TRUE(root.isDetached);
    EXPECT_EQ(root.parent, nullptr);
}

TEST_F(AsfParser, ReadsABone) {
    Parse(
        ":units length 0.45 mass 1\n"
        ":bonedata begin\n id -7\n NAME Hip\n direction 1 -2 .5\n length 10\n"
        " axis 1 2 3 XYZ\n dof rxes TY |bar rz\n bodymass 5 5 5\n end");
    const MOCAPMODEL& bone = parsed.Node("hip");
    EXPECT_EQ(bone.boneId, static_cast<std::uint32_t>(-7));
    EXPECT_THAT(Vector(bone.direction), ElementsAre(1, -2, 0.5));
    EXPECT_EQ(bone.length, 4.5);
    EXPECT_THAT(Vector(bone.orientation), ElementsAre(1, 2, 3));
    EXPECT_THAT(Types(bone), ElementsAre(4, 255, 7, 6, 0, 0, 0));
    EXPECT_EQ(parsed.skeleton.channelCount, 3u);
}

TEST_F(AsfParser, ConvertsRadiansToDegrees) {
    Parse(
        ":units angle rad\n"
        ":root orientation 0 0 1\n"
        ":bonedata begin name a axis 0 1 0 xyz\n dof rx tx |\n limits (-1 1) (-1 1) (-1 1)\n end");
    EXPECT_EQ(parsed.Node("root").orientation[2], math::kDegreesPerRadian);
    const MOCAPMODEL& bone = parsed.Node("a");
    EXPECT_EQ(bone.orientation[1], math::kDegreesPerRadian);
    EXPECT_EQ(bone.channels.begin()[0].minLimit, -math::kDegreesPerRadian);
    EXPECT_EQ(bone.channels.begin()[0].maxLimit, math::kDegreesPerRadian);
    EXPECT_EQ(bone.channels.begin()[1].maxLimit, 1.0);
    EXPECT_EQ(bone.channels.begin()[2].maxLimit, 1.0);
}

TEST_F(AsfParser, UsesTheLengthFactorThatAppliesAtTheEndOfTheBone) {
    Parse(
        ":bonedata begin name a length 2\n end\n:units length 3\n"
        ":bonedata begin name b length 2\n end");
    EXPECT_EQ(parsed.Node("a").length, 2.0);
    EXPECT_EQ(parsed.Node("b").length, 6.0);
}

TEST_F(AsfParser, PrefersTheGivenLengthFactorToTheFiles) {
    parsed.parser.OverrideLengthMultiplier(true, 10.0);
    Parse(":units length 3\n:root position 1 1 1\n:bonedata begin name a length 2\n end");
    EXPECT_EQ(parsed.Node("a").length, 20.0);
    EXPECT_EQ(parsed.Node("root").offset[0], 1.0);
}

TEST_F(AsfParser, KeepsTheGivenLengthFactorUntilAFileNamesOne) {
    parsed.parser.OverrideLengthMultiplier(true, 10.0);
    parsed.parser.OverrideLengthMultiplier(false, 99.0);
    Parse(
        ":bonedata begin name a length 2\n end\n:units length 3\n"
        ":bonedata begin name b length 2\n end");
    EXPECT_EQ(parsed.Node("a").length, 20.0);
    EXPECT_EQ(parsed.Node("b").length, 6.0);
}

TEST_F(AsfParser, AcceptsARepeatedChannelInALine) {
    Parse(":root order tx tx\n:bonedata begin name a\n dof rx rx\n end");
    EXPECT_THAT(Types(parsed.Node("root")), ElementsAre(1, 1, 0, 0, 0, 0, 0));
    EXPECT_THAT(Types(parsed.Node("a")), ElementsAre(4, 4, 0, 0, 0, 0, 0));
    EXPECT_EQ(parsed.skeleton.channelCount, 4u);
}

TEST_F(AsfParser, StartsASecondLineOfChannelsAtTheFirstSlot) {
    Parse(
        ":root\n order tx ty tz rx\n order ry rz\n"
        ":bonedata begin name a\n dof rx ry rz | tx ty tz\n dof rz\n end");
    EXPECT_THAT(Types(parsed.Node("root")), ElementsAre(5, 6, 3, 4, 0, 0, 0));
    EXPECT_THAT(Types(parsed.Node("a")), ElementsAre(6, 5, 6, 7, 255, 255, 255));
    EXPECT_EQ(parsed.skeleton.channelCount, 11u);
}

TEST_F(AsfParser, FillsAllSevenSlots) {
    Parse(
        ":root order tx ty tz rx ry rz rz\n:bonedata begin name a\n dof tx ty tz rx ry rz |\n end");
    EXPECT_THAT(Types(parsed.Node("root")), ElementsAre(1, 2, 3, 4, 5, 6, 6));
    EXPECT_THAT(Types(parsed.Node("a")), ElementsAre(255, 255, 255, 4, 5, 6, 7));
}

TEST_F(AsfParser, ReadsALimitForEachSlot) {
    Parse(":bonedata begin name a\n dof rx ty rz\n limits (-10 20)\n (-inf, inf) (0.0 -0)\n end");
    const auto* const channels = parsed.Node("a").channels.begin();
    EXPECT_TRUE(channels[0].hasMinLimit && channels[0].hasMaxLimit);
    EXPECT_EQ(channels[0].minLimit, -10.0);
    EXPECT_EQ(channels[0].maxLimit, 20.0);
    EXPECT_TRUE(channels[1].hasMinLimit && channels[1].hasMaxLimit);
    EXPECT_EQ(channels[1].minLimit, -kInfinity);
    EXPECT_EQ(channels[1].maxLimit, kInfinity);
    EXPECT_TRUE(channels[2].hasMinLimit && channels[2].hasMaxLimit);
    EXPECT_FALSE(channels[3].hasMinLimit || channels[3].hasMaxLimit);
}

TEST_F(AsfParser, SkipsLimitsBeforeTheirChannels) {
    Parse(":bonedata begin name a\n limits (-10 20)\n (-1 1)\n dof rx\n end");
    EXPECT_FALSE(parsed.Node("a").channels.begin()[0].hasMinLimit);
}

TEST_F(AsfParser, ConvertsAnglesFromOtherAxisOrders) {
    for (const char* order : {"xzy", "YXZ", "yzx", "ZXY", "zyx"}) {
        const double degrees[3] = {10, 20, 30};
        double radians[3], expected[3];
        for (int i = 0; i < 3; ++i)
            radians[i] = degrees[i] * math::kRadiansPerDegree;
        RotationToXYZ(radians, order, expected[0], expected[1], expected[2]);
        const std::string axes(order);
        Parse(":root axis " + axes +
              "\n orientation 10 20 30\n:bonedata begin name a\n axis 10 20 30 " + axes + "\n end");
        for (int i = 0; i < 3; ++i) {
            const double angle = expected[i] * math::kDegreesPerRadian;
            EXPECT_EQ(parsed.Node("root").orientation[i], angle) << order;
            EXPECT_EQ(parsed.Node("a").orientation[i], angle) << order;
        }
    }
}

TEST_F(AsfParser, ConvertsRadiansFromOtherAxisOrders) {
    const double radians[3] = {0.1, 0.2, 0.3};
    double expected[3];
    RotationToXYZ(radians, "zyx", expected[0], expected[1], expected[2]);
    Parse(
        ":units angle rad\n:root axis zyx orientation .1 .2 .3\n"
        ":bonedata begin name a\n axis .1 .2 .3 zyx\n end");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(parsed.Node("root").orientation[i], expected[i] * math::kDegreesPerRadian);
        EXPECT_EQ(parsed.Node("a").orientation[i], expected[i] * math::kDegreesPerRadian);
    }
}

TEST_F(AsfParser, IgnoresAnAxisOrderAfterTheOrientation) {
    Parse(":root orientation 10 20 30\n axis zyx");
    EXPECT_THAT(Vector(parsed.Node("root").orientation), ElementsAre(10, 20, 30));
}

TEST_F(AsfParser, SkipsUnknownSections) {
    Parse(":skin\n# of no use\n:units length 2\n:bonedata begin name a length 2\n end\n:muscle");
    EXPECT_EQ(parsed.Node("a").length, 4.0);
}

TEST_F(AsfParser, SkipsComments) {
    Parse("#c\n:root #c\n order tx #ty\n#position 4 5 6\n position 1 2 3#c\n");
    EXPECT_THAT(Types(parsed.Node("root")), ElementsAre(1, 0, 0, 0, 0, 0, 0));
}

TEST_F(AsfParser, SkipsCommentsAfterChannelsAndChildren) {
    Parse(
        ":root order tx\n:bonedata begin name a length 1\n dof rx #ry\n end begin name b\n end\n"
        ":hierarchy begin\nroot a #b\nend");
    EXPECT_THAT(Types(parsed.Node("a")), ElementsAre(4, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(parsed.Node("root").childCount, 1u);
    EXPECT_EQ(parsed.Node("b").parent, nullptr);
}

TEST_F(AsfParser, AcceptsACommentInTheLastLine) {
    Parse(":units # length 2\n:bonedata begin name a length 2\n end # length 5 :root");
    EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(AsfParser, ReadsTheWordsAfterAnUnknownOneInTheLastLine) {
    Parse(":bonedata begin name a bodymass 3 end");
    EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(AsfParser, AcceptsAFileThatEndsInASection) {
    Parse(":units mass 1\n:root order tx\n:bonedata");
    EXPECT_TRUE(parsed.Node("root").isDetached);
    Parse(":root position 1 2 3\n order tx");
    EXPECT_THAT(Vector(parsed.Node("root").globalPosition), ElementsAre(1, 2, 3));
}

TEST_F(AsfParser, StopsAtANulByte) {
    Parse(std::string(":root order tx \0 ty\n:bonedata begin", 34));
    EXPECT_THAT(Types(parsed.Node("root")), ElementsAre(1, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(Names(), ElementsAre("root"));
}

// --- Hierarchy ---

const std::string kBones =
    ":root order tx\n position 1 0 0\n:bonedata\n"
    "begin name a direction 0 1 0 length 2\n end\n"
    "begin name b direction 1 0 0 length 3\n end\n"
    "begin name short direction 1 0 0 length 0.009\n end\n"
    "begin name none\n end\n"
    "begin name c direction 0 0 1 length 0.01\n end\n:hierarchy begin\n";

TEST_F(AsfParser, PutsChildrenAtTheEndsOfTheirParents) {
    Parse(kBones + "root a\na b c\nend");
    const MOCAPMODEL& root = parsed.Node("root");
    const MOCAPMODEL& a = parsed.Node("a");
    const MOCAPMODEL& b = parsed.Node("B");
    EXPECT_EQ(a.parent, &root);
    EXPECT_EQ(b.parent, &a);
    EXPECT_EQ(b.depth, 2u);
    EXPECT_THAT(Vector(a.offset), ElementsAre(0, 0, 0));
    EXPECT_THAT(Vector(b.offset), ElementsAre(0, 2, 0));
    EXPECT_THAT(Vector(b.globalPosition), ElementsAre(1, 2, 0));
    EXPECT_TRUE(a.isDetached);
    EXPECT_FALSE(b.isDetached);
    EXPECT_EQ(root.childCount, 1u);
    EXPECT_EQ(root.boneChildCount, 0u);
    EXPECT_EQ(a.childCount, 2u);
    EXPECT_EQ(a.boneChildCount, 2u);
}

TEST_F(AsfParser, AddsAnEndNodeToALeafThatIsLongEnough) {
    Parse(kBones + "root a\na b short none c\nend");
    EXPECT_THAT(Names(), ElementsAre("root", "a", "b", "short", "none", "c", "b_End", "c_End"));
    const MOCAPMODEL& end = parsed.Node("b_end");
    EXPECT_EQ(end.parent, &parsed.Node("b"));
    EXPECT_EQ(end.depth, 3u);
    EXPECT_THAT(Vector(end.offset), ElementsAre(3, 0, 0));
    EXPECT_THAT(Vector(end.globalPosition), ElementsAre(4, 2, 0));
    EXPECT_FALSE(end.isDetached);
    EXPECT_THAT(Types(end), ElementsAre(0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(end.parent->childCount, 1u);
    EXPECT_EQ(end.parent->boneChildCount, 1u);
    EXPECT_TRUE(parsed.Node("short").isDetached);
    EXPECT_TRUE(parsed.Node("none").isDetached);
    EXPECT_EQ(parsed.Node("none").childCount, 0u);
}

TEST_F(AsfParser, DetachesTheChildrenOfAShortBone) {
    for (const std::string bone : {"short", "none"}) {
        Parse(kBones + "root " + bone + "\n" + bone + " a\nend");
        EXPECT_TRUE(parsed.Node("a").isDetached) << bone;
        EXPECT_EQ(parsed.Node(bone).boneChildCount, 0u) << bone;
    }
}

TEST_F(AsfParser, NamesTheRootAfterTheFirstLineOfTheHierarchy) {
    Parse(kBones + "Hips a\nhips b\nend");
    EXPECT_THAT(Names(),
                ElementsAre("Hips", "a", "b", "short", "none", "c", "a_End", "b_End", "c_End"));
    EXPECT_EQ(parsed.Node("a").parent, parsed.skeleton.models.front().get());
}

TEST_F(AsfParser, KeepsTheNameOfARootIfOnlyItsLetterCaseDiffers) {
    Parse(kBones + "ROOT a\nend");
    EXPECT_STREQ(parsed.skeleton.models.front()->name.get(), "root");
}

// A name means the first node that has it.
TEST_F(AsfParser, FindsTheFirstOfEqualNames) {
    Parse(":bonedata begin name A\n id 1 end begin name a\n id 2 end\n");
    EXPECT_EQ(parsed.Node("a").boneId, 1u);
}

TEST_F(AsfParser, RenamesOneRootForEachHierarchy) {
    Parse(
        ":bonedata begin name hips\n id 5 end begin name x\n end\n"
        ":root position 1 1 1\n:root position 2 2 2\n"
        ":hierarchy begin\nhips x\nend\n:hierarchy begin\nhead x\nend");
    EXPECT_THAT(Names(), ElementsAre("hips", "x", "hips", "head"));
    EXPECT_EQ(parsed.Node("hips").boneId, 5u);
    EXPECT_EQ(parsed.Node("hips").childCount, 1u);
    EXPECT_EQ(parsed.Node("x").parent, &parsed.Node("head"));
    EXPECT_EQ(parsed.parser.FindModelByName("root"), nullptr);
}

TEST_F(AsfParser, CountsAChildAsOftenAsItIsNamed) {
    Parse(kBones + "root a a\na a\nend");
    EXPECT_EQ(parsed.Node("root").childCount, 2u);
    EXPECT_EQ(parsed.Node("a").parent, &parsed.Node("a"));
    EXPECT_EQ(parsed.Node("a").childCount, 1u);
}

TEST_F(AsfParser, AddsEndNodesOnceInSeveralHierarchies) {
    Parse(kBones + "root a\nend\n:hierarchy begin\nroot b\nend\n:hierarchy begin\nend");
    EXPECT_THAT(Names(),
                ElementsAre("root", "a", "b", "short", "none", "c", "a_End", "b_End", "c_End"));
    // For the later hierarchies the end nodes are leaves, but too short to get end nodes
    // themselves.
    EXPECT_TRUE(parsed.Node("a_End").isDetached);
}

TEST_F(AsfParser, AcceptsAnEmptyHierarchy) {
    Parse(":hierarchy begin end");
    EXPECT_THAT(Names(), ElementsAre());
}

// --- Documentation ---

struct DocumentationRow {
    const char* name;
    std::string text;
    const wchar_t* documentation;
};
const DocumentationRow kDocumentations[] = {
    {"UpToTheNextSection", ":documentation one\n  two\n:root", L" one\n  two\n"},
    {"UpToTheFirstColon", ":documentation see:units\n", L" see"},
    {"ToTheEndOfTheFile", ":documentation one\n", L" one\n"},
    {"ToTheLastByte", ":documentation one", L" one"},
    {"NoneAtTheEnd", ":documentation \n", L""},
    {"Empty", ":documentation\n:root", L"\n"},
    {"KeepsComments", ":documentation # one\n:root", L" # one\n"},
    {"TheLastOne", ":documentation one\n:documentation two\n:root", L" two\n"},
    {"ToANulByte", std::string(":documentation one\0two:root", 27), L" one"},
    {"Wide",
     ":documentation Gr\xC3\xB6\xC3\x9F"
     "e \xE6\xAD\xA9\n:root",
     L" Gr\u00F6\u00DFe \u6B69\n"},
    {"UpToAByteThatIsNoCharacter", ":documentation one \xE9\xE9 two\n:root", L" one "},
};

void PrintTo(const DocumentationRow& row, std::ostream* out) {
    *out << row.text;
}

class Documentation : public AsfParser, public testing::WithParamInterface<DocumentationRow> {};

TEST_P(Documentation, IsTheTextAfterTheKeyword) {
    Parse(GetParam().text);
    EXPECT_EQ(Utf8(parsed.parser.Facts().documentation.c_str()), Utf8(GetParam().documentation));
}

INSTANTIATE_TEST_SUITE_P(, Documentation, testing::ValuesIn(kDocumentations),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
