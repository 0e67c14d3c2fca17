// The channels of joints: read from the scene's curves where they are there, and computed
// otherwise.
#include "export/joint_channels.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/text.h"
#include "headless/transform.h"
#include "tests/export/exported.h"

namespace joint_channels_test {

using exporters::AngleChoice;
using exporters::ExportedMotion;
using exporters::JointChannels;
using exporters::Options;
using headless::Transform;
using testing::ElementsAre;

// A root that turns around x by more and more degrees, and an arm that turns beyond 180 degrees.
std::string Turning(const std::string& rows, int frames) {
    return "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition "
           "Zrotation Yrotation Xrotation\nJOINT Arm\n{\nOFFSET 0 9 0\nCHANNELS 3 Zrotation "
           "Yrotation Xrotation\nEnd Site\n{\nOFFSET 4 0 0\n}\n}\n}\nMOTION\nFrames: " +
           std::to_string(frames) + "\nFrame Time: 0.25\n" + rows;
}
const std::string kTurning =
    Turning("1 2 3 0 0 0  10 0 0\n4 5 7 10 20 30  170 0 0\n9 1 -2 90 0 0  190 0 0\n", 3);

class Channels {
  public:
    explicit Channels(const Options& options = {}, bool turnsTop = false,
                      const AngleChoice& choice = {.keepsSceneAngles = true})
        : model_(*exported::CurrentScene().Models().front()),
          motion_(exported::CurrentScene(), {&model_, 0}, exported::MotionOf(model_), options,
                  false, notes_),
          channels_(exported::CurrentScene(), model_, motion_, motion_.Times().frames, turnsTop,
                    choice, {}) {}

    std::vector<double> Read(std::size_t joint, std::size_t channel) const {
        std::vector<double> values(motion_.Times().frames.size());
        channels_.Read(joint, channel, values);
        return values;
    }
    const JointChannels& All() const { return channels_; }
    const ExportedMotion& Motion() const { return motion_; }

    // The greatest difference between an axis of a joint's local transform and that of its
    // channels, in all frames.
    double Error(bool turnsTop) const {
        double error = 0.0;
        std::vector<Transform> locals(motion_.Joints().size());
        ExportedMotion::Scratch scratch;
        for (std::size_t frame = 0; frame < motion_.Times().frames.size(); ++frame) {
            motion_.Locals(motion_.Times().frames[frame], locals, scratch);
            if (turnsTop) motion_.TurnTopJoints(locals);
            for (std::size_t joint = 0; joint < locals.size(); ++joint)
                error = std::max(error, ErrorOf(joint, frame, locals[joint]));
        }
        return error;
    }

  private:
    double ErrorOf(std::size_t joint, std::size_t frame, const Transform& local) const {
        std::array<double, 6> values{};
        for (std::size_t channel = 0; channel < values.size(); ++channel)
            values[channel] = Read(joint, channel)[frame];
        const Transform read = headless::FromLocal(values);
        double error = 0.0;
        for (int row = 0; row < 3; ++row) {
            error = std::max(error, std::abs(read.origin[row] - local.origin[row]));
            for (int column = 0; column < 3; ++column)
                error = std::max(error, std::abs(read.axes[row][column] - local.axes[row][column]));
        }
        return error;
    }

    const headless::Object& model_;
    exporters::Notes notes_;
    ExportedMotion motion_;
    JointChannels channels_;
};

// The keys of the scene's curve for a channel of the first model's object with this name.
std::vector<double> SceneKeys(const std::wstring& name, headless::Channel channel) {
    const headless::Object& model = *exported::CurrentScene().Models().front();
    for (const headless::ActionItem& item : exported::MotionOf(model)->items) {
        const auto target = exported::CurrentScene().ResolveTarget(model, item);
        if (target.object && headless::View(target.object->name) == name &&
            target.channel == channel && item.IsCurve()) {
            const headless::NumberArray& values = *item.GetCurve().keys.values;
            return {values.begin(), values.end()};
        }
    }
    return {};
}

TEST(JointChannels, OfNullsAreThoseOfTheSceneIfTheyAreWanted) {
    ASSERT_TRUE(exported::ImportText(kTurning));
    const Channels channels;
    EXPECT_THAT(channels.Read(0, 0), ElementsAre(1, 4, 9));
    EXPECT_EQ(channels.Read(0, 5), SceneKeys(L"Hips", headless::Channel::RotZ));
    const std::vector<double> arm = channels.Read(1, 5);
    EXPECT_EQ(arm, SceneKeys(L"Arm", headless::Channel::RotZ));
    EXPECT_EQ(channels.All().RangeOf(0, 0).first, 1.0);
    EXPECT_EQ(channels.All().RangeOf(0, 2).least, -2.0);
    EXPECT_EQ(channels.All().RangeOf(0, 2).most, 7.0);
}

TEST(JointChannels, OfNullsDoNotJumpOtherwise) {
    ASSERT_TRUE(exported::ImportText(kTurning));
    const Channels channels({}, false, {});
    EXPECT_EQ(channels.Read(1, 5).front(), SceneKeys(L"Arm", headless::Channel::RotZ).front());
    for (std::size_t channel = 3; channel < JointChannels::kCount; ++channel) {
        const std::vector<double> angles = channels.Read(1, channel);
        for (std::size_t frame = 1; frame < angles.size(); ++frame)
            EXPECT_LE(std::abs(angles[frame] - angles[frame - 1]), 160.001);
    }
    EXPECT_LT(channels.Error(false), 1e-9);
}

TEST(JointChannels, OfBonesDoNotJump) {
    ASSERT_TRUE(exported::ImportText(kTurning, {.nulls = false}));
    const Channels channels;
    for (std::size_t joint = 0; joint < channels.Motion().Joints().size(); ++joint)
        for (std::size_t channel = 3; channel < JointChannels::kCount; ++channel) {
            const std::vector<double> angles = channels.Read(joint, channel);
            for (std::size_t frame = 1; frame < angles.size(); ++frame)
                EXPECT_LE(std::abs(angles[frame] - angles[frame - 1]), 180.0);
        }
    EXPECT_LT(channels.Error(false), 1e-9);
}

struct OptionRow {
    const char* name;
    Options options;
};

TEST(JointChannels, AreThoseOfThePosesWithEveryOption) {
    const OptionRow rows[] = {{"Plain", {}},
                              {"Scaled", {.scale = 0.1}},
                              {"Turned", {.up = exporters::UpAxis::Z}},
                              {"Samples", {.resampleTo = 17.0}},
                              {"InPlace", {.inPlace = true}},
                              {"AllNodes", {.allNodes = true}},
                              {"Part", {.frames = exporters::FrameRange{2, 3}}}};
    for (const bool nulls : {true, false}) {
        ASSERT_TRUE(exported::ImportText(kTurning, {.nulls = nulls}));
        for (const OptionRow& row : rows)
            for (const bool turnsTop : {false, true})
                EXPECT_LT(Channels(row.options, turnsTop).Error(turnsTop), 1e-9)
                    << row.name << nulls << turnsTop;
    }
}

// Joints that turn on and on.
TEST(JointChannels, HaveNoAnglesBeyondTheFarthest) {
    std::string rows;
    for (int frame = 0; frame < 40; ++frame)
        rows += "0 0 0 " + std::to_string(frame * 100) + " 0 0  0 0 " + std::to_string(frame * 70) +
                "\n";
    for (const bool nulls : {true, false}) {
        ASSERT_TRUE(exported::ImportText(Turning(rows, 40), {.nulls = nulls}));
        for (const bool keepsSceneAngles : {true, false})
            for (const double farthest : {360.0, 4096.0}) {
                const Channels channels({}, false, {keepsSceneAngles, farthest});
                for (std::size_t joint = 0; joint < channels.Motion().Joints().size(); ++joint)
                    for (std::size_t channel = 3; channel < JointChannels::kCount; ++channel)
                        for (const double angle : channels.Read(joint, channel))
                            EXPECT_LE(std::abs(angle), farthest);
                EXPECT_LT(channels.Error(false), 1e-9);
            }
        // Without that limit the first joint's angle would rise to 3900 degrees.
        const auto [first, least, most] = Channels({}, false, {false, 4096.0}).All().RangeOf(0, 5);
        EXPECT_NEAR(most - least, 3900.0, 1e-6);
    }
}

}  // namespace joint_channels_test
