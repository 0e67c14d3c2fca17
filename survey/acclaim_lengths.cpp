#include "survey/acclaim_lengths.h"

#include <algorithm>
#include <cmath>

#include "survey/codes.h"
#include "text/number_text.h"

namespace survey {
namespace {

// The length in :units of all files of the archive that Preset::Cmu is for.
constexpr double kArchiveLength = 0.45;
// The factor that converts the lengths in these files to metres.
constexpr double kArchiveMultiplier = 0.056444;
// A bone counts as having no length if it is at most this part of the longest bone's length.
constexpr double kNoLength = 1e-9;
// The largest exponent whose power of ten a double holds exactly.
constexpr int kLargestPower = 22;
// The Euclidean length of a direction should be 1 and may differ from 1 by this much.
constexpr double kDirectionTolerance = 0.02;

void ReportPreset(const AsfSkeleton& skeleton, const Options& options, FindingList& findings) {
    const std::string length =
        options.lengthMultiplier
            ? "lengths are multiplied by " + text::NumberText(*options.lengthMultiplier) +
                  " as it was asked for"
            : std::string("its lengths are read as multiplied by 0.056444, which makes metres");
    findings.Add({codes::kPresetCmu, Severity::Note, skeleton.lengthAt,
                  "a length of 0.45 is that of the archive's files: " + length +
                      ", and a motion without a rate has 120 frames a second; --preset none reads "
                      "the file as it is"});
}

// Returns the factor on lengths, and sets `settings.isArchive`. Reports if the archive's preset is
// used and the file's :units fit the archive. If the factor is read from the file, reports it
// unless it is 1.
double DecideFactor(const AsfSkeleton& skeleton, const Options& options, LengthSettings& settings,
                    FindingList& findings) {
    const double stated = skeleton.length.value;
    const bool looksLikeArchive = stated == kArchiveLength;
    settings.isArchive =
        options.preset == Preset::Cmu || (options.preset == Preset::Auto && looksLikeArchive);
    if (settings.isArchive && looksLikeArchive) ReportPreset(skeleton, options, findings);
    if (options.lengthMultiplier) return *options.lengthMultiplier;
    if (settings.isArchive) return kArchiveMultiplier;
    if (stated != 1.0)
        findings.Add({codes::kLengthUnit, Severity::Note, skeleton.lengthAt,
                      "the unit of length is " + text::NumberText(stated) +
                          "; bones and the root's path are both multiplied by it"});
    return stated;
}

// Returns the smallest power of ten that makes all bones long enough for the plug-in if lengths are
// multiplied by it and by `factor`. Returns 1 if no bone is too short, or if no power is enough. If
// bones are too short, sets `first` to the first of them. Bones without a length are ignored.
double PowerFor(const AsfSkeleton& skeleton, double factor, const AsfBone*& first) {
    double longest = 0.0;
    for (const AsfBone& bone : skeleton.bones)
        longest = std::max(longest, bone.length.value);
    double shortest = longest;
    for (const AsfBone& bone : skeleton.bones) {
        const double length = bone.length.value;
        if (length <= kNoLength * longest || length * factor >= kShortestBone) continue;
        if (!first) first = &bone;
        shortest = std::min(shortest, length);
    }
    if (!first || factor <= 0.0) return 1.0;
    double power = 1.0;
    for (int i = 0; i < kLargestPower; ++i) {
        if (shortest * (factor * power) >= kShortestBone) return power;
        power *= 10.0;
    }
    return 1.0;
}

bool HasPosition(const AsfSkeleton& skeleton) {
    return std::any_of(skeleton.position.begin(), skeleton.position.end(),
                       [](const AsfNumber& number) { return number.value != 0.0; });
}

// The plug-in applies the multiplier to bones and to the root's motion, but not to the root's
// position at rest. Therefore the mended text gets a position at rest that is already multiplied.
void MultiplyPosition(AsfSkeleton& skeleton, const LengthSettings& settings,
                      FindingList& findings) {
    if (!settings.multiplier || *settings.multiplier == 1.0 || !HasPosition(skeleton)) return;
    std::array<double, 3>& written = skeleton.writtenPosition.emplace();
    for (std::size_t axis = 0; axis < 3; ++axis)
        written[axis] = skeleton.position[axis].value * *settings.multiplier;
    skeleton.changed = true;
    for (const std::string_view code : {codes::kPresetCmu, codes::kLengthUnit, codes::kBoneShort})
        if (Finding* finding = findings.Find(code)) finding->mended = true;
}

}  // namespace

LengthSettings DecideLengths(AsfSkeleton& skeleton, const Options& options, FindingList& findings) {
    LengthSettings settings;
    settings.factor = DecideFactor(skeleton, options, settings, findings);
    if (settings.factor != 1.0 || options.lengthMultiplier) settings.multiplier = settings.factor;
    const AsfBone* first = nullptr;
    const double power = PowerFor(skeleton, settings.factor, first);
    if (first && power != 1.0) {
        settings.multiplied = power;
        settings.multiplier = settings.factor * power;
        findings.Add(
            {codes::kBoneShort, Severity::Note, first->at,
             "the bone \"" + first->name + "\" is " +
                 text::NumberText(first->length.value * settings.factor) +
                 " long, shorter than the plug-in can build; everything is multiplied by " +
                 text::NumberText(power) + " for it, which is undone in what is written",
             first->name});
    }
    if (options.purpose == Purpose::Import) MultiplyPosition(skeleton, settings, findings);
    return settings;
}

void MendDirections(AsfSkeleton& skeleton, FindingList& findings) {
    for (std::size_t index = 1; index < skeleton.bones.size(); ++index) {
        AsfBone& bone = skeleton.bones[index];
        const double size =
            std::hypot(bone.direction[0].value, bone.direction[1].value, bone.direction[2].value);
        const bool hasLength = bone.length.value != 0.0 || bone.Has(Dof::Length);
        if (!hasLength || std::fabs(size - 1.0) <= kDirectionTolerance) continue;
        const bool isNone = size == 0.0 || !std::isfinite(size);
        if (!isNone) {
            for (AsfNumber& number : bone.direction)
                number = {number.value / size, {}};
            skeleton.changed = true;
        }
        if (findings.AddAgain(codes::kDirectionLength, Severity::Warning)) {
            findings.Find(codes::kDirectionLength)->mended |= !isNone;
            continue;
        }
        findings.Add({codes::kDirectionLength, Severity::Warning,
                      bone.directionAt ? bone.directionAt : bone.at,
                      isNone
                          ? "the bone \"" + bone.name +
                                "\" has a length and no direction; its end is where it begins"
                          : "the direction of \"" + bone.name + "\" is " + text::NumberText(size) +
                                " long; it is made 1, since the length says how long the bone is",
                      bone.name, !isNone});
    }
}

}  // namespace survey
