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

// How well a skeleton's name fits a motion's; a greater Fit is better.
struct Fit {
    std::size_t length = 0;  // characters of the name that fits; 0 if it does not fit
    bool sameCase = false;

    bool Fits() const { return length > 0; }
    // NOLINTNEXTLINE(modernize-use-nullptr): it warns of a zero that the compiler generates.
    auto operator<=>(const Fit&) const = default;
};

Fit FitOf(std::string_view motion, std::string_view skeleton) {
    const std::wstring longer = text::FoldCase(motion);
    const std::wstring begin = text::FoldCase(skeleton);
    if (!longer.starts_with(begin)) return {};
    const bool isWhole = longer.size() == begin.size();
    if (!isWhole && IsLetterOrDigit(longer[begin.size()]) && IsLetterOrDigit(begin.back()))
        return {};
    return {begin.size(), motion.starts_with(skeleton)};
}

}  // namespace

Pairing FindSkeleton(std::string_view motion, const std::vector<std::string>& skeletons) {
    Fit best;
    const std::string* found = nullptr;
    const std::string* equallyGood = nullptr;
    for (const std::string& skeleton : skeletons) {
        const Fit fit = FitOf(text::WithoutExtension(motion), text::WithoutExtension(skeleton));
        if (!fit.Fits() || fit < best) continue;
        equallyGood = fit == best ? found : nullptr;
        best = fit;
        found = &skeleton;
    }
    if (equallyGood)
        return {"", fmt::format("{} and {} both fit; --asf FILE says which", *equallyGood, *found)};
    if (found) return {*found, ""};
    if (skeletons.size() == 1) return {skeletons.front(), ""};
    if (skeletons.empty())
        return {"", "no skeleton: its folder has no .asf file; --asf FILE names one"};
    return {"", fmt::format(
                    "no skeleton: none of the {} .asf files in its folder has a name that fits; "
                    "--asf FILE says which",
                    skeletons.size())};
}

}  // namespace pairing
