#include "survey/acclaim_dofs.h"

#include <algorithm>

#include "survey/codes.h"

namespace survey {
namespace {

bool HasTranslation(const AsfBone& bone) {
    return std::any_of(bone.dof.begin(), bone.dof.end(), IsTranslation);
}

// The plug-in counts bones by what it keeps of them, and needs room for a position where the
// parent's length moves.
bool HindersPlugIn(const AsfSkeleton& skeleton, const AsfBone& bone) {
    if (!HasTranslation(bone)) return false;
    if (std::all_of(bone.dof.begin(), bone.dof.end(), IsTranslation)) return true;
    return bone.parent != kNoBone && skeleton.bones[bone.parent].Has(Dof::Length);
}

// What all motions have for the bone's length.
AmcLength Together(std::uint32_t bone, std::span<AmcMotion* const> motions) {
    AmcLength all{bone, {}, false, false};
    for (const AmcMotion* motion : motions) {
        for (const AmcLength& length : motion->lengths) {
            if (length.bone != bone || !length.isKnown) continue;
            if (length.moves || (all.isKnown && all.first.value != length.first.value))
                all.moves = true;
            if (!all.isKnown) all.first = length.first;
            all.isKnown = true;
        }
    }
    return all;
}

}  // namespace

void PlanTranslations(AsfSkeleton& skeleton) {
    const bool hinders =
        std::any_of(skeleton.bones.begin() + 1, skeleton.bones.end(),
                    [&](const AsfBone& bone) { return HindersPlugIn(skeleton, bone); });
    if (!hinders) return;
    skeleton.changed = true;
    for (std::size_t bone = 1; bone < skeleton.bones.size(); ++bone)
        for (const Dof dof : skeleton.bones[bone].dof)
            if (IsTranslation(dof)) skeleton.bones[bone].LeaveOut(dof);
}

void TellTranslations(const AsfSkeleton& skeleton, bool told, FindingList& findings) {
    for (std::size_t index = 1; index < skeleton.bones.size() && !told; ++index) {
        const AsfBone& bone = skeleton.bones[index];
        if (!HasTranslation(bone) || findings.AddAgain(codes::kDofTranslation, Severity::Note))
            continue;
        findings.Add({codes::kDofTranslation, Severity::Note, bone.dofAt,
                      "\"" + bone.name +
                          "\" may be moved, but a bone begins where its parent ends; its "
                          "translations are left out",
                      bone.name, bone.leftOut != 0});
    }
}

void FoldLengths(AsfSkeleton& skeleton, std::span<AmcMotion* const> motions,
                 FindingList& findings) {
    for (std::uint32_t index = 1; index < skeleton.bones.size(); ++index) {
        AsfBone& bone = skeleton.bones[index];
        if (!bone.Has(Dof::Length)) continue;
        const AmcLength length = Together(index, motions);
        if (!length.isKnown) continue;
        const bool isShared = bone.children.size() > 1;
        if (length.moves && isShared) {
            if (!findings.AddAgain(codes::kDofLength, Severity::Error))
                findings.Add({codes::kDofLength, Severity::Error, bone.dofAt,
                              "the length of \"" + bone.name + "\" moves, and the bone has " +
                                  std::to_string(bone.children.size()) +
                                  " children; only one could be moved with it",
                              bone.name});
            continue;
        }
        if (length.moves || (!bone.hasLetterLength && !isShared)) continue;
        bone.length = length.first;
        bone.LeaveOut(Dof::Length);
        skeleton.changed = true;
        if (!findings.AddAgain(codes::kDofLength, Severity::Note))
            findings.Add({codes::kDofLength, Severity::Note, bone.dofAt,
                          "the length of \"" + bone.name +
                              "\" keeps one value, which becomes the bone's length",
                          bone.name, true});
        else if (!bone.hasLetterLength)
            findings.Find(codes::kDofLength)->mended = true;
    }
}

}  // namespace survey
