#include "export/page_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "export/base64.h"
#include "export/fast_deflate.h"
#include "export/large_array.h"
#include "export/object_channels.h"
#include "export/run_parts.h"
#include "export/scene_angles.h"

namespace exporters {
namespace {

using headless::Transform;

// Changes that are smaller are rounding errors. The first is a share of the figure's size, the
// second is in degrees.
constexpr double kStillPosition = 1e-8;
constexpr double kStillAngle = 1e-7;
constexpr double kFarthestTurn = 720.0;  // degrees
// The greatest difference between two positions whose power of two fits into a 32-bit float.
constexpr double kFarthestPosition = 1e37;
// The shares of the time after which the poses are evaluated and the packing begins.
constexpr double kEvaluatedShare = 0.5;
constexpr double kPackingShare = 0.7;

class KeyPacker {
  public:
    KeyPacker(const Table& table, const headless::Scene& scene, const Options& options)
        : table_(table),
          rows_(table.Rows()),
          joints_(table.Columns().size()),
          parts_(PartsFor(rows_ * joints_)),
          channels_(RequireCount(rows_, joints_)),
          stillPosition_(kStillPosition * table.Size()) {
        FindObjects(scene, options);
    }

    PageKeys Pack(const Progress& progress) {
        PageKeys keys;
        progress.Report(0, 1);
        keys.rest = Rest();
        const bool areAllObjects =
            std::all_of(columns_.begin(), columns_.end(),
                        [](const ColumnSource& column) { return column.isObject; });
        if (!areAllObjects)
            RunParts(parts_, [&](std::size_t part) {
                // As the threads run at the same time, only one of them reports progress.
                const Progress own =
                    part == 0 ? progress.Between(0.0, kEvaluatedShare) : Progress();
                EvaluateRows(part * rows_ / parts_, (part + 1) * rows_ / parts_, own);
            });
        RunParts(parts_, [&](std::size_t part) {
            const std::size_t first = part * joints_ / parts_;
            const std::size_t end = (part + 1) * joints_ / parts_;
            const Progress own =
                part == 0 ? progress.Between(kEvaluatedShare, kPackingShare) : Progress();
            for (std::size_t column = first; column < end; ++column) {
                own.Report(column - first, end - first);
                FinishColumn(column);
            }
        });
        MeasureChannels(keys);
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
        const ObjectChannels* objects = nullptr;
        std::size_t joint = 0;  // index among the joints of its model
        bool isObject = false;  // whether the channels can be read from the object's curves
    };

    // Returns the number of values. A page refuses more frames, before it reserves memory for them.
    static std::size_t RequireCount(std::size_t rows, std::size_t joints) {
        constexpr std::size_t kMostRows = 10'000'000;
        const std::uint64_t perRow = std::uint64_t{kPageChannels} * joints;
        constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max() / sizeof(double);
        if (rows > kMostRows || perRow > kMost / rows)
            throw ExportError("the take is too long for a page");
        return static_cast<std::size_t>(perRow * rows);
    }

    double* Channel(std::size_t channel) { return &channels_[channel * rows_]; }

    void FindObjects(const headless::Scene& scene, const Options& options) {
        const std::vector<ExportedModel> models = ExportedModels(scene, options);
        for (std::size_t model = 0; model < models.size(); ++model) {
            const ExportedMotion& motion = table_.Models()[model];
            std::vector<double> frames(rows_);
            for (std::size_t row = 0; row < rows_; ++row)
                frames[row] = table_.FrameOf(motion, row);
            objects_.push_back(std::make_unique<ObjectChannels>(scene, *models[model].object,
                                                                motion, std::move(frames)));
            for (std::size_t joint = 0; joint < motion.Joints().size(); ++joint)
                columns_.push_back({objects_.back().get(), joint, objects_.back()->Has(joint)});
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

    // Evaluates the rows from `first` to `end` - 1.
    void EvaluateRows(std::size_t first, std::size_t end, const Progress& progress) {
        std::vector<Transform> locals(joints_);
        std::vector<Transform> globals(joints_);
        Table::Scratch scratch;
        for (std::size_t row = first; row < end; ++row) {
            progress.Report(row - first, end - first);
            table_.Row(row, locals, globals, scratch);
            for (std::size_t column = 0; column < joints_; ++column) {
                if (columns_[column].isObject) continue;
                const SceneAngles angles = FastAnglesOf(locals[column].axes);
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    Channel(kPageChannels * column + axis)[row] = locals[column].origin[axis];
                    Channel(kPageChannels * column + 3 + axis)[row] = angles[axis];
                }
            }
        }
    }

    // Reads the channels of the column if it is an object, and makes its angles continuous if it is
    // not.
    void FinishColumn(std::size_t column) {
        const ColumnSource& source = columns_[column];
        for (std::size_t channel = 0; source.isObject && channel < kPageChannels; ++channel)
            source.objects->Read(source.joint, channel,
                                 {Channel(kPageChannels * column + channel), rows_});
        double* const angles = Channel(kPageChannels * column + 3);
        if (!source.isObject) Unwind(angles);
        if (TurnsFar(angles)) Rewind(angles);
    }

    SceneAngles AnglesAt(const double* angles, std::size_t row) const {
        return {angles[row], angles[rows_ + row], angles[2 * rows_ + row]};
    }

    // `angles` are a joint's angles around x in all rows; those around y and z follow.
    void Unwind(double* angles) const {
        for (std::size_t row = 1; row < rows_; ++row)
            PutAngles(AnglesNear(AnglesAt(angles, row), AnglesAt(angles, row - 1)), angles, row);
    }

    void PutAngles(const SceneAngles& from, double* angles, std::size_t row) const {
        for (std::size_t axis = 0; axis < 3; ++axis)
            angles[axis * rows_ + row] = from[axis];
    }

    // Whether a joint turns so far that a 32-bit float could not hold its angles precisely.
    bool TurnsFar(const double* angles) const {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double* const values = angles + axis * rows_;
            const auto [least, most] = std::minmax_element(values, values + rows_);
            if (*most - *least > kFarthestTurn) return true;
        }
        return false;
    }

    // Replaces the angles by those that FastAnglesOf returns, which are less than a turn apart.
    void Rewind(double* angles) const {
        for (std::size_t row = 0; row < rows_; ++row) {
            const SceneAngles wound = AnglesAt(angles, row);
            const Transform turned =
                headless::FromLocal({0.0, 0.0, 0.0, wound[0], wound[1], wound[2]});
            PutAngles(FastAnglesOf(turned.axes), angles, row);
        }
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
    std::size_t rows_;
    std::size_t joints_;
    std::size_t parts_;
    LargeArray<double> channels_;  // one channel after the other, with a value for each row
    double stillPosition_;
    std::vector<std::unique_ptr<ObjectChannels>> objects_;  // for each model
    std::vector<ColumnSource> columns_;
};

}  // namespace

PageKeys PackKeys(const Table& table, const headless::Scene& scene, const Options& options,
                  const Progress& progress) {
    return KeyPacker(table, scene, options).Pack(progress);
}

}  // namespace exporters
