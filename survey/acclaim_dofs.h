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
// marks the translations of all bones except the root as left out of the mended texts, and returns
// true. Whenever further dofs have been left out, this function must be called again.
bool PlanTranslations(AsfSkeleton& skeleton);

// To be called if the skeleton is built as bone chains, because these treat each direction as a
// unit vector. Handles bones with a length dof. The direction of such a bone is made a unit vector,
// and the bone's length is multiplied by the Euclidean length that the direction had. If the
// direction is 0 or not finite, the length dof is left out and that is reported.
void PlanLengthsOfChains(AsfSkeleton& skeleton, FindingList& findings);

// Undoes PlanTranslations: no translation is left out any more.
void RestoreTranslations(AsfSkeleton& skeleton);

// Handles length dofs that are written "l", or that the plug-in cannot build. If such a dof keeps
// one value in all motions, the value becomes the bone's length and the dof is left out. If its
// value changes and the bone has several children, an error is reported. `chainScale` is the factor
// on lengths if the skeleton is built as bone chains; otherwise it is nullopt. In a bone chain, a
// bone whose length changes needs a length at rest.
void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 std::optional<double> chainScale, FindingList& findings);

}  // namespace survey
