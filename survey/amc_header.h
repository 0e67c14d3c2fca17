// Reads the header of an AMC file: everything before its first frame.
#pragma once

#include <optional>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

struct AmcHeader {
    // Where the first frame's number is; the text's end if there is no frame.
    const char* frames = nullptr;
    bool isMotion = false;         // whether the header has a keyword that only motions have
    std::optional<bool> degrees;   // false for radians; nullopt if no unit is stated
    const char* unitAt = nullptr;  // where the unit is stated; null if it is not stated
    // The rate as the file writes it; empty if the file states no rate above 0.
    std::string_view rateText;
    double rate = 0.0;             // frames per second; only valid if `rateText` is not empty
    const char* rateAt = nullptr;  // where the keyword of the rate is
    bool isRateLate = false;       // whether the rate is stated after :FULLY-SPECIFIED
    bool has3Dof = false;          // whether the header has :FORCE-ALL-JOINTS-BE-3DOF
};

// Whether the word is a whole number, as a frame's number must be. If so, sets `number` to it. If
// not, `number` may have any value afterwards.
bool IsFrameNumber(std::string_view word, double& number);

// Reads the header of the text that `findings` is about. Adds a note if there are unknown keywords,
// and an error if the file is not a motion.
AmcHeader ReadAmcHeader(FindingList& findings);

// Whether the plug-in reads the header as `header` has it. To do so, the plug-in must find the
// first frame at the same position. If `degrees`, it must read angles in degrees; otherwise it must
// read them in radians. Sets `rate` to the whole number of frames per second that the plug-in
// reads, or to 0 if it reads none.
bool PlugInReadsHeader(std::string_view text, const AmcHeader& header, bool degrees, int& rate);

}  // namespace survey
