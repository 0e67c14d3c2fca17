// Lengths of Acclaim skeletons: their factor, bones that are too short, and directions.
#pragma once

#include <optional>
#include <string_view>

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"
#include "survey/survey.h"

namespace survey {

struct LengthSettings {
    // The factor on bones and root translations: the user's, the archive's or that of :units.
    double factor = 1.0;
    // The multiplier that the plug-in gets; if nullopt, it uses the file's own.
    std::optional<double> multiplier;
    double multiplied = 1.0;  // the part of `multiplier` that exports undo
    bool isArchive = false;   // a motion that states no rate has kArchiveRate
};

constexpr double kArchiveRate = 120.0;  // frames per second
// The plug-in builds shorter bones without a length.
constexpr double kShortestBone = 0.01;

// Decides the factor, and reports preset, unit and bones that are too short.
LengthSettings DecideLengths(AsfSkeleton& skeleton, const Options& options, FindingList& findings);

// Makes directions of bones with a length unit vectors, and reports those that were not.
void MendDirections(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
