// Degrees of freedom that only the format has, or that the plug-in cannot build.
#pragma once

#include <optional>
#include <span>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_reader.h"
#include "survey/finding_list.h"

namespace survey {

// Leaves bones' translations out of canonical texts where the plug-in would not read the rest;
// whether it would not. To be called again once other degrees of freedom are left out.
bool PlanTranslations(AsfSkeleton& skeleton);

// Bone chains lengthen by the length alone, whatever the direction's size is. Where a bone's length
// moves, the size becomes part of it; without a direction the length is left out, and that is told.
void PlanLengthsOfChains(AsfSkeleton& skeleton, FindingList& findings);

// Takes that back, where it would lose nothing and so was not told.
void KeepTranslations(AsfSkeleton& skeleton);

// A length that keeps one value in all motions becomes the bone's. One that moves several children
// is an error. `chainScale` is given for bone chains, and is what lengths are multiplied by: a bone
// that has no length at rest cannot move there.
void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 std::optional<double> chainScale, FindingList& findings);

}  // namespace survey
