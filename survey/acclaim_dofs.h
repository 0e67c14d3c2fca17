// Handles degrees of freedom (dofs) that an Acclaim file may have but that the plug-in cannot
// build. These are translations of bones, and some changes of a bone's length.
#pragma once

#include <optional>
#include <span>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_reader.h"
#include "survey/finding_list.h"

namespace survey {

// Checks whether the plug-in would fail because a bone other than the root has translations. If so,
// marks the translations of all these bones as left out of the mended texts, and returns true. Must
// be called again whenever other dofs have been left out.
bool PlanTranslations(AsfSkeleton& skeleton);

// To be called if the skeleton is built as bone chains, which ignore how long the vector of a
// bone's direction is. If a bone has a length dof, its direction becomes a unit vector, and its
// length is multiplied by the vector's old length. If the direction is 0, the length dof is left
// out and that is reported.
void PlanLengthsOfChains(AsfSkeleton& skeleton, FindingList& findings);

// Undoes PlanTranslations: no translation is left out any more.
void RestoreTranslations(AsfSkeleton& skeleton);

// Handles length dofs that are written "l", or that the plug-in cannot build. If such a length
// keeps one value in all motions, the value becomes the bone's length and the dof is left out.
// Reports an error if a changing length would move several children. `chainScale` is nullopt unless
// the skeleton is built as bone chains; then it is the factor on lengths. In a bone chain, a bone
// whose length changes needs a length at rest.
void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 std::optional<double> chainScale, FindingList& findings);

}  // namespace survey
