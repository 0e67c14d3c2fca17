// What the exporters are asked for, and how they refuse.
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

// The scene cannot be written in this format; says why, in one line.
class ExportError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Where the scene came from, for formats that have room for it.
struct Source {
    std::vector<std::string> files;  // as the user named them; only the last part of each is kept
    std::string format;              // "Biovision BVH", "Acclaim ASF/AMC"
    // Name and value; a value is "true", "false", a number or a text.
    std::vector<std::pair<std::string, std::string>> options;
    std::string tool;  // name and version
};

// Frames by the numbers that they have in the motion, both ends included.
struct FrameRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

struct Options {
    // The factor on all lengths. Finite and above zero.
    double scale = 1.0;
    // The capture has its Z axis up; it is turned so that Y is up in the file.
    bool zUp = false;
    // The rate of the motion's frames, in place of the motion's own. Above zero.
    std::optional<double> framesPerSecond = std::nullopt;
    // Sample the motion at this rate in place of its own keys. Above zero.
    std::optional<double> resampleTo = std::nullopt;
    // Only the frames in this range. Those of the motion's own keys are chosen first; resampling,
    // and filling in of missing frames, go from the first to the last of these. A motion without a
    // frame in it is refused; models without motion are written in the base pose as ever.
    std::optional<FrameRange> frames = std::nullopt;
    // glTF: a body of bone shapes, so that viewers show a figure.
    bool mesh = true;
    // BVH: digits after the decimal point of every number; by default as many as it needs to read
    // positions back within a millionth of the skeleton's size.
    std::optional<int> digits = std::nullopt;
    // Only the first so many models of the scene: those that were imported whole.
    std::optional<std::size_t> models = std::nullopt;
    Source source = {};
};

// Lines for the user about what was left out ("walk: no motion, ..."), in order.
using Notes = std::vector<std::string>;

}  // namespace exporters
