// The options of the exporters, and the exception with which they refuse a scene.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "export/file_skeleton.h"

namespace exporters {

// Thrown if the scene cannot be written in a format. The message says why, in one line.
class ExportError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A file from which the scene was imported.
struct SourceFile {
    std::string path;  // as the user gave it; only the last part is written
    std::optional<std::uint64_t> bytes = std::nullopt;  // the file's size
    std::string sha256{};  // 64 hexadecimal digits; empty if it was not computed
};

// The files from which the scene was imported, and how. Some formats store this.
struct Source {
    std::vector<SourceFile> files;
    std::string format;  // "Biovision BVH" or "Acclaim ASF/AMC"
    // The options of the import as names with values. A value is "true", "false", a number or text.
    std::vector<std::pair<std::string, std::string>> options;
    std::string tool;  // name and version of the program
};

// The axis of the scene that points up.
enum class UpAxis : std::uint8_t { X, Y, Z };

// The frame numbers of a motion from `first` to `last`, including both.
struct FrameRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

struct Options {
    // The factor by which all lengths are multiplied. Finite and above zero.
    double scale = 1.0;
    // The scene's lengths are those of the file times this factor. They are divided by it before
    // they are multiplied by `scale`. Finite and above zero.
    double enlarged = 1.0;
    // The axis that is up in the scene. The output is turned so that Y is up.
    UpAxis up = UpAxis::Y;
    // The rate of the motion in frames per second, above zero. By default it is the motion's own.
    std::optional<double> framesPerSecond = std::nullopt;
    // The number of samples per second, above zero. If this is set, samples are written instead of
    // the motion's keys.
    std::optional<double> resampleTo = std::nullopt;
    // If this is set, only frames in this range are written. First, the frames with keys that are
    // in the range are selected. Samples and missing frames are then added only from the first to
    // the last of the selected frames. A motion is refused if no frame with keys is in the range.
    // The range does not affect a model without motion.
    std::optional<FrameRange> frames = std::nullopt;
    // If this is set, the root stays where it is on the ground: in every frame it has the two
    // coordinates along the ground that it has in the first frame that is written. Its height and
    // its rotation do not change.
    bool inPlace = false;
    // If this is set, all objects of the scene are written as joints. Otherwise only the joints and
    // end sites of the file are.
    bool allNodes = false;
    // glTF and FBX only: whether to add a mesh of bone shapes, so that viewers show a figure.
    bool mesh = true;
    // glTF only: turn the frame of each joint so that its Y axis points to its child in the base
    // pose. Programs that draw a bone along its joint's Y axis then draw it to the child. No
    // position changes.
    bool aim = false;
    // glTF only: write an animation for each model, even if one animation could hold the motions of
    // all models.
    bool animationPerModel = false;
    // NumPy only: write numbers as 32-bit floats instead of 64-bit ones.
    bool float32 = false;
    // NumPy and FBX only: compress the arrays; of FBX, the values of the keys. By default only FBX
    // compresses them.
    std::optional<bool> compress = std::nullopt;
    // BVH only: the most digits after the decimal point of a coordinate or an angle. If this is not
    // set, enough digits are written that a reader computes positions with an error below a
    // millionth of the skeleton's size.
    std::optional<int> digits = std::nullopt;
    // If this is set, only the first `models` models of the scene are written. A program sets it if
    // the later models were not imported completely.
    std::optional<std::size_t> models = std::nullopt;
    // The skeletons of the file, one for each model, in the order of the models. They decide which
    // joints a model has, their order and their names. A model whose skeleton is missing, or whose
    // objects do not fit it, gets its joints from the scene alone.
    std::vector<FileSkeleton> skeletons = {};
    // How many metres one unit of the scene's lengths is, and the axis of the scene that points up,
    // if they are known. Otherwise the outputs that state them state a guess. These two options
    // turn and scale nothing.
    std::optional<double> metresPerUnit = std::nullopt;
    std::optional<UpAxis> knownUp = std::nullopt;
    Source source = {};
};

// Lines for the user about what was left out ("walk: no motion, ..."), in the order of the models.
using Notes = std::vector<std::string>;

}  // namespace exporters
