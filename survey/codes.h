// The codes of all findings. A code never changes its meaning; docs/findings.md explains each.
#pragma once

#include <span>
#include <string_view>

namespace survey::codes {

// Codes for files of any format.
inline constexpr std::string_view kByteOrderMark = "byte-order-mark";
inline constexpr std::string_view kTextEncoding = "text-encoding";
inline constexpr std::string_view kEmpty = "empty";
inline constexpr std::string_view kUnreadable = "unreadable";
inline constexpr std::string_view kNumberBad = "number-bad";
inline constexpr std::string_view kNumberGlued = "number-glued";
inline constexpr std::string_view kNumberComma = "number-comma";
inline constexpr std::string_view kNumberNotFinite = "number-not-finite";
inline constexpr std::string_view kMotionEmpty = "motion-empty";
inline constexpr std::string_view kFigureSize = "figure-size";

// Codes for BVH files.
inline constexpr std::string_view kRotationOrder = "rotation-order";
inline constexpr std::string_view kEndSiteText = "end-site-text";
inline constexpr std::string_view kBraceGlued = "brace-glued";
inline constexpr std::string_view kNameBlank = "name-blank";
inline constexpr std::string_view kNameMissing = "name-missing";
inline constexpr std::string_view kNameDuplicate = "name-duplicate";
inline constexpr std::string_view kHierarchyWord = "hierarchy-word";
inline constexpr std::string_view kOffsetMissing = "offset-missing";
inline constexpr std::string_view kChannelsMissing = "channels-missing";
inline constexpr std::string_view kChannelsBad = "channels-bad";
inline constexpr std::string_view kBracesOpen = "braces-open";
inline constexpr std::string_view kHierarchyCut = "hierarchy-cut";
inline constexpr std::string_view kMotionKeyword = "motion-keyword";
inline constexpr std::string_view kFramesMissing = "frames-missing";
inline constexpr std::string_view kFramesFewer = "frames-fewer";
inline constexpr std::string_view kFramesMore = "frames-more";
inline constexpr std::string_view kRowCut = "row-cut";
inline constexpr std::string_view kRowLength = "row-length";
inline constexpr std::string_view kFrameTimeMissing = "frame-time-missing";
inline constexpr std::string_view kFrameTimeOdd = "frame-time-odd";
inline constexpr std::string_view kEndSiteMissing = "end-site-missing";
inline constexpr std::string_view kPositionConstant = "position-constant";
inline constexpr std::string_view kPositionMoving = "position-moving";
inline constexpr std::string_view kPositionRelative = "position-relative";
inline constexpr std::string_view kMotionMissing = "motion-missing";
inline constexpr std::string_view kSurplusText = "surplus-text";
inline constexpr std::string_view kNotBvh = "not-bvh";

// Codes for ASF and AMC files.
inline constexpr std::string_view kPresetCmu = "preset-cmu";
inline constexpr std::string_view kRateMissing = "rate-missing";
inline constexpr std::string_view kRateText = "rate-text";
inline constexpr std::string_view kLengthUnit = "length-unit";
inline constexpr std::string_view kBoneShort = "bone-short";
inline constexpr std::string_view kRowOrder = "row-order";
inline constexpr std::string_view kBoneUnknown = "bone-unknown";
inline constexpr std::string_view kBoneWithoutDof = "bone-without-dof";
inline constexpr std::string_view kBoneMissing = "bone-missing";
inline constexpr std::string_view kValuesFewer = "values-fewer";
inline constexpr std::string_view kValuesMore = "values-more";
inline constexpr std::string_view kFrameCut = "frame-cut";
inline constexpr std::string_view kFrameNumber = "frame-number";
inline constexpr std::string_view kHierarchyOrder = "hierarchy-order";
inline constexpr std::string_view kHierarchyCycle = "hierarchy-cycle";
inline constexpr std::string_view kHierarchyUnknown = "hierarchy-unknown";
inline constexpr std::string_view kBoneDuplicate = "bone-duplicate";
inline constexpr std::string_view kBoneUnattached = "bone-unattached";
inline constexpr std::string_view kDofLength = "dof-length";
inline constexpr std::string_view kDofTranslation = "dof-translation";
inline constexpr std::string_view kDocumentationColon = "documentation-colon";
inline constexpr std::string_view kAngleUnits = "angle-units";
inline constexpr std::string_view kAxisOrder = "axis-order";
inline constexpr std::string_view kDirectionLength = "direction-length";
inline constexpr std::string_view kUnitsText = "units-text";
inline constexpr std::string_view kNameEmpty = "name-empty";
inline constexpr std::string_view kKeywordUnknown = "keyword-unknown";
inline constexpr std::string_view kPairMismatch = "pair-mismatch";
inline constexpr std::string_view kLimitsExceeded = "limits-exceeded";
inline constexpr std::string_view kNotAsf = "not-asf";
inline constexpr std::string_view kNotAmc = "not-amc";

// All codes, in the order above.
std::span<const std::string_view> All();

}  // namespace survey::codes
