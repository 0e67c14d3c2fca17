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

// Whether the length of a bone that has a length dof really changes.
struct AmcLength {
    std::uint32_t bone = kNoBone;
    AsfNumber first{};     // its first value in the motion
    bool isKnown = false;  // there is a value
    bool moves = false;    // there are different values
};

struct AmcMotion {
    explicit AmcMotion(const AsfSkeleton& skeleton, bool has3Dof) : values(skeleton, has3Dof) {}

    AmcHeader header;
    std::size_t frames = 0;
    FrameNumbers numbers;
    AmcValues values;                // rewound to before the first frame
    const char* end = nullptr;       // where the last frame that counts ends
    std::vector<AmcLength> lengths;  // sorted by bone
    double framesPerSecond = 0.0;    // the rate that is in effect
    int plugInRate = 0;              // the rate that the plug-in reads from its text; 0 for none
    // The plug-in needs a mended text, since it would misread the file.
    bool changed = false;
};

struct AmcSetting {
    const AsfSkeleton& skeleton;
    const Options& options;
    bool isArchive = false;  // a motion that states no rate has the archive's
    // If given, called for frames that count and have rows for at least half of the bones.
    std::function<void(const AmcValues&)> onFrame;
};

// Reads the frames of `findings`' text after its header, and reports what is odd about them.
AmcMotion ReadAmc(const AmcHeader& header, const AmcSetting& setting, FindingList& findings);

// Builds a skeleton from the first frame: a bone for each row with values, with as many dofs.
AsfSkeleton SkeletonOfMotion(std::string_view text, const AmcHeader& header);

}  // namespace survey
