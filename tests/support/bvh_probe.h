// Imports BVH text with the real importer and records which scene object was made for each joint.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "headless/scene.h"
#include "tests/support/bvh_walk.h"

namespace support {

struct ImportOptions {
    bool nulls = true;
    bool chainFromParent = true;
    bool effectorToLastBone = false;
};

// The object whose origin is at the joint: its null, its bone or the effector of the chain
// that it ends. 0 if there is none.
using JointObjects = std::vector<std::uint32_t>;

struct ProbedSection {
    std::uint32_t model = 0;
    JointObjects joints;  // in the file's order
    // For a BVH section: the joints as they were parsed, without values.
    WalkFile parsed;
};

struct ProbedImport {
    std::int32_t status = 0;
    std::string error;  // the recorded message
    std::vector<ProbedSection> sections;
};

// Resets the session first.
ProbedImport ImportBvhText(const std::string& text, const ImportOptions& options);
ProbedImport ImportBvhFile(const std::wstring& path, const ImportOptions& options);

// The motion of a section's joints. It must not be used after the scene is gone.
class SectionMotion {
  public:
    struct Pose {
        std::vector<Vec3> positions;  // in the scene; zero for joints without an object
        // Whether the middle angle of the joint's own rotation is within 1e-5 of a right angle.
        std::vector<bool> nearRightAngle;
    };

    explicit SectionMotion(const ProbedSection& section);
    ~SectionMotion();
    // At a frame number, counted from 1.
    Pose At(double frame);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace support
