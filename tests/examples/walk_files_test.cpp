// The sample files: make_walk writes exactly these, they are well-formed, and both formats have the
// same walk.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <sys/wait.h>

#include "tests/examples/forward_kinematics.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace examples_test {
namespace {

const std::string kSamples = ZK_SAMPLES_DIR;

int ExitStatus(const std::string& arguments) {
    const std::string command = "\"" ZK_MAKE_WALK "\" " + arguments + " 2>/dev/null";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(MakeWalk, WritesTheSamplesByteForByte) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(ExitStatus("\"" + folder.Path() + "\""), 0);
    for (const char* name : {"walk.bvh", "walk.asf", "walk.amc"})
        EXPECT_TRUE(folder.Read(name) == support::ReadText(kSamples + '/' + name)) << name;
}

TEST(MakeWalk, TellsWrongUsageFromAFailedOutput) {
    const support::TemporaryFolder folder;
    EXPECT_EQ(ExitStatus(""), 2);
    EXPECT_EQ(ExitStatus("one two"), 2);
    EXPECT_EQ(ExitStatus("\"" + folder.Path("missing") + "\""), 1);
}

struct SampleFile {
    const char* name;
    const char* file;
    std::size_t maxBytes;
};
std::ostream& operator<<(std::ostream& out, const SampleFile& row) {
    return out << row.name;
}
class Sample : public testing::TestWithParam<SampleFile> {};

TEST_P(Sample, IsSmallPlainTextWithUnixLines) {
    const std::string text = support::ReadText(kSamples + GetParam().file);
    EXPECT_LT(text.size(), GetParam().maxBytes);
    EXPECT_TRUE(text.ends_with('\n'));
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char c) {
        return c == '\n' || c == '\t' || (c >= ' ' && c <= '~');
    }));
    EXPECT_EQ(text.find("-0.000000"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(, Sample,
                         testing::Values(SampleFile{"Bvh", "/walk.bvh", 500'000},
                                         SampleFile{"Asf", "/walk.asf", 10'000},
                                         SampleFile{"Amc", "/walk.amc", 400'000}),
                         [](const auto& row) { return row.param.name; });

class Pair : public testing::Test {
  protected:
    const BvhWalk bvh_ = ReadBvh(kSamples + "/walk.bvh");
    const AcclaimWalk acclaim_ = ReadAcclaim(kSamples + "/walk.asf", kSamples + "/walk.amc");
};

TEST_F(Pair, GivesEveryJointTheSamePosition) {
    // Angles are rounded by up to 5e-7 degrees, 9e-9 radians. At a distance of 180 cm, three angles
    // of a joint give 5e-6 cm, in up to eight joints of two files. Offsets and lengths add 1e-6 cm
    // a bone.
    constexpr double kRounding = 1e-4;
    ASSERT_EQ(bvh_.rows.size(), acclaim_.rows.size());
    EXPECT_EQ(bvh_.walk.size(), 27U);  // 22 joints and 5 end sites
    for (const auto& [name, joints] : bvh_.walk) {
        const auto& bones = acclaim_.walk.at(name == "Hips" ? "root" : name);
        for (std::size_t frame = 0; frame < joints.size(); ++frame)
            ASSERT_LT(Distance(joints[frame].position, bones[frame].position), kRounding)
                << name << ", frame " << frame;
    }
}

TEST_F(Pair, PlaysAtTheSameRate) {
    EXPECT_EQ(acclaim_.samplesPerSecond, 60);
    EXPECT_NEAR(bvh_.frameSeconds * acclaim_.samplesPerSecond, 1, 1e-8);
}

TEST_F(Pair, HasOffsetsAndBonesOfSomeLength) {
    // Importers make no bone from an offset of zero, nor from a length below 0.01.
    for (const auto& [name, offset] : bvh_.offsets) {
        const double shortest = name == "Hips" ? -1 : 1;  // the root's position is in its frames
        EXPECT_GT(Distance(offset, {}), shortest) << name;
    }
    for (const auto& [name, bone] : acclaim_.bones) {
        EXPECT_GT(bone.length, 0.5) << name;
        EXPECT_NEAR(Distance(bone.direction, {}), 1, 1e-8) << name;
    }
}

TEST_F(Pair, StaysWithinTheLimitsOfEachBone) {
    std::size_t limited = 0;
    for (const auto& [name, bone] : acclaim_.bones) {
        ASSERT_EQ(bone.limits.size(), bone.dof.size()) << name;
        for (std::size_t frame = 0; frame < acclaim_.rows.size() && !bone.dof.empty(); ++frame) {
            const auto& values = acclaim_.rows[frame].at(name);
            ASSERT_EQ(values.size(), bone.dof.size()) << name;
            for (std::size_t i = 0; i < values.size(); ++i, ++limited)
                ASSERT_THAT(values[i], testing::AllOf(testing::Ge(bone.limits[i][0]),
                                                      testing::Le(bone.limits[i][1])))
                    << name << " r" << bone.dof[i] << ", frame " << frame;
        }
    }
    EXPECT_GT(limited, 0U);
}

TEST_F(Pair, NeverJumpsFromFrameToFrame) {
    // The fastest rotation of the walk, that of a knee, is about 7 degrees a frame; an angle that
    // wraps jumps by 360.
    constexpr double kQuickest = 12;
    for (std::size_t frame = 1; frame < bvh_.rows.size(); ++frame) {
        for (std::size_t i = 0; i < bvh_.rows[frame].size(); ++i)
            ASSERT_LT(std::abs(bvh_.rows[frame][i] - bvh_.rows[frame - 1][i]), kQuickest) << frame;
        for (const auto& [name, values] : acclaim_.rows[frame])
            for (std::size_t i = 0; i < values.size(); ++i)
                ASSERT_LT(std::abs(values[i] - acclaim_.rows[frame - 1].at(name)[i]), kQuickest)
                    << name << ", frame " << frame;
    }
}

}  // namespace
}  // namespace examples_test
