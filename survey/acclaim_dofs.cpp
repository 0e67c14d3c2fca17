#include "survey/acclaim_dofs.h"

#include <algorithm>
#include <cmath>

#include "survey/acclaim_lengths.h"
#include "survey/codes.h"

namespace survey {
namespace {

// A direction whose Euclidean length differs from 1 by at most this counts as a unit vector.
constexpr double kUnitTolerance = 1e-9;

bool HasTranslation(const AsfBone& bone) {
    return std::any_of(bone.dof.begin(), bone.dof.end(), IsTranslation);
}

// Whether the plug-in fails if the skeleton lists this bone's translations. The plug-in ignores
// their values, but it fails in two cases. First, if all written dofs of the bone are translations,
// it expects no row for the bone. Second, if the parent's length changes, it needs free channels of
// the bone to store positions. The ignored dofs occupy channels, so too few may be free.
bool PlugInFailsOn(const AsfSkeleton& skeleton, const AsfBone& bone) {
    if (!HasTranslation(bone)) return false;
    if (std::all_of(bone.dof.begin(), bone.dof.end(),
                    [&](Dof dof) { return IsTranslation(dof) || bone.IsLeftOut(dof); }))
        return true;
    if (bone.parent == kNoBone) return false;
    const AsfBone& parent = skeleton.bones[bone.parent];
    return parent.Has(Dof::Length) && !parent.IsLeftOut(Dof::Length);
}

// Combines the records that the motions have of the bone's length. The result has the first known
// value, and `moves` is true if the values of the motions differ.
AmcLength CombinedLength(std::uint32_t bone, std::span<AmcMotion* const> motions) {
    AmcLength all{bone, {}, false, false};
    for (const AmcMotion* motion : motions) {
        // The lengths are sorted by bone.
        const auto length =
            std::lower_bound(motion->lengths.begin(), motion->lengths.end(), bone,
                             [](const AmcLength& l, std::uint32_t b) { return l.bone < b; });
        if (length == motion->lengths.end() || length->bone != bone || !length->isKnown) continue;
        if (length->moves || (all.isKnown && all.first.value != length->first.value))
            all.moves = true;
        if (!all.isKnown) all.first = length->first;
        all.isKnown = true;
    }
    return all;
}

void MoveSizeToLength(AsfBone& bone, double size) {
    bone.lengthScale = size;
    bone.length = {bone.length.value * size, {}};
    for (AsfNumber& number : bone.direction)
        number = {number.value / size, {}};
    for (std::size_t i = 0; i < bone.dof.size() && !bone.limits.empty(); ++i)
        for (std::size_t k = 2 * i; bone.dof[i] == Dof::Length && k < 2 * i + 2; ++k)
            if (std::isfinite(bone.limits[k].value))
                bone.limits[k] = {bone.limits[k].value * size, {}};
}

// Reports what happens to the bone's length. If the dof is written "l", the reader has already
// reported it. In that case the finding only gets a new message.
void ReportLength(const AsfBone& bone, const std::string& what, FindingList& findings) {
    const std::string message = "the length of \"" + bone.name + "\" " + what;
    Finding* const known = findings.Find(codes::kDofLength);
    if (!known) {
        findings.Add({codes::kDofLength, Severity::Note, bone.dofAt, message, bone.name, true});
        return;
    }
    known->mended = true;
    known->count += bone.hasLetterLength ? 0 : 1;
    if (known->joint == bone.name && known->severity == Severity::Note) known->message = message;
}

void Refuse(const AsfBone& bone, const std::string& what, FindingList& findings) {
    if (!findings.AddAgain(codes::kDofLength, Severity::Error))
        findings.Add({codes::kDofLength, Severity::Error, bone.dofAt,
                      "the length of \"" + bone.name + "\" moves, " + what, bone.name});
}

// Converts a length in the motion's file to the length that the mended motion gets.
AsfNumber InWrittenUnits(const AsfBone& bone, const AsfNumber& value) {
    return bone.lengthScale != 1.0 ? AsfNumber{value.value * bone.lengthScale, {}} : value;
}

// Whether a bone chain has exactly one bone for `bone`. Only then can its length change. `scale` is
// the factor on lengths.
bool BuildsOneBone(const AsfBone& bone, double scale) {
    return bone.length.value * scale >= kShortestBone && bone.children.size() <= 1;
}

// Handles a bone whose length changes, but whose length at rest is too short for a bone chain. If
// the bone has no children, its length dof is left out. Otherwise `first`, the length in the first
// frame, becomes the length at rest. If `first` is too short as well, reports an error.
void SetRestLength(AsfBone& bone, const AsfNumber& first, double scale, FindingList& findings) {
    if (bone.children.empty()) {
        bone.LeaveOut(Dof::Length);
        ReportLength(bone, "moves nothing, since the bone has none at rest; it is left out",
                     findings);
    } else if (InWrittenUnits(bone, first).value * scale >= kShortestBone) {
        bone.length = InWrittenUnits(bone, first);
        ReportLength(bone, "moves and is nothing at rest; there it is that of the first frame",
                     findings);
    } else {
        Refuse(bone,
               "but is nothing at rest and in the first frame, where bones need one; --nulls does "
               "without",
               findings);
    }
}

}  // namespace

bool PlanTranslations(AsfSkeleton& skeleton) {
    const bool fails =
        std::any_of(skeleton.bones.begin() + 1, skeleton.bones.end(),
                    [&](const AsfBone& bone) { return PlugInFailsOn(skeleton, bone); });
    if (!fails) return false;
    skeleton.changed = true;
    for (std::size_t bone = 1; bone < skeleton.bones.size(); ++bone)
        for (const Dof dof : skeleton.bones[bone].dof)
            if (IsTranslation(dof)) skeleton.bones[bone].LeaveOut(dof);
    return true;
}

void PlanLengthsOfChains(AsfSkeleton& skeleton, FindingList& findings) {
    for (std::size_t index = 1; index < skeleton.bones.size(); ++index) {
        AsfBone& bone = skeleton.bones[index];
        const double size =
            std::hypot(bone.direction[0].value, bone.direction[1].value, bone.direction[2].value);
        if (!bone.Has(Dof::Length) || std::fabs(size - 1.0) <= kUnitTolerance) continue;
        skeleton.changed = true;
        if (size > 0.0 && std::isfinite(size)) {
            MoveSizeToLength(bone, size);
            continue;
        }
        bone.LeaveOut(Dof::Length);
        findings.Add({codes::kDofLength, Severity::Note, bone.dofAt,
                      "the length of \"" + bone.name +
                          "\" moves nothing, since the bone has no direction; it is left out",
                      bone.name, true});
    }
}

void RestoreTranslations(AsfSkeleton& skeleton) {
    for (AsfBone& bone : skeleton.bones)
        for (const Dof dof : bone.dof)
            if (IsTranslation(dof)) bone.Keep(dof);
}

void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 std::optional<double> chainScale, FindingList& findings) {
    const bool hasFrames = std::any_of(motions.begin(), motions.end(),
                                       [](const AmcMotion* motion) { return motion->frames > 0; });
    for (std::uint32_t index = 1; index < skeleton.bones.size() && !motions.empty(); ++index) {
        AsfBone& bone = skeleton.bones[index];
        if (!bone.Has(Dof::Length) || bone.IsLeftOut(Dof::Length)) continue;
        const AmcLength length = CombinedLength(index, motions);
        const bool isShared = hasFrames && bone.children.size() > 1;
        const bool isBuilt = !chainScale || BuildsOneBone(bone, *chainScale);
        if (isBuilt && !isShared && (length.moves || !bone.hasLetterLength || !length.isKnown))
            continue;
        skeleton.changed = true;
        if (length.moves && isShared) {
            Refuse(bone,
                   "and the bone has " + std::to_string(bone.children.size()) +
                       " children; only one could be moved with it",
                   findings);
        } else if (length.moves) {
            SetRestLength(bone, length.first, *chainScale, findings);
        } else if (length.isKnown) {
            bone.length = InWrittenUnits(bone, length.first);
            bone.LeaveOut(Dof::Length);
            ReportLength(bone, "keeps one value, which becomes the bone's length", findings);
        } else {
            bone.LeaveOut(Dof::Length);
            ReportLength(bone, "has no values in the motion; the bone's length is kept", findings);
        }
    }
}

}  // namespace survey
