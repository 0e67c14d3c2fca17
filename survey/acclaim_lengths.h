// Decides the factor on the lengths of an Acclaim skeleton. Handles bones that are too short, and
// directions that are not unit vectors.
#pragma once

#include <optional>
#include <string_view>

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"
#include "survey/survey.h"

namespace survey {

struct LengthSettings {
    // The factor on bones and root translations. It comes from the user, from the archive's preset,
    // or from :units.
    double factor = 1.0;
    // The multiplier that is passed to the plug-in. If it is nullopt, the plug-in uses the factor
    // in the file.
    std::optional<double> multiplier;
    // A power of ten: `multiplier` is `factor` times this power. Exports divide by it again. It is
    // 1 if no bone is too short.
    double multiplied = 1.0;
    bool isArchive = false;  // whether a motion that states no rate has kArchiveRate
};

constexpr double kArchiveRate = 120.0;  // frames per second
// The plug-in treats a bone as having no length if the length, after multiplication, is below this.
constexpr double kShortestBone = 0.01;

// Decides the length settings. Reports if the archive's preset or a unit of length is used, and if
// a bone is too short.
LengthSettings DecideLengths(AsfSkeleton& skeleton, const Options& options, FindingList& findings);

// If a bone has a length and its direction is not a unit vector, makes the direction one and
// reports that. A direction that is 0 or not finite is reported, but not changed.
void MendDirections(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
