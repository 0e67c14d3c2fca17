// Lengths of Acclaim skeletons: the factor on them, bones that are too short, directions.
#pragma once

#include <optional>
#include <string_view>

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"
#include "survey/survey.h"

namespace survey {

struct LengthSettings {
    // On bones and root translations, in force: the unit's, the archive's or the user's.
    double factor = 1.0;
    // What the plug-in is to be told; none: nothing.
    std::optional<double> multiplier;
    double multiplied = 1.0;  // the part of `multiplier` that is undone afterwards
    bool isArchive = false;   // a motion without a rate has the archive's
};

constexpr double kArchiveRate = 120.0;
// The plug-in gives a shorter bone no length.
constexpr double kShortestBone = 0.01;

// Settles the factor, and tells of preset, unit and bones that are too short.
LengthSettings SettleLengths(AsfSkeleton& skeleton, const Options& options, FindingList& findings);

// Makes directions unit vectors where they are not, and tells of it.
void MendDirections(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
