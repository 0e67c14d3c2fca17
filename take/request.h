// What is asked of one import.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace take {

// The formats that there are. Tables of formats have a row for each, in this order.
inline constexpr std::size_t kFormatCount = 2;

// Which of the plug-in's two commands reads the files.
enum class Format : std::uint8_t {
    Biovision,  // a .bvh: a skeleton and its motion
    Acclaim,    // an .asf: a skeleton, with or without the .amc of a motion
};

// Of Acclaim files, which lengths and rate they have.
enum class Preset : std::uint8_t {
    Auto,  // the archive's, where a file looks like one of its
    Cmu,   // the archive's: metres and 120 frames a second
    None,  // what the file says
};

struct InputFile {
    // As the user named it, in UTF-8. The model of a file that does not name one itself is called
    // after it.
    std::string path;
    // The file itself, where it is in memory; none: it is read from the storage.
    std::optional<std::string> content = std::nullopt;
};

struct Request {
    Format format = Format::Biovision;
    InputFile file;                   // the .bvh or .asf
    std::optional<InputFile> motion;  // the .amc of Acclaim files

    bool useNulls = true;  // false: chains of bones
    bool chainFromParentJoint = true;
    bool effectorToLastBone = false;
    bool createGroup = true;
    bool addClip = false;
    // Of Acclaim files: hold the values within the limits; the factor on lengths in the place of
    // the file's own.
    bool applyLimits = false;
    std::optional<double> lengthMultiplier;
    Preset preset = Preset::Auto;

    // Without a survey: the plug-in reads the files to the letter.
    bool asIs = false;
    // A warning of the survey refuses the import too.
    bool strict = false;
    // Of names that are no UTF-8, as iconv names it; empty: Windows-1252.
    std::string encoding;
    // The take's rate, stated in the file's stead. Above zero.
    std::optional<double> framesPerSecond;

    // Lets the plug-in show a progress bar, which can be watched and cancelled.
    bool hasProgressBar = false;
    // Names in a file that is read to the letter are read by the character locale of the calling
    // thread; otherwise as UTF-8.
    bool readsInLocale = false;
};

}  // namespace take
