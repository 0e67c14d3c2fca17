// The arrays that programs read from a scene. That they equal those of a .npz is tested from
// Python.
#include "export/pose_reader.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/export/exported.h"
#include "text/byte_sink.h"

namespace pose_reader_test {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kTake =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 5 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 10 0\n}\n}\nMOTION\nFrames: 3\nFrame Time: 0.25\n"
    "1 2 3 0 0 0\n1.5 2 3 90 0 0\n2 2 3 0 0 0\n";

struct Arrays {
    explicit Arrays(const exporters::PoseTable& table)
        : poses(table.seconds.size() * table.columns.size()),
          positions(3 * poses),
          quaternions(4 * poses),
          localPositions(3 * poses),
          localQuaternions(4 * poses) {}

    exporters::PoseMemory Memory() {
        return {positions.data(), quaternions.data(), localPositions.data(),
                localQuaternions.data()};
    }

    std::size_t poses;
    std::vector<double> positions, quaternions, localPositions, localQuaternions;
};

TEST(PoseReader, SaysWhatTheArraysAreAbout) {
    ASSERT_TRUE(exported::ImportText(kTake));
    std::string problem;
    const exporters::PoseReader reader(exported::CurrentScene(), {}, problem);
    ASSERT_EQ(problem, "");
    const exporters::PoseTable& table = reader.Table();
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[0].name, "Hips");
    EXPECT_EQ(table.columns[0].parent, exporters::FileJoint::kNoParent);
    EXPECT_THAT(table.columns[0].offset, ElementsAre(0.0, 5.0, 0.0));
    EXPECT_EQ(table.columns[1].parent, 0U);
    EXPECT_TRUE(table.columns[1].isEndSite);
    EXPECT_THAT(table.seconds, ElementsAre(0.0, 0.25, 0.5));
    EXPECT_THAT(table.frameNumbers, ElementsAre(1, 2, 3));
    EXPECT_DOUBLE_EQ(table.framesPerSecond, 4.0);
    EXPECT_DOUBLE_EQ(reader.Figure().height, 10.0);
    EXPECT_EQ(reader.Figure().up, 'y');
}

TEST(PoseReader, FillsTheMemoryOfTheCaller) {
    ASSERT_TRUE(exported::ImportText(kTake));
    std::string problem;
    const exporters::PoseReader reader(exported::CurrentScene(), {}, problem);
    for (const std::size_t threads : {0U, 1U, 8U}) {
        Arrays arrays(reader.Table());
        EXPECT_EQ(reader.Read(arrays.Memory(), threads), "");
        EXPECT_NEAR(arrays.positions[6], 1.5, 1e-15);
        EXPECT_NEAR(arrays.positions[9], -8.5, 1e-14);
        EXPECT_NEAR(arrays.localPositions[10], 10.0, 1e-15);
        EXPECT_NEAR(arrays.quaternions[4 * 2 + 2], 0.5 * std::sqrt(2.0), 1e-15);
        EXPECT_NEAR(arrays.localQuaternions[4 * 3 + 3], 1.0, 1e-15);
    }
}

// Rotations that jump, so that about half of the quaternions have to be negated.
std::string LongTake(int frames) {
    std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 5 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd "
        "Site\n"
        "{\nOFFSET 0 10 0\n}\n}\nMOTION\nFrames: " +
        std::to_string(frames) + "\nFrame Time: 0.25\n";
    for (int frame = 0; frame < frames; ++frame)
        text += std::to_string(frame * 97 % 360) + ' ' + std::to_string(frame * 55 % 360) + ' ' +
                std::to_string(frame * 211 % 360) + '\n';
    return text;
}

// One frame of so many joints that there is more than one thread, but not more than one row.
std::string WideTake(int joints) {
    std::string text = "HIERARCHY\nROOT Hips\n{\nOFFSET 0 5 0\nCHANNELS 1 Zrotation\n";
    for (int joint = 0; joint < joints; ++joint)
        text += "JOINT J" + std::to_string(joint) +
                "\n{\nOFFSET 1 0 0\nCHANNELS 0\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\n";
    return text + "}\nMOTION\nFrames: 1\nFrame Time: 0.25\n200\n";
}

TEST(PoseReader, ReadsTheSameWithAnyNumberOfThreads) {
    for (const std::string& bvh : {LongTake(50'000), WideTake(21'000)}) {
        ASSERT_TRUE(exported::ImportText(bvh));
        std::string problem;
        const exporters::PoseReader reader(exported::CurrentScene(), {}, problem);
        Arrays one(reader.Table());
        Arrays several(reader.Table());
        EXPECT_EQ(reader.Read(one.Memory(), 1), "");
        EXPECT_EQ(reader.Read(several.Memory(), 5), "");
        EXPECT_EQ(one.quaternions, several.quaternions);
        EXPECT_EQ(one.localQuaternions, several.localQuaternions);
        EXPECT_EQ(one.positions, several.positions);
        for (std::size_t row = 1; row < reader.Table().seconds.size(); ++row) {
            const double* const q = &one.quaternions[row * 8];
            ASSERT_GE(q[0] * q[-8] + q[1] * q[-7] + q[2] * q[-6] + q[3] * q[-5], 0.0) << row;
        }
    }
}

TEST(PoseReader, SaysWhyASceneCannotBeRead) {
    ASSERT_TRUE(exported::ImportText(kTake));
    exporters::Options options;
    options.frames = exporters::FrameRange{7, 9};
    std::string problem;
    const exporters::PoseReader reader(exported::CurrentScene(), options, problem);
    EXPECT_THAT(problem, HasSubstr("no frame from 7 to 9"));
    EXPECT_TRUE(reader.Table().columns.empty());
    EXPECT_EQ(reader.Figure().height, 0.0);
    EXPECT_EQ(reader.Read({}, 1), "");
}

TEST(PoseReader, IsCancelledByWhatTheProgressThrows) {
    ASSERT_TRUE(exported::ImportText(kTake));
    std::string problem;
    const exporters::PoseReader reader(exported::CurrentScene(), {}, problem);
    Arrays arrays(reader.Table());
    const exporters::Progress progress([](double) { throw text::WriteCancelled(); });
    EXPECT_THROW((void)reader.Read(arrays.Memory(), 1, progress), text::WriteCancelled);
}

}  // namespace pose_reader_test
