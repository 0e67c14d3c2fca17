// What an AMC file states before its first frame.
#pragma once

#include <optional>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

struct AmcHeader {
    // The first frame's number; the text's end where there is none.
    const char* frames = nullptr;
    bool isMotion = false;  // a keyword of the format was there
    std::optional<bool> degrees;
    const char* unitAt = nullptr;
    std::string_view rateText;  // empty: no rate that is a number above 0
    double rate = 0.0;
    const char* rateAt = nullptr;
    bool isRateLate = false;  // it follows :FULLY-SPECIFIED
    bool has3Dof = false;     // :FORCE-ALL-JOINTS-BE-3DOF
};

// Whether the word is a frame's number; `number` is it.
bool IsFrameNumber(std::string_view word, double& number);

// Adds a note for unknown keywords, and an error where the file is not a motion.
AmcHeader ReadAmcHeader(FindingList& findings);

// Whether the plug-in, with a skeleton in that unit, finds the first frame there too. `rate` is the
// whole rate that it reads; 0 where it reads none.
bool PlugInReadsHeader(std::string_view text, const AmcHeader& header, bool degrees, int& rate);

}  // namespace survey
