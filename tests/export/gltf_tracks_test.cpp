// Compares the tracks of a glTF motion, which several threads compute, with the evaluation of the
// scene, frame by frame.
#include "export/gltf_tracks.h"

#include <cmath>
#include <gtest/gtest.h>

#include "export/quaternion.h"
#include "tests/export/exported.h"

namespace gltf_tracks_test {

using exporters::ExportedMotion;
using exporters::Options;
using headless::Transform;

constexpr int kFrames = 30'000;

// The root jumps, the arm turns slowly, the hand is moved in the last frame only, and the leg is
// driven but keeps its base pose.
std::string Take() {
    std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 5 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
        "Xrotation Yrotation\nJOINT Arm\n{\nOFFSET 0 10 0\nCHANNELS 1 Zrotation\nJOINT Hand\n{\n"
        "OFFSET 3 0 0\nCHANNELS 3 Xposition Yposition Zposition\nEnd Site\n{\nOFFSET 1 0 0\n}\n}\n"
        "}\nJOINT Leg\n{\nOFFSET 1 -4 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd Site\n{\n"
        "OFFSET 0 -4 0\n}\n}\n}\nMOTION\nFrames: " +
        std::to_string(kFrames) + "\nFrame Time: 0.01\n";
    for (int frame = 0; frame < kFrames; ++frame) {
        const int angles[] = {frame * 97 % 360, frame * 55 % 360, frame * 211 % 360};
        text += "0 " + std::to_string(frame % 7) + " 0 ";
        for (const int angle : angles)
            text += std::to_string(angle) + ' ';
        text +=
            std::to_string(0.25 * frame) + (frame + 1 < kFrames ? " 3 0 0" : " 3 0 1") + " 0 0 0\n";
    }
    return text;
}

struct Row {
    const char* name;
    Options options;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"Plain", {}},
    {"Aimed", {.aim = true}},
    {"InPlace", {.inPlace = true}},
    {"Scaled", {.scale = 0.01}},
};

class GltfTracks : public testing::TestWithParam<Row> {};

TEST_P(GltfTracks, AreTheEvaluatedPoses) {
    ASSERT_TRUE(exported::ImportText(Take()));
    const headless::Scene& scene = exported::CurrentScene();
    const headless::Object& model = *scene.Models().front();
    const Options& options = GetParam().options;
    exporters::Notes notes;
    const ExportedMotion motion(scene, {&model, 0}, exported::MotionOf(model), options, false,
                                notes);
    std::vector<Transform> locals(motion.Joints().size());
    motion.BaseLocals(locals);
    std::vector<Transform> globals(locals.size());
    exporters::ComputeGlobals(motion.Joints(), locals, globals);
    const exporters::GltfFrames frames(motion.Joints(), globals, motion.Turn(), options.aim);
    const exporters::GltfMotion tracks =
        exporters::BuildGltfMotion(scene, model, motion, frames, {});

    // Of the end sites and of what never moves, nothing is stored.
    const bool hasRotations[] = {true, true, false, false, true, false};
    const bool hasTranslations[] = {true, false, true, false, false, false};
    ExportedMotion::Scratch scratch;
    for (std::size_t joint = 0; joint < locals.size(); ++joint) {
        EXPECT_EQ(tracks.rotations[joint].IsStored(), hasRotations[joint]) << joint;
        EXPECT_EQ(tracks.translations[joint].IsStored(), hasTranslations[joint]) << joint;
    }
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        motion.Locals(motion.Times().frames[frame], locals, scratch);
        frames.ApplyToLocals(locals);
        for (std::size_t joint = 0; joint < locals.size(); ++joint) {
            if (hasRotations[joint]) {
                const auto values = tracks.rotations[joint].Values();
                const auto& q = values[frame];
                const exporters::Quaternion plain = exporters::QuaternionOf(locals[joint].axes);
                const double cosine =
                    q[0] * plain.x + q[1] * plain.y + q[2] * plain.z + q[3] * plain.w;
                ASSERT_NEAR(std::abs(cosine), 1.0, 1e-6) << joint << " frame " << frame;
                const auto& before = frame > 0 ? values[frame - 1] : tracks.rotations[joint].Rest();
                ASSERT_GE(q[0] * before[0] + q[1] * before[1] + q[2] * before[2] + q[3] * before[3],
                          -1e-6F)
                    << joint << " frame " << frame;
            }
            if (!hasTranslations[joint]) continue;
            for (std::size_t axis = 0; axis < 3; ++axis)
                ASSERT_NEAR(tracks.translations[joint].Values()[frame][axis],
                            locals[joint].origin[axis], 1e-6)
                    << joint << " frame " << frame;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, GltfTracks, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace gltf_tracks_test
