// Looks at capture files before they are imported. Reports what is odd about them and what they
// hold. Where the plug-in would misread a file, returns a text that it reads as the author meant.
//
// Every text must be followed by a readable byte that is no part of a number (a NUL, as in
// std::string), and is only read during the call. Nothing here knows files or hosts. During a
// call a second thread may share the work. Only lack of memory throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace survey {

// What the survey is for.
enum class Purpose : std::uint8_t {
    Check,  // findings and facts, also the facts that need forward kinematics
    // Findings and facts, and the text for the plug-in. Where the plug-in reads something otherwise
    // than the format defines it, the text follows the plug-in, so that a survey of that text may
    // report it as odd.
    Import,
    // Findings and facts, and a text for every reader, in the file's units and at its rate. A
    // survey of that text finds nothing to mend. There is no text if no finding is mended.
    Fix,
};

enum class Preset : std::uint8_t {
    Auto,  // the archive's unit and rate, if the file looks like one of the archive's
    Cmu,   // the archive's unit and rate
    None,  // the file's own unit and rate
};

struct Options {
    Purpose purpose = Purpose::Check;
    bool bones = false;  // Import only: the skeleton is built as bone chains
    // The encoding of a file that is not UTF-8, by iconv's name for it. If empty, names that are
    // not UTF-8 are read as Windows-1252.
    std::string encoding;
    // The user's values, which override the file's.
    std::optional<double> framesPerSecond;
    std::optional<double> lengthMultiplier;  // for Acclaim files only
    Preset preset = Preset::Auto;            // for Acclaim files only
};

// Line `mended` of a mended text comes from line `original` of the file, and the lines after it
// from those after `original`, up to the next mark. Both count from 1.
struct LineMark {
    std::size_t mended = 1;
    std::size_t original = 1;
};

// The text that readers get instead of the file: UTF-8, with line feeds, one row for each frame.
struct MendedText {
    std::string text;
    std::vector<LineMark> lines;  // `mended` rises
};

// What a file holds. A fact that is not known is nullopt or empty.
struct Facts {
    std::size_t joints = 0;  // without end sites; for ASF files, the root and the bones
    std::size_t endSites = 0;
    std::size_t channels = 0;
    std::optional<std::size_t> frames;
    std::optional<double> framesPerSecond;
    std::optional<double> seconds;  // every frame counts with its full duration, also the last one
    // Height, unit and up axis are only known for Purpose::Check. The height is in the file's unit;
    // for Acclaim files, with the length multiplier that is in effect.
    std::optional<double> height;
    std::string unit;  // the likely one: "metres", "centimetres", "inches", ...
    std::string up;    // the axis that likely points up: "x", "y" or "z"
    // The orders in which joints list their rotations, such as "ZXY"; each once, in file order.
    std::vector<std::string> orders;
};

struct FileSurvey {
    std::vector<Finding> findings;     // by line
    std::optional<MendedText> mended;  // nullopt if the plug-in can read the file itself
    Facts facts;

    ZKMOCAP_API bool Has(Severity severity) const;  // whether there is a finding of this severity
};

struct BvhSurvey : FileSurvey {
    // The rate for exports and the summary, if it is not the one in the text that the plug-in
    // reads.
    std::optional<double> framesPerSecond;
};

ZKMOCAP_API BvhSurvey SurveyBvh(std::string_view bvh, const Options& options);

struct AcclaimFile {
    std::string_view text;
    std::string name;  // without folder; for messages, and for a skeleton whose ":name" is empty
};

struct AmcSurvey : FileSurvey {
    // The rate for exports and the summary, if it is not the one in the text that the plug-in
    // reads.
    std::optional<double> framesPerSecond;
};

struct AcclaimSurvey {
    FileSurvey skeleton;
    std::vector<AmcSurvey> motions;  // one for each motion that was given, in the same order
    // What the plug-in has to multiply lengths by instead of the file's own factor; nullopt if it
    // can use the file's.
    std::optional<double> lengthMultiplier;
    // An extra factor in `lengthMultiplier`, by which exports and the summary divide again. It is 1
    // unless a bone would be too short for the plug-in.
    double multiplied = 1.0;
};

// Surveys a skeleton together with any number of motions; for Purpose::Import, at most one.
ZKMOCAP_API AcclaimSurvey SurveyAcclaim(const AcclaimFile& asf, std::span<const AcclaimFile> amcs,
                                        const Options& options);

// Surveys a motion whose skeleton is not known.
ZKMOCAP_API AmcSurvey SurveyAmcAlone(const AcclaimFile& amc, const Options& options);

}  // namespace survey
