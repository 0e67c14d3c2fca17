// Reads AMC motions as their authors meant them.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "survey/acclaim_lengths.h"
#include "survey/amc_header.h"
#include "survey/amc_values.h"
#include "survey/finding_list.h"
#include "survey/frame_numbers.h"
#include "survey/survey.h"

namespace survey {

// The values of a channel that may not move.
struct AmcLength {
    std::uint32_t bone = kNoBone;
    AsfNumber first{};
    bool isKnown = false;
    bool moves = false;
};

struct AmcMotion {
    explicit AmcMotion(const AsfSkeleton& skeleton, bool has3Dof) : values(skeleton, has3Dof) {}

    AmcHeader header;
    std::size_t frames = 0;
    FrameNumbers numbers;
    AmcValues values;           // before the first frame
    const char* end = nullptr;  // of the last frame that counts
    std::vector<AmcLength> lengths;
    // The rates of what is written, whole or as stated, and of exports; 0 for none.
    double framesPerSecond = 0.0;  // in force
    int plugInRate = 0;            // what the plug-in reads from the text that it is handed
    // The text is to be written anew.
    bool changed = false;
};

struct AmcSetting {
    const AsfSkeleton& skeleton;
    const Options& options;
    bool isArchive = false;
    // Called for each frame that counts, where it is given.
    std::function<void(const AmcValues&)> onFrame;
};

AmcMotion ReadAmc(const AmcHeader& header, const AmcSetting& setting, FindingList& findings);

// A skeleton whose bones are the rows of the first frame.
AsfSkeleton SkeletonOfMotion(std::string_view text, const AmcHeader& header);

}  // namespace survey
