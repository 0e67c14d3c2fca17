#include "pairing/skeleton_pairing.h"

#include <compare>
#include <cwctype>
#include <fmt/format.h>

#include "text/case_folding.h"
#include "text/path_text.h"

namespace pairing {
namespace {

// Every character beyond ASCII counts as a letter.
bool IsLetterOrDigit(wchar_t character) {
    const bool ascii = (character >= L'0' && character <= L'9') ||
                       (character >= L'a' && character <= L'z') ||
                       (character >= L'A' && character <= L'Z');
    return ascii || character >= 0x80;
}

// How well a skeleton's name fits the motion's name. A greater Fit is better.
struct Fit {
    // Number of characters of the skeleton's name without extension; 0 if the name does not fit.
    std::size_t length = 0;
    // Whether the motion's name begins with the skeleton's name in the same letter case.
    bool sameCase = false;
    // Whether both files are packed by gzip, or neither is.
    bool samePacking = false;

    bool Fits() const { return length > 0; }
    // NOLINTNEXTLINE(modernize-use-nullptr): the check warns about a 0 in generated code.
    auto operator<=>(const Fit&) const = default;
};

std::string_view StemOf(std::string_view name) {
    return text::WithoutExtension(text::WithoutGzip(name));
}

Fit FitOf(std::string_view motionName, std::string_view skeletonName) {
    const std::string_view motion = StemOf(motionName);
    const std::string_view skeleton = StemOf(skeletonName);
    const std::wstring longer = text::FoldCase(motion);
    const std::wstring begin = text::FoldCase(skeleton);
    if (!longer.starts_with(begin)) return {};
    const bool isWhole = longer.size() == begin.size();
    if (!isWhole && IsLetterOrDigit(longer[begin.size()]) && IsLetterOrDigit(begin.back()))
        return {};
    return {begin.size(), motion.starts_with(skeleton),
            text::IsGzipName(motionName) == text::IsGzipName(skeletonName)};
}

}  // namespace

Pairing FindSkeleton(std::string_view motion, const std::vector<std::string>& skeletons) {
    Fit best;
    const std::string* found = nullptr;
    const std::string* equallyGood = nullptr;
    for (const std::string& skeleton : skeletons) {
        const Fit fit = FitOf(motion, skeleton);
        if (!fit.Fits() || fit < best) continue;
        equallyGood = fit == best ? found : nullptr;
        best = fit;
        found = &skeleton;
    }
    if (equallyGood)
        return {"", fmt::format("{} and {} both fit the motion's name; choose one with --asf FILE",
                                *equallyGood, *found)};
    if (found) return {*found, ""};
    if (skeletons.size() == 1) return {skeletons.front(), ""};
    if (skeletons.empty())
        return {"", "no skeleton: the motion's folder has no .asf file; name one with --asf FILE"};
    return {"", fmt::format("no skeleton: none of the {} .asf files in the motion's folder fits the"
                            " motion's name; choose one with --asf FILE",
                            skeletons.size())};
}

}  // namespace pairing
