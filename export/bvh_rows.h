// Writes the rows of numbers of a BVH section, on several threads.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "export/bvh_angles.h"
#include "export/exported_motion.h"
#include "export/pose_blocks.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "headless/transform.h"
#include "text/byte_sink.h"

namespace exporters {

// Which channels a joint has in the file: three rotations, also three positions, or none.
enum class BvhKind : std::uint8_t { Rotating, Moving, EndSite };

struct BvhRowLayout {
    std::vector<BvhKind> kinds;                    // for each joint
    std::optional<headless::Transform> addedRoot;  // the root joint that is added to the file
    // A rotation that is applied to the first joint in every frame.
    std::optional<headless::Transform> rootTurn;
    int lengthDecimals = 0;
    int angleDecimals = 0;
    // Whether angles are wanted that are as precise as doubles allow. Otherwise they are precise to
    // 1e-7 degrees.
    bool isPrecise = false;
};

class BvhRows {
  public:
    // Keeps references to the scene and to the motion.
    BvhRows(const headless::Scene& scene, const headless::Object& model,
            const ExportedMotion& motion, BvhRowLayout layout);

    // Writes a row for each frame, or one with the base pose. Throws ExportError if a number is not
    // finite, and what `progress` throws.
    void Write(text::ByteSink& out, const Progress& progress);

  private:
    struct Pose {
        double origin[3];
        double rotation[4];  // x, y, z, w; set if the angles are those of gimbal lock
        PrincipalAngles angles;
    };
    // The rows that a thread works on.
    struct Part {
        std::size_t first = 0;
        std::size_t end = 0;
        std::vector<Pose> poses;  // frame after frame
        std::vector<char> text;
        std::size_t size = 0;  // of the text
        PoseBlocks::Scratch scratch;
        ExportedMotion::Scratch motion;
    };

    void Compute(Part& part) const;
    void ComputeBlock(std::size_t first, std::size_t count, Part& part) const;
    void ComputeFrame(std::size_t frame, Part& part) const;
    void ChooseAngles(Part& part);
    void MakeText(Part& part, const Progress& progress) const;
    char* WriteCell(char* end, double number, int decimals) const;

    const headless::Object& model_;
    const ExportedMotion& motion_;
    BvhRowLayout layout_;
    std::optional<PoseBlocks> blocks_;  // empty if each frame is evaluated alone
    std::size_t frames_;
    std::size_t joints_;
    std::size_t longestRow_;         // in bytes
    std::string addedText_;          // the numbers of the added root
    std::vector<BvhAngles> before_;  // of each joint in the frame before
};

}  // namespace exporters
