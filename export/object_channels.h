// Reads the channels of joints from the curves of the scene, without evaluating the scene.
// Internal to export/.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/exported_motion.h"
#include "headless/scene.h"
#include "math/pose_lanes.h"

namespace exporters {

// The six channels of a joint are its position (x, y, z) and its angles (x, y, z, in degrees).
class ObjectChannels {
  public:
    // `frames` are the frames to read. The turn of the motion is not applied. Keeps references to
    // the scene.
    ObjectChannels(const headless::Scene& scene, const headless::Object& model,
                   const ExportedMotion& motion, std::span<const double> frames);

    // Whether the channels of the joint can be read: its local transform is that of its object, and
    // its curves have a key in each frame.
    bool Has(std::size_t joint) const { return joints_[joint].isReadable; }
    // Writes the values of a channel, one for each frame. Positions are multiplied by the scale of
    // the motion.
    void Read(std::size_t joint, std::size_t channel, std::span<double> values) const {
        ReadFrom(0, joint, channel, values);
    }
    // The same for the frames from the index `first` on.
    void ReadFrom(std::size_t first, std::size_t joint, std::size_t channel,
                  std::span<double> values) const;
    // Computes the poses in `count` frames from the index `first` on. The lanes that are not used
    // repeat the last pose.
    void ReadPoses(std::size_t joint, std::size_t first, std::size_t count,
                   math::PoseLanes& pose) const;
    // Whether the channels of the joint can be read, and its position or its angles are in all
    // frames those of its object in the scene.
    bool KeepsPosition(std::size_t joint) const { return Keeps(joint, 0); }
    bool KeepsAngles(std::size_t joint) const { return Keeps(joint, 3); }

  private:
    static constexpr std::size_t kChannels = 6;

    struct JointTracks {
        const headless::Object* object = nullptr;
        bool isReadable = false;
        double constants[kChannels] = {};
        // For each channel, the values of its keys; null if the channel is constant.
        const headless::NumberArray* values[kChannels] = {};
    };

    // Whether three channels are in all frames those of the object.
    bool Keeps(std::size_t joint, std::size_t firstChannel) const;
    // Whether the joint is not turned in any frame.
    bool IsNeverTurned(const JointTracks& tracks) const;
    // Finds the key of each frame. Returns false if a frame between two keys has none.
    bool FindKeys(const std::vector<double>& keys, std::span<const double> frames);
    void AddItem(const headless::ActionItem& item, std::size_t channel,
                 const std::vector<double>& keys, JointTracks& tracks);

    double scale_ = 1.0;
    std::vector<std::size_t> keyOf_;   // for each frame, the index of its key
    bool areNeighbours_ = true;        // whether each key follows the one before
    std::vector<JointTracks> joints_;  // for each joint
    // Times that are those of the motion's keys.
    const headless::NumberArray* knownTimes_ = nullptr;
};

}  // namespace exporters
