// Reads what an AMC file states before its first frame.
#pragma once

#include <optional>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

struct AmcHeader {
    // Where the first frame's number is; the text's end if there is no frame.
    const char* frames = nullptr;
    bool isMotion = false;         // there is a keyword of the format
    std::optional<bool> degrees;   // false for radians; nullopt if no unit is stated
    const char* unitAt = nullptr;  // where the unit is stated
    std::string_view rateText;     // empty if no rate is stated that is a number above 0
    double rate = 0.0;             // frames per second
    const char* rateAt = nullptr;
    bool isRateLate = false;  // it follows :FULLY-SPECIFIED
    bool has3Dof = false;     // :FORCE-ALL-JOINTS-BE-3DOF
};

// Whether the word can be a frame's number, which is a whole number; then sets `number`. Otherwise
// `number` may change too.
bool IsFrameNumber(std::string_view word, double& number);

// Reads the header of `findings`' text. Adds a note for unknown keywords, and an error if the file
// is not a motion.
AmcHeader ReadAmcHeader(FindingList& findings);

// Whether the plug-in reads the same unit, `degrees` or else radians, and finds the first frame at
// the same position. Sets `rate` to the whole rate that it reads, or to 0 if it reads none.
bool PlugInReadsHeader(std::string_view text, const AmcHeader& header, bool degrees, int& rate);

}  // namespace survey
