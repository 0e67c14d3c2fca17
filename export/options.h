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

namespace exporters {

// Thrown if the scene cannot be written in a format. The message says why, in one line.
class ExportError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Where the scene came from. glTF files say it.
struct Source {
    std::vector<std::string>
        files;           // paths as the user gave them; only their file names are written
    std::string format;  // "Biovision BVH" or "Acclaim ASF/AMC"
    // The options of the import as names with values. A value is "true", "false", a number or text.
    std::vector<std::pair<std::string, std::string>> options;
    std::string tool;  // name and version of the program
};

// A range of frame numbers of the motion. Both ends belong to it.
struct FrameRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

struct Options {
    // The factor by which all lengths are multiplied. Finite and above zero.
    double scale = 1.0;
    // Whether the Z axis is up in the scene. The output is then turned so that Y is up.
    bool zUp = false;
    // The rate of the motion's frames; by default the motion's own. Above zero.
    std::optional<double> framesPerSecond = std::nullopt;
    // Samples per second that are written instead of the motion's keys. Above zero.
    std::optional<double> resampleTo = std::nullopt;
    // Only the frames in this range are written. It first selects from the frames that have keys;
    // samples, and missing frames that are filled in, then go from the first to the last of these.
    // A motion without a frame in the range is refused. A model without motion is not affected.
    std::optional<FrameRange> frames = std::nullopt;
    // glTF only: adds a mesh of bone shapes, so that viewers show a figure.
    bool mesh = true;
    // BVH only: the most digits after the decimal point of every number. By default there are as
    // many as a reader needs to get positions within a millionth of the skeleton's size.
    std::optional<int> digits = std::nullopt;
    // Writes only this many models, the first of the scene; by default all. A program sets it if
    // only the first models were imported completely.
    std::optional<std::size_t> models = std::nullopt;
    Source source = {};
};

// Lines for the user about what was left out ("walk: no motion, ..."), in the order of the models.
using Notes = std::vector<std::string>;

}  // namespace exporters
