// How rotations are converted from the axis frames of the bones, and animated lengths to
// translations.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iomanip>
#include <iterator>
#include <sstream>

#include "host/status.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::Each;
using testing::ElementsAre;

class Fixups : public testing::Test {
  protected:
    void SetUp() override { StartSession(true); }

    Outcome Import(const std::string& asf, const std::string& frames) {
        importer.SetOptions(true, true, false, true);
        EXPECT_EQ(ImportSkeleton(importer, ":version 1\n" + asf), Outcome());
        return ImportMotion(importer, ":fully-specified\n" + frames);
    }
    // The values of posx, posy, posz or of rotx, roty, rotz.
    static std::vector<std::vector<double>> Values(const std::string& object,
                                                   const std::string& kind) {
        const auto curves = MotionCurves();
        std::vector<std::vector<double>> values;
        for (const char* axis : {"x", "y", "z"}) {
            const auto found = curves.find(object + ".kine.local." + kind + axis);
            values.push_back(found == curves.end() ? std::vector<double>() : found->second.values);
        }
        return values;
    }
    static void ExpectRotation(const std::string& object, const double expected[4][4]) {
        const auto angles = Values(object, "rot");
        double turn[4][4];
        MatrixRotationXYZ(turn, angles[0].at(0) * math::kRadiansPerDegree,
                          angles[1].at(0) * math::kRadiansPerDegree,
                          angles[2].at(0) * math::kRadiansPerDegree);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(turn[row][column], expected[row][column], 1e-12);
    }

    CAcclaimImport importer;
};

TEST_F(Fixups, RotateABoneInItsAxisFrame) {
    ASSERT_EQ(Import(":root order tx\n:bonedata begin name a axis 10 20 30 xyz\n dof rx\n end",
                     "1\nroot 0\na 40"),
              Outcome());
    double axes[4][4], inverse[4][4], turn[4][4], half[4][4], expected[4][4];
    const double d = math::kRadiansPerDegree;
    MatrixRotationXYZ(axes, 10 * d, 20 * d, 30 * d);
    MatrixRotationZYX(inverse, -10 * d, -20 * d, -30 * d);
    MatrixRotationX(turn, 40 * d);
    MatrixMult(inverse, turn, half);
    MatrixMult(half, axes, expected);
    ExpectRotation("a", expected);
}

// The first rotation that the file lists acts first, whatever its axis.
TEST_F(Fixups, ComposeRotationsInTheFilesOrder) {
    ASSERT_EQ(Import(":root order rz ry rx", "1\nroot 30 20 10"), Outcome());
    double expected[4][4];
    const double d = math::kRadiansPerDegree;
    MatrixRotationZYX(expected, 10 * d, 20 * d, 30 * d);
    ExpectRotation("root", expected);
}

// Even without an axis frame the angles are those of the decomposition, which gives -180 for each
// of these zeros.
TEST_F(Fixups, DecomposeRotationsEvenWithoutAnAxisFrame) {
    ASSERT_EQ(Import(":root order rx ry rz", "1\nroot 0 0 0"), Outcome());
    EXPECT_THAT(Values("root", "rot"), Each(ElementsAre(-180.0)));
}

TEST_F(Fixups, LeaveNodesWithoutRotationsAlone) {
    ASSERT_EQ(Import(":root order tx\n orientation 10 20 30", "1\nroot 5"), Outcome());
    EXPECT_EQ(MotionCurves().size(), 1u);
}

TEST_F(Fixups, RefuseARepeatedRotation) {
    EXPECT_EQ(Import(":root order rx rx", "1\nroot 1 2"),
              (Outcome{Zelk::status::kInvalidData,
                       "Rotation channel found more than once on a node", 0}));
}

TEST_F(Fixups, RefuseRotationsIfNoSlotIsLeftForAMissingOne) {
    EXPECT_EQ(Import(":bonedata begin name a dof rx tx ty tz | | |\n end", "1\na 1 2 3 4 5 6 7"),
              (Outcome{Zelk::status::kInvalidData, "No channel left for a missing rotation", 0}));
}

// --- Animated lengths ---

const std::string kLength =
    ":bonedata begin name a direction 0 2 -1 length 1\n dof |\n end begin name b length 1\n dof "
    "rz\n "
    "end begin name c length 1\n dof rz\n end\n";
const std::string kRoot = ":root order tx\n";

TEST_F(Fixups, MoveTheChildByTheLength) {
    ASSERT_EQ(Import(kRoot + kLength + ":hierarchy begin\nroot a c\na b\nend",
                     "1\nroot 0\na 3\nb 0\nc 0\n2\nroot 0\na 4\nb 0\nc 0\n"),
              Outcome());
    EXPECT_THAT(Values("b", "pos"),
                ElementsAre(ElementsAre(0, 0), ElementsAre(6, 8), ElementsAre(-3, -4)));
    EXPECT_EQ(MotionCurves().count("a.bone.length"), 0u);
    EXPECT_THAT(Values("c", "pos"), Each(testing::IsEmpty()));
}

// This leaf has no length at rest, so it has no end node that the animated length could move.
TEST_F(Fixups, DropTheLengthOfALeaf) {
    ASSERT_EQ(Import(kRoot + ":bonedata begin name a dof |\n end\n:hierarchy begin\nroot a\nend",
                     "1\nroot 0\na 3"),
              Outcome());
    EXPECT_EQ(MotionCurves().size(), 1u);
}

TEST_F(Fixups, MoveTheEndOfALongLeaf) {
    ASSERT_EQ(
        Import(kRoot + kLength + ":hierarchy begin\nroot a b c\nend", "1\nroot 0\na 3\nb 0\nc 0"),
        Outcome());
    EXPECT_THAT(Values("a_End", "pos"),
                ElementsAre(ElementsAre(0), ElementsAre(6), ElementsAre(-3)));
}

// The first child gets the translation once for each of the children.
TEST_F(Fixups, MoveTheFirstChildForAllChildren) {
    ASSERT_EQ(Import(kRoot + kLength + ":hierarchy begin\nroot a\na b c\nend",
                     "1\nroot 0\na 3\nb 0\nc 0"),
              Outcome());
    EXPECT_THAT(Values("b", "pos"), ElementsAre(ElementsAre(0), ElementsAre(12), ElementsAre(-6)));
    EXPECT_THAT(Values("c", "pos"), Each(testing::IsEmpty()));
}

TEST_F(Fixups, AddToTheChildsOwnTranslation) {
    ASSERT_EQ(Import(":root order ty\n position 9 9 9\n" + kLength +
                         ":hierarchy begin\nroot\na root\nend",
                     "1\nroot 1\na 3\nb 0\nc 0"),
              Outcome());
    EXPECT_THAT(Values("root", "pos"),
                ElementsAre(ElementsAre(0), ElementsAre(7), ElementsAre(-3)));
}

// The root has only a y channel, so its y translation goes there; its x and z translations are
// added to those of the first child.
TEST_F(Fixups, AddTheMissingAxesOfAChildToTheFirstChild) {
    ASSERT_EQ(Import(kLength + ":root order ty\n:hierarchy begin\nroot\na b root\nend",
                     "1\nroot 1\na 3\nb 0\nc 0"),
              Outcome());
    EXPECT_THAT(Values("b", "pos"), ElementsAre(ElementsAre(0), ElementsAre(6), ElementsAre(-6)));
    EXPECT_EQ(Values("root", "pos")[1], std::vector<double>{7});
}

TEST_F(Fixups, MoveAChildWhoseOwnTranslationHasNoKeys) {
    ASSERT_EQ(
        Import(":root order tx ty tz rx ry rz\n" + kLength + ":hierarchy begin\nroot\na root\nend",
               "1\na 3\nb 0\nnobody\n"),
        Outcome());
    EXPECT_THAT(Values("root", "pos"),
                ElementsAre(ElementsAre(0), ElementsAre(6), ElementsAre(-3)));
    EXPECT_THAT(Values("root", "rot"), Each(testing::IsEmpty()));
}

TEST_F(Fixups, IgnoreALengthWithoutKeys) {
    ASSERT_EQ(Import(kRoot + kLength + ":hierarchy begin\nroot a\na b c\nend",
                     "1\nroot 0\nb 0\nnobody\n"),
              Outcome());
    EXPECT_THAT(Values("b", "pos"), Each(testing::IsEmpty()));
}

TEST_F(Fixups, FailIfNoSlotIsLeftForTheTranslation) {
    const std::string full =
        ":bonedata begin name a direction 0 2 -1 length 1\n dof |\n end "
        "begin name b length 1\n dof rz ry rx tx ty\n end\n:hierarchy begin\nroot a\na b\nend";
    EXPECT_EQ(Import(kRoot + full, "1\nroot 0\na 3\nb 0 0 0 0 0\n"),
              (Outcome{Zelk::status::kFail, "Failed to convert length animation", 0}));
}

TEST_F(Fixups, ReplaceTheLengthEvenWithoutFrames) {
    ASSERT_EQ(Import(kRoot + kLength + ":hierarchy begin\nroot a c\na b\nend", "\n:degrees"),
              Outcome());
    EXPECT_EQ(MotionCurves().count("b.kine.local.posx"), 1u);
    EXPECT_EQ(MotionCurves().count("a.bone.length"), 0u);
}

std::string NumberText(double number) {
    std::ostringstream text;
    text << std::setprecision(17) << number;
    return text.str();
}

// A bone with an animated length and `count` children, which have no channels.
std::string ManyChildren(int count) {
    std::string bones = ":bonedata begin name a direction 0.1 2 -0.7 length 1\n dof |\n end\n";
    std::string children;
    for (int i = 0; i < count; ++i) {
        const std::string name = "n" + std::to_string(i);
        bones += "begin name " + name + "\n end\n";
        children += " " + name;
    }
    return bones + ":hierarchy begin\nroot a\na" + children + "\nend";
}

// The length is added once for each child, because a product rounds differently. The difference is
// visible from six children on.
TEST_F(Fixups, AddTheLengthOnceForEachChild) {
    const double lengths[] = {0.1, 3, 1e-9, -7.3, 1e17};
    std::string frames;
    for (std::size_t frame = 0; frame < std::size(lengths); ++frame)
        frames += std::to_string(frame + 1) + "\nroot 0\na " + NumberText(lengths[frame]) + "\n";
    for (const int children : {1, 2, 5, 6, 7, 10, 100, 1000}) {
        SCOPED_TRACE(children);
        StartSession(true);
        ASSERT_EQ(Import(kRoot + ManyChildren(children), frames), Outcome());
        const double direction[3] = {0.1, 2, -0.7};
        const auto found = Values("n0", "pos");
        for (std::size_t axis = 0; axis < 3; ++axis) {
            std::vector<double> expected(std::size(lengths), 0.0);
            for (std::size_t frame = 0; frame < std::size(lengths); ++frame)
                for (int child = 0; child < children; ++child)
                    expected[frame] += direction[axis] * lengths[frame];
            EXPECT_EQ(found[axis], expected);
        }
        EXPECT_THAT(Values("n" + std::to_string(children), "pos"), Each(testing::IsEmpty()));
    }
}

// One by one these would be 3,000,000,000 additions.
TEST_F(Fixups, AreFastWithManyChildrenAndFrames) {
    std::string frames;
    for (int frame = 1; frame <= 20000; ++frame)
        frames += std::to_string(frame) + "\nroot 0\na 3\n";
    ASSERT_EQ(Import(kRoot + ManyChildren(50000), frames), Outcome());
    double expected = 0.0;
    for (int child = 0; child < 50000; ++child)
        expected += 0.1 * 3;
    EXPECT_THAT(Values("n0", "pos")[0], Each(expected));
}

}  // namespace
