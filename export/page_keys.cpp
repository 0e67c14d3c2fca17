#include "export/page_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <future>
#include <span>
#include <thread>

#include "export/base64.h"
#include "export/fast_deflate.h"
#include "export/large_array.h"
#include "export/launch.h"
#include "export/scene_angles.h"

namespace exporters {
namespace {

using headless::Transform;

// A thread that has fewer poses of joints to evaluate would hardly be worth its start.
constexpr std::size_t kFewestPoses = 20'000;
// Changes that are smaller are rounding errors. The first is a share of the figure's size, the
// second is in degrees.
constexpr double kStillPosition = 1e-8;
constexpr double kStillAngle = 1e-7;
// Two angles that differ less are the same.
constexpr double kSameAngle = 1e-3;      // degrees
constexpr double kFarthestTurn = 720.0;  // degrees
// The greatest difference between two positions whose power of two fits into a 32-bit float.
constexpr double kFarthestPosition = 1e37;
// The share of the time that evaluating the poses takes.
constexpr double kPosesShare = 0.6;

// Calls work(part) for each part on a thread of its own, the first one on this thread.
template <class Work>
void RunParts(std::size_t parts, const Work& work) {
    std::vector<std::future<void>> others;
    for (std::size_t part = 1; part < parts; ++part)
        others.push_back(std::async(kLaunch, work, part));
    // If this throws, the destructors of the futures wait for the other threads.
    work(std::size_t{0});
    for (std::future<void>& other : others)
        other.get();
}

// Returns the angles of the scene where the joint turns as its object does. Elsewhere returns the
// angles nearest to those of the frame before.
SceneAngles ChosenAngles(const SceneAngles& angles, const SceneAngles& inScene,
                         const SceneAngles& before) {
    const SceneAngles near = AnglesNear(angles, inScene);
    const bool isScene =
        std::equal(near.begin(), near.end(), inScene.begin(),
                   [](double a, double b) { return std::abs(a - b) < kSameAngle; });
    return isScene ? near : AnglesNear(angles, before);
}

class KeyPacker {
  public:
    KeyPacker(const Table& table, const headless::Scene& scene, const Options& options)
        : table_(table),
          scene_(scene),
          models_(ExportedModels(scene, options)),
          rows_(table.Rows()),
          joints_(table.Columns().size()),
          parts_(std::clamp<std::size_t>(rows_ * joints_ / kFewestPoses, 1,
                                         std::max(1U, std::thread::hardware_concurrency()))),
          channels_(kPageChannels * joints_ * rows_),
          stillPosition_(kStillPosition * table.Size()) {}

    PageKeys Pack(const Progress& progress) {
        PageKeys keys;
        keys.rest = Rest();
        RunParts(parts_, [&](std::size_t part) {
            // As the threads run at the same time, only one of them reports progress.
            const Progress own = part == 0 ? progress.Between(0.0, kPosesShare) : Progress();
            EvaluateRows(part * rows_ / parts_, (part + 1) * rows_ / parts_, own);
        });
        std::size_t column = 0;
        for (std::size_t model = 0; model < models_.size(); ++model) {
            Unwind(model, column);
            column += table_.Models()[model].Joints().size();
        }
        MeasureChannels(keys);
        const std::string planes = Planes(keys);
        const Progress packing = progress.Between(kPosesShare, 1.0);
        packing.Report(0, 4);
        if (planes.empty()) return keys;
        const std::string packed = FastDeflate(planes);
        packing.Report(3, 4);
        keys.text = Base64(packed);
        return keys;
    }

  private:
    double* Channel(std::size_t channel) { return &channels_[channel * rows_]; }

    std::vector<double> Rest() const {
        std::vector<double> rest;
        for (const Table::Column& column : table_.Columns()) {
            rest.insert(rest.end(), column.rest.origin, column.rest.origin + 3);
            const SceneAngles angles = FastAnglesOf(column.rest.axes);
            rest.insert(rest.end(), angles.begin(), angles.end());
        }
        return rest;
    }

    // Evaluates the rows from `first` to `end` - 1.
    void EvaluateRows(std::size_t first, std::size_t end, const Progress& progress) {
        std::vector<Transform> locals(joints_);
        std::vector<Transform> globals(joints_);
        Table::Scratch scratch;
        for (std::size_t row = first; row < end; ++row) {
            progress.Report(row - first, end - first);
            table_.Row(row, locals, globals, scratch);
            for (std::size_t joint = 0; joint < joints_; ++joint) {
                const SceneAngles angles = FastAnglesOf(locals[joint].axes);
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    Channel(kPageChannels * joint + axis)[row] = locals[joint].origin[axis];
                    Channel(kPageChannels * joint + 3 + axis)[row] = angles[axis];
                }
            }
        }
    }

    // Chooses the angles of a model's joints. `column` is the column of its first joint.
    void Unwind(std::size_t model, std::size_t column) {
        const ExportedMotion& motion = table_.Models()[model];
        const std::size_t joints = motion.Joints().size();
        SceneAngleReader reader(scene_, *models_[model].object, motion.Motion(), motion.Joints());
        RunParts(parts_, [&](std::size_t part) {
            // Each thread reads other joints.
            for (std::size_t joint = part * joints / parts_; joint < (part + 1) * joints / parts_;
                 ++joint)
                UnwindJoint(motion, joint, Channel(kPageChannels * (column + joint) + 3), reader);
        });
    }

    // `x` are the joint's angles around x in all rows; those around y and z follow. A joint that
    // turns too far keeps the angles of FastAnglesOf, because a 32-bit float could not hold more
    // turns precisely.
    void UnwindJoint(const ExportedMotion& motion, std::size_t joint, double* x,
                     SceneAngleReader& reader) const {
        std::vector<SceneAngles> angles(rows_);
        SceneAngles least{};
        SceneAngles most{};
        for (std::size_t row = 0; row < rows_; ++row) {
            const SceneAngles inScene = reader.At(joint, table_.FrameOf(motion, row));
            const SceneAngles& before = row == 0 ? inScene : angles[row - 1];
            angles[row] =
                ChosenAngles({x[row], x[rows_ + row], x[2 * rows_ + row]}, inScene, before);
            if (row == 0) least = most = angles[0];
            for (std::size_t axis = 0; axis < 3; ++axis) {
                least[axis] = std::min(least[axis], angles[row][axis]);
                most[axis] = std::max(most[axis], angles[row][axis]);
            }
        }
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (most[axis] - least[axis] > kFarthestTurn) return;
        for (std::size_t row = 0; row < rows_; ++row)
            for (std::size_t axis = 0; axis < 3; ++axis)
                x[axis * rows_ + row] = angles[row][axis];
    }

    // Finds the channels that change. The keys of such a channel are all between r and 2 r, where
    // r is a power of two, after the number in keys.values has been subtracted from them. All of
    // them then have the same exponent as 32-bit floats, so the differences between their bits are
    // small. Throws ExportError if positions are too far apart for 32-bit floats.
    void MeasureChannels(PageKeys& keys) {
        keys.values.resize(kPageChannels * joints_);
        for (std::size_t channel = 0; channel < keys.values.size(); ++channel) {
            const double* const values = Channel(channel);
            const auto [least, most] = std::minmax_element(values, values + rows_);
            const bool isAngle = channel % kPageChannels >= 3;
            keys.values[channel] = values[0];
            if (*most - *least <= (isAngle ? kStillAngle : stillPosition_)) continue;
            if (*most - *least > kFarthestPosition)
                throw ExportError("the positions are too far apart for a page");
            keys.values[channel] = *least - std::exp2(std::ceil(std::log2(*most - *least)));
            keys.animated.push_back(channel);
        }
    }

    // Returns the keys as differences in four byte planes, the lowest bytes first.
    std::string Planes(const PageKeys& keys) {
        const std::size_t count = keys.animated.size() * rows_;
        std::string planes(4 * count, '\0');
        RunParts(parts_, [&](std::size_t part) {
            const std::size_t end = (part + 1) * keys.animated.size() / parts_;
            for (std::size_t curve = part * keys.animated.size() / parts_; curve < end; ++curve)
                PutCurve(Channel(keys.animated[curve]), keys.values[keys.animated[curve]],
                         planes.data() + curve * rows_, count);
        });
        return planes;
    }

    void PutCurve(const double* values, double base, char* plane, std::size_t planeSize) const {
        std::uint32_t before = 0;
        for (std::size_t row = 0; row < rows_; ++row) {
            const auto key = static_cast<float>(values[row] - base);
            std::uint32_t bits = 0;
            std::memcpy(&bits, &key, sizeof bits);
            const std::uint32_t difference = bits - before;
            before = bits;
            // The sign goes to the lowest bit, so that small differences have small numbers.
            const std::uint32_t packed = difference << 1U ^ (0U - (difference >> 31U));
            for (std::size_t byte = 0; byte < 4; ++byte)
                plane[byte * planeSize + row] = static_cast<char>(packed >> (8U * byte));
        }
    }

    const Table& table_;
    const headless::Scene& scene_;
    std::vector<ExportedModel> models_;
    std::size_t rows_;
    std::size_t joints_;
    std::size_t parts_;
    LargeArray<double> channels_;  // one channel after the other, with a value for each row
    double stillPosition_;
};

}  // namespace

PageKeys PackKeys(const Table& table, const headless::Scene& scene, const Options& options,
                  const Progress& progress) {
    return KeyPacker(table, scene, options).Pack(progress);
}

}  // namespace exporters
