#include "survey/codes.h"

namespace survey::codes {
namespace {

constexpr std::string_view kAll[] = {
    kByteOrderMark,    kTextEncoding,       kEmpty,           kUnreadable,
    kNumberBad,        kNumberGlued,        kNumberComma,     kNumberNotFinite,
    kMotionEmpty,      kFigureSize,         kRotationOrder,   kEndSiteText,
    kBraceGlued,       kNameBlank,          kNameMissing,     kNameDuplicate,
    kHierarchyWord,    kOffsetMissing,      kChannelsMissing, kChannelsBad,
    kBracesOpen,       kHierarchyCut,       kMotionKeyword,   kFramesMissing,
    kFramesFewer,      kFramesMore,         kRowCut,          kRowLength,
    kFrameTimeMissing, kFrameTimeOdd,       kEndSiteMissing,  kPositionConstant,
    kPositionMoving,   kPositionRelative,   kMotionMissing,   kSurplusText,
    kNotBvh,           kPresetCmu,          kRateMissing,     kRateText,
    kLengthUnit,       kBoneShort,          kRowOrder,        kBoneUnknown,
    kBoneWithoutDof,   kBoneMissing,        kValuesFewer,     kValuesMore,
    kFrameCut,         kFrameNumber,        kHierarchyOrder,  kHierarchyCycle,
    kHierarchyUnknown, kBoneDuplicate,      kBoneUnattached,  kDofLength,
    kDofTranslation,   kDocumentationColon, kAngleUnits,      kAxisOrder,
    kDirectionLength,  kUnitsText,          kNameEmpty,       kKeywordUnknown,
    kPairMismatch,     kLimitsExceeded,     kNotAsf,          kNotAmc,
};

}  // namespace

std::span<const std::string_view> All() {
    return kAll;
}

}  // namespace survey::codes
