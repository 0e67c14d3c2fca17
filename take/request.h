// The files and the options of one import.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace take {

// How many formats there are. A table indexed by Format has this many rows, in the enum's order.
inline constexpr std::size_t kFormatCount = 2;

// Each format has its own command of the plug-in.
enum class Format : std::uint8_t {
    Biovision,  // a .bvh: a skeleton and its motion
    Acclaim,    // an .asf, which is a skeleton, with or without an .amc, which is its motion
};

// The unit of length and the rate of Acclaim files, which often state neither.
enum class Preset : std::uint8_t {
    Auto,  // Cmu for files that look like those of that archive, None for others
    Cmu,   // the scene is in metres, the motion has 120 frames a second
    None,  // what the file itself states
};

struct InputFile {
    // The path as the user wrote it, in UTF-8. Where the file does not name its model, the model is
    // named after the path.
    std::string path;
    // The file's bytes, where they are in memory; none: the file is read from the storage.
    std::optional<std::string> content = std::nullopt;
};

struct Request {
    Format format = Format::Biovision;
    InputFile file;                   // the .bvh or .asf
    std::optional<InputFile> motion;  // the .amc; none: the skeleton alone

    bool useNulls = true;              // false: chains of bones
    bool chainFromParentJoint = true;  // a chain starts at its parent joint
    bool effectorToLastBone = false;   // an effector is a child of its chain's last bone
    bool createGroup = true;
    bool addClip = false;
    // For Acclaim files only: whether values are clamped to the skeleton's limits, and a factor on
    // lengths that replaces the file's own.
    bool applyLimits = false;
    std::optional<double> lengthMultiplier;
    Preset preset = Preset::Auto;

    // Skips the survey: the plug-in reads the files as they are.
    bool asIs = false;
    // A warning of the survey refuses the files, as an error does.
    bool strict = false;
    // The encoding of names that are not valid UTF-8, as iconv names it; empty: Windows-1252.
    std::string encoding;
    // The take's rate, above zero, which replaces the one that the file states.
    std::optional<double> framesPerSecond;

    // Gives the plug-in a progress bar. Only with it can a listener cancel while the plug-in runs.
    bool hasProgressBar = false;
    // Where no file was mended, names are decoded by the character locale of the calling thread;
    // false: always as UTF-8.
    bool readsInLocale = false;
};

}  // namespace take
