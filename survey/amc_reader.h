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

// What the motion does with the length of a bone that has a length dof.
struct AmcLength {
    std::uint32_t bone = kNoBone;
    AsfNumber first{};     // the first value in the motion
    bool isKnown = false;  // whether the motion has any value
    bool moves = false;    // whether the motion has different values
};

struct AmcMotion {
    explicit AmcMotion(const AsfSkeleton& skeleton, bool has3Dof) : values(skeleton, has3Dof) {}

    AmcHeader header;
    std::size_t frames = 0;  // number of frames, without an incomplete last one
    FrameNumbers numbers;
    AmcValues values;                // rewound to before the first frame
    const char* end = nullptr;       // where the last of the `frames` frames ends in the text
    std::vector<AmcLength> lengths;  // for each bone with a length dof, sorted by bone
    double framesPerSecond = 0.0;    // the rate that is in effect
    // The rate that the plug-in reads from the text that it gets; 0 if it reads none.
    int plugInRate = 0;
    // Whether the plug-in would misread the file, so that it needs a mended text.
    bool changed = false;
};

struct AmcSetting {
    const AsfSkeleton& skeleton;
    const Options& options;
    bool isArchive = false;  // whether a motion that states no rate has kArchiveRate
    // If this function is set, it is called with the values of each frame that has at least half as
    // many rows as a frame should have. It is not called for an incomplete last frame.
    std::function<void(const AmcValues&)> onFrame;
};

// Reads the frames after `header` in the text that `findings` is about. Reports what is odd about
// them.
AmcMotion ReadAmc(const AmcHeader& header, const AmcSetting& setting, FindingList& findings);

// Builds a skeleton from the motion's first frame. Each row with values becomes a bone that has one
// dof for each value.
AsfSkeleton SkeletonOfMotion(std::string_view text, const AmcHeader& header);

}  // namespace survey
