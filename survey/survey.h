// A look at capture files before they are imported: what is odd about them, what they hold, and,
// where the plug-in would not read what the author meant, a text that it does.
//
// Every text is followed by a byte that can be read and belongs to no number (a NUL, as in
// std::string), and is only looked at during the call. Nothing here knows files or hosts; a
// second thread may share the work during a call. Only lack of memory throws.
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
    Check,  // findings and facts, those that need forward kinematics included
    // Findings, and the text for the plug-in: what it reads otherwise than the format has it is
    // written its way, so that another look at that text may find it odd.
    Import,
    // Findings, and the text for every reader: units and rate as in the file. Another look at it
    // finds nothing to mend. None where no finding is mended.
    Fix,
};

enum class Preset : std::uint8_t {
    Auto,  // the archive's, where the file looks like one of them
    Cmu,   // the archive's
    None,
};

struct Options {
    Purpose purpose = Purpose::Check;
    bool bones = false;    // Import: the skeleton is built as bone chains
    std::string encoding;  // of names that are no UTF-8, as iconv names it; empty: Windows-1252
    // Stated by the user in the file's stead.
    std::optional<double> framesPerSecond;
    std::optional<double> lengthMultiplier;  // of Acclaim files
    Preset preset = Preset::Auto;            // likewise
};

// From line `mended` of a text on, counted from 1, lines are those from `original` of the file on,
// up to the next mark.
struct LineMark {
    std::size_t mended = 1;
    std::size_t original = 1;
};

// The text that is handed on in a file's stead: UTF-8, line feeds, one row a frame.
struct MendedText {
    std::string text;
    std::vector<LineMark> lines;  // rising
};

// What a file holds. What cannot be told is nothing or empty.
struct Facts {
    std::size_t joints = 0;  // without end sites; of ASF files the root and the bones
    std::size_t endSites = 0;
    std::size_t channels = 0;
    std::optional<std::size_t> frames;
    std::optional<double> framesPerSecond;
    std::optional<double> seconds;  // a frame lasts until the next one, the last frame too
    // Only for Purpose::Check: in the file's units, after its own factor on lengths.
    std::optional<double> height;
    std::string unit;                 // "metres", "centimetres", "inches", ...: the likely one
    std::string up;                   // "x", "y" or "z": the likely one
    std::vector<std::string> orders;  // of rotations as listed ("ZXY"), each once, as they come up
};

struct FileSurvey {
    std::vector<Finding> findings;     // by line
    std::optional<MendedText> mended;  // none: the plug-in reads the file itself
    Facts facts;

    ZKMOCAP_API bool Has(Severity severity) const;  // a finding of it
};

struct BvhSurvey : FileSurvey {
    // Of exports and summary, where it is not what the text that the plug-in reads states.
    std::optional<double> framesPerSecond;
};

ZKMOCAP_API BvhSurvey SurveyBvh(std::string_view bvh, const Options& options);

struct AcclaimFile {
    std::string_view text;
    std::string name;  // without folder, for messages and for ":name" where it is empty
};

struct AmcSurvey : FileSurvey {
    // Of exports and summary, where it is not what the text that the plug-in reads states.
    std::optional<double> framesPerSecond;
};

struct AcclaimSurvey {
    FileSurvey skeleton;
    std::vector<AmcSurvey> motions;  // side by side with what was given
    // The length that overrides the file's own, where one is to.
    std::optional<double> lengthMultiplier;
    // What the lengths of all texts are multiplied by beyond their unit; exports and summary divide
    // by it. 1 but for bones too short for the plug-in.
    double multiplied = 1.0;
};

// A skeleton with any number of motions, which are looked at together. Import takes at most one.
ZKMOCAP_API AcclaimSurvey SurveyAcclaim(const AcclaimFile& asf, std::span<const AcclaimFile> amcs,
                                        const Options& options);

// A motion whose skeleton is not known.
ZKMOCAP_API AmcSurvey SurveyAmcAlone(const AcclaimFile& amc, const Options& options);

}  // namespace survey
