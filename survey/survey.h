// Examines capture files before they are imported. Reports what is odd about them and what they
// hold. If the plug-in would misread a file, returns a mended text, which the plug-in reads as the
// author of the file meant it.
//
// In memory every text must be followed by a readable byte that is not part of a number (a NUL, as
// in std::string). A text is only read during the call and, if it is mended, when the mended text
// is written. The functions open no files and need no host. A call may use other threads while it
// runs; the environment variable ZKMOCAP_THREADS says how many. The results are the same for any
// number. Unless a comment says otherwise, the functions throw only std::bad_alloc, when memory
// runs out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "survey/outline.h"
#include "text/api.h"
#include "text/byte_sink.h"

namespace survey {

// What the survey is for.
enum class Purpose : std::uint8_t {
    // The survey returns findings and all facts, also those for which it has to compute poses. It
    // returns no mended text.
    Check,
    // The survey returns findings, facts and a mended text for the plug-in. If the plug-in departs
    // from the format's definition, the text follows the plug-in. A survey of that text may
    // therefore report it as odd.
    Import,
    // The survey returns findings, facts and a mended text for every reader, in the file's units
    // and at its rate. A survey of that text finds nothing to mend. There is no mended text if the
    // file has nothing to mend.
    Fix,
};

// Decides the unit of length and the rate of Acclaim files. "The archive" is a large archive whose
// skeletons state the length 0.45 and whose motions state no rate. Its lengths are inches times
// 0.45, and its rate is 120 frames per second.
enum class Preset : std::uint8_t {
    Auto,  // Cmu if the skeleton states the length 0.45; None if it does not
    Cmu,   // the archive's unit; for motions that state no rate, also the archive's rate
    None,  // the unit and the rate that the files state
};

struct Options {
    Purpose purpose = Purpose::Check;
    bool bones = false;  // only for Purpose::Import: the skeleton is built as bone chains
    // The encoding, as iconv names it, of files that are not Unicode. If it is empty, names that
    // are not UTF-8 are read as Windows-1252.
    std::string encoding;
    // The user's rate and the user's factor on lengths. If one is given, it is used instead of that
    // in the file. The mended text for Purpose::Fix keeps what the file states.
    std::optional<double> framesPerSecond;
    std::optional<double> lengthMultiplier;  // for Acclaim files only
    Preset preset = Preset::Auto;            // for Acclaim files only
};

// Says that line `mended` of a mended text comes from line `original` of the file. Up to the next
// mark, each further line comes from the file's next line. Lines count from 1.
struct LineMark {
    std::size_t mended = 1;
    std::size_t original = 1;
};

// The text that a reader gets instead of the file. Its lines end with line feeds. Each frame of a
// BVH motion is one line. A long text is made while it is written, so that it need not be in
// memory. The text that was surveyed must exist until then.
class ZKMOCAP_API MendedText {
  public:
    MendedText() = default;
    virtual ~MendedText() = default;
    MendedText(const MendedText&) = delete;
    MendedText& operator=(const MendedText&) = delete;

    // About how many bytes the text has. It seldom has more.
    virtual std::uint64_t LikelyBytes() const = 0;
    // Writes the text. Returns the marks in the order of the text. May be called again, and then
    // does the same. Also throws what `out` throws.
    virtual std::vector<LineMark> Write(text::ByteSink& out) const = 0;
    // Returns the text that Write writes.
    std::string Text() const;
};

// Facts about the contents of a file. A fact that is not known is nullopt or empty.
// In the facts about a BVH file, `joints`, `endSites`, `channels` and `orders` are about all
// sections of the file. The other facts are about its first section.
struct Facts {
    // Does not count end sites. For ASF files, counts the root and the bones. For AMC files, counts
    // only those that have channels.
    std::size_t joints = 0;
    std::size_t endSites = 0;
    std::size_t channels = 0;
    std::optional<std::size_t> frames;
    std::optional<double> framesPerSecond;
    // The rate that the file states, whatever rate the user gave. Nullopt if it states none.
    std::optional<double> statedRate;
    std::optional<double> seconds;  // the duration, which includes that of the last frame
    // The height of the figure in the file's unit. For Acclaim files it is multiplied by the factor
    // on lengths that the survey uses. `height`, `unit` and `up` are only known for Purpose::Check.
    std::optional<double> height;
    std::string unit;  // the unit that the height suggests: "metres", "centimetres", "inches", ...
    std::string up;    // the axis that likely points up: "x", "y" or "z"
    // The orders in which joints list their rotations, such as "ZXY". Each order occurs once, in
    // the order of the file.
    std::vector<std::string> orders;
};

struct FileSurvey {
    std::vector<Finding> findings;  // sorted by line and column
    // The text to be read instead of the file. Null if the file itself can be read, if the file is
    // refused, and for Purpose::Check.
    std::shared_ptr<const MendedText> mended;
    Facts facts;

    ZKMOCAP_API bool Has(Severity severity) const;  // whether there is a finding of this severity
};

struct BvhSurvey : FileSurvey {
    // The rate that exports and the summary use instead of the rate that the plug-in reads. This is
    // the user's rate. Nullopt if the user gave none, and for any purpose except Purpose::Import.
    std::optional<double> framesPerSecond;
    // One for each section, in the file's order. An end site that the mended text adds is not in
    // it. Empty if the file could not be read.
    std::vector<Outline> outlines;
};

ZKMOCAP_API BvhSurvey SurveyBvh(std::string_view bvh, const Options& options);

struct AcclaimFile {
    std::string_view text;
    // The file's name without its folder. It is used in messages, and for a skeleton whose ":name"
    // is empty.
    std::string name;
};

struct AmcSurvey : FileSurvey {
    // The rate that exports and the summary use instead of the rate that the plug-in reads. Nullopt
    // if the plug-in reads the right rate.
    std::optional<double> framesPerSecond;
};

struct AcclaimSurvey {
    FileSurvey skeleton;
    std::vector<AmcSurvey> motions;  // one for each motion that was given, in the same order
    // The factor on all lengths that the plug-in must use instead of the file's. Nullopt if the
    // plug-in can use the file's factor.
    std::optional<double> lengthMultiplier;
    // If a bone would be too short for the plug-in, `lengthMultiplier` includes this extra factor,
    // and exports and the summary divide by it. Otherwise it is 1.
    double multiplied = 1.0;
    Outline outline;  // empty if the skeleton could not be read
};

// Surveys a skeleton together with its motions. For Purpose::Import there must be at most one
// motion.
ZKMOCAP_API AcclaimSurvey SurveyAcclaim(const AcclaimFile& asf, std::span<const AcclaimFile> amcs,
                                        const Options& options);

// Surveys a motion whose skeleton is not known.
ZKMOCAP_API AmcSurvey SurveyAmcAlone(const AcclaimFile& amc, const Options& options);

}  // namespace survey
