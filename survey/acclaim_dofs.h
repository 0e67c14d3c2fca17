// Handles degrees of freedom (dofs) that the format has but the plug-in cannot build: translations
// of bones, and some changes of a bone's length.
#pragma once

#include <optional>
#include <span>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_reader.h"
#include "survey/finding_list.h"

namespace survey {

// If the plug-in would fail on the translations of a bone, leaves those of all bones out of the
// mended texts and returns true. To be called again after other dofs are left out.
bool PlanTranslations(AsfSkeleton& skeleton);

// For bone chains, which ignore the size of a bone's direction: where a bone has a length dof, the
// direction becomes a unit vector and its size a factor of the length. If the direction is 0, the
// length dof is left out, which is reported.
void PlanLengthsOfChains(AsfSkeleton& skeleton, FindingList& findings);

// Undoes PlanTranslations.
void RestoreTranslations(AsfSkeleton& skeleton);

// Handles length dofs that are written "l", or that the plug-in cannot build. A length that keeps
// one value in all motions becomes the bone's own, and the dof is left out. Reports an error if a
// changing length would move several children. `chainScale` is given for bone chains and is the
// factor on lengths: there a bone needs a length at rest if its length changes.
void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 std::optional<double> chainScale, FindingList& findings);

}  // namespace survey
