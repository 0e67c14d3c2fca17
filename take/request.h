// The files and the options of one import.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace take {

// The number of formats. A table that is indexed by Format has this many elements.
inline constexpr std::size_t kFormatCount = 2;

// The plug-in has one command for each format.
enum class Format : std::uint8_t {
    Biovision,  // a .bvh file, which holds a skeleton and its motion
    Acclaim,    // an .asf file, which holds a skeleton; and, optionally, an .amc with its motion
};

// Decides the unit of length and the rate of Acclaim files, which often do not state them.
enum class Preset : std::uint8_t {
    Auto,  // Cmu for files that look like those of the CMU archive, None for others
    Cmu,   // lengths are converted from the CMU archive's unit to metres; 120 frames per second
    None,  // the unit and the rate that the file states
};

// A file whose name ends in ".gz", in any letter case, is unpacked before it is read, wherever its
// bytes come from. Its text is then treated as a file without ".gz" at the end of its name.
struct InputFile {
    // The path as the user wrote it, in UTF-8. If the file does not name its model, the model is
    // named after the last part of the path.
    std::string path;
    // The file's bytes, if the caller has them in memory. If nullopt, the file is read from `path`.
    std::optional<std::string> content = std::nullopt;
    // For a file that has no path, such as the standard input: the name that is used instead of the
    // last part of `path`. `path` is then only shown in messages, and `content` must have the
    // bytes.
    std::string name{};
};

struct Request {
    Format format = Format::Biovision;
    InputFile file;                   // the .bvh or .asf
    std::optional<InputFile> motion;  // the .amc; nullopt: only the skeleton is imported

    bool useNulls = true;              // joints become nulls; false: chains of bones are built
    bool chainFromParentJoint = true;  // a chain begins with a bone that starts at the parent joint
    bool effectorToLastBone = false;   // an effector is a child of its chain's last bone
    bool createGroup = true;
    bool addClip = false;
    // For Acclaim files only: clamp values to the skeleton's limits.
    bool applyLimits = false;
    // For Acclaim files only: multiply lengths by this factor instead of the file's factor.
    std::optional<double> lengthMultiplier;
    Preset preset = Preset::Auto;

    // Skips the survey: the plug-in reads the files as they are.
    bool asIs = false;
    // The files are refused if the survey reports a warning, not only if it reports an error.
    bool strict = false;
    // The encoding of names that are not valid UTF-8, by its name in iconv. Empty: Windows-1252.
    std::string encoding;
    // The take's rate, which replaces the rate that the file states. It is above zero.
    std::optional<double> framesPerSecond;

    // Gives the plug-in a progress bar. A listener needs the bar to cancel while the plug-in runs.
    bool hasProgressBar = false;
    // If false, or if any file was mended, the plug-in decodes names as UTF-8. In all other cases,
    // it decodes them with the character locale of the calling thread.
    bool readsInLocale = false;
};

}  // namespace take
