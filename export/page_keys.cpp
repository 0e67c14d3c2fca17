#include "export/page_keys.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <deque>
#include <limits>
#include <span>
#include <utility>

#include "export/base64.h"
#include "export/fast_deflate.h"
#include "export/joint_channels.h"
#include "export/run_parts.h"
#include "export/scene_angles.h"

namespace exporters {
namespace {

// Changes that are smaller are rounding errors. The first is a share of the figure's size, the
// second is in degrees.
constexpr double kStillPosition = 1e-8;
constexpr double kStillAngle = 1e-7;
// The page shows the angles of the scene. Those within two turns fit into 32-bit floats well.
constexpr AngleChoice kAngles = {.keepsSceneAngles = true, .farthest = 360.0};
// The greatest difference between two positions whose power of two fits into a 32-bit float.
constexpr double kFarthestPosition = 1e37;
// The share of the time after which the poses are evaluated and the packing begins.
constexpr double kPackingShare = 0.7;

// Throws ExportError if a page would have too many keys, before memory for them is reserved.
void RequireCount(std::size_t rows, std::size_t joints) {
    constexpr std::size_t kMostRows = 10'000'000;
    const std::uint64_t perRow = std::uint64_t{kPageChannels} * joints;
    constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max() / sizeof(double);
    if (rows > kMostRows || perRow > kMost / rows)
        throw ExportError("the take is too long for a page");
}

class KeyPacker {
  public:
    KeyPacker(const Table& table, const headless::Scene& scene, const Options& options,
              const Progress& progress)
        : table_(table),
          rows_(table.Rows()),
          parts_(PartsFor(rows_ * table.Columns().size())),
          stillPosition_(kStillPosition * table.Size()) {
        RequireCount(rows_, table.Columns().size());
        ReadModels(scene, options, progress.Between(0.0, kPackingShare));
    }

    PageKeys Pack(const Progress& progress) {
        PageKeys keys;
        keys.rest = Rest();
        ChooseChannels(keys);
        const std::string planes = Planes(keys);
        const Progress packing = progress.Between(kPackingShare, 1.0);
        packing.Report(0, 2);
        if (planes.empty()) return keys;
        const std::string packed = FastDeflate(planes);
        packing.Report(1, 2);
        keys.text = Base64(packed);
        return keys;
    }

  private:
    // Where the channels of a column come from.
    struct ColumnSource {
        const JointChannels* model = nullptr;
        std::size_t joint = 0;  // index among the joints of its model
    };

    void ReadModels(const headless::Scene& scene, const Options& options,
                    const Progress& progress) {
        const std::vector<ExportedModel> models = ExportedModels(scene, options);
        for (std::size_t model = 0; model < models.size(); ++model) {
            const ExportedMotion& motion = table_.Models()[model];
            std::vector<double> frames(rows_);
            for (std::size_t row = 0; row < rows_; ++row)
                frames[row] = table_.FrameOf(motion, row);
            const JointChannels& channels =
                models_.emplace_back(scene, *models[model].object, motion, std::move(frames), true,
                                     kAngles, progress.Part(model, models.size()));
            for (std::size_t joint = 0; joint < motion.Joints().size(); ++joint)
                columns_.push_back({&channels, joint});
        }
    }

    std::vector<double> Rest() const {
        std::vector<double> rest;
        for (const Table::Column& column : table_.Columns()) {
            rest.insert(rest.end(), column.rest.origin, column.rest.origin + 3);
            const SceneAngles angles = FastAnglesOf(column.rest.axes);
            rest.insert(rest.end(), angles.begin(), angles.end());
        }
        return rest;
    }

    // Finds the channels that change. The keys of such a channel are all between r and 2 r, where
    // r is a power of two, after the number in keys.values has been subtracted from them. All of
    // them then have the same exponent as 32-bit floats, so the differences between their bits are
    // small. Throws ExportError if positions are too far apart for 32-bit floats.
    void ChooseChannels(PageKeys& keys) const {
        keys.values.resize(kPageChannels * columns_.size());
        for (std::size_t channel = 0; channel < keys.values.size(); ++channel) {
            const ColumnSource& source = columns_[channel / kPageChannels];
            const auto [first, least, most] =
                source.model->RangeOf(source.joint, channel % kPageChannels);
            const bool isAngle = channel % kPageChannels >= 3;
            keys.values[channel] = first;
            if (most - least <= (isAngle ? kStillAngle : stillPosition_)) continue;
            if (most - least > kFarthestPosition)
                throw ExportError("the positions are too far apart for a page");
            keys.values[channel] = least - std::exp2(std::ceil(std::log2(most - least)));
            keys.animated.push_back(channel);
        }
    }

    // Returns the keys as differences in four byte planes, the lowest bytes first.
    std::string Planes(const PageKeys& keys) const {
        const std::size_t count = keys.animated.size() * rows_;
        std::string planes(4 * count, '\0');
        RunParts(parts_, [&](std::size_t part) {
            std::vector<double> values(rows_);
            const std::size_t end = (part + 1) * keys.animated.size() / parts_;
            for (std::size_t curve = part * keys.animated.size() / parts_; curve < end; ++curve) {
                const std::size_t channel = keys.animated[curve];
                const ColumnSource& source = columns_[channel / kPageChannels];
                source.model->Read(source.joint, channel % kPageChannels, values);
                PutCurve(values, keys.values[channel], planes.data() + curve * rows_, count);
            }
        });
        return planes;
    }

    static void PutCurve(std::span<const double> values, double base, char* plane,
                         std::size_t planeSize) {
        std::uint32_t before = 0;
        for (std::size_t row = 0; row < values.size(); ++row) {
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
    std::size_t rows_;
    std::size_t parts_;
    double stillPosition_;
    std::deque<JointChannels> models_;
    std::vector<ColumnSource> columns_;
};

}  // namespace

PageKeys PackKeys(const Table& table, const headless::Scene& scene, const Options& options,
                  const Progress& progress) {
    return KeyPacker(table, scene, options, progress).Pack(progress);
}

}  // namespace exporters
