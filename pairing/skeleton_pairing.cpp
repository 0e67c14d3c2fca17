#include "pairing/skeleton_pairing.h"

#include <compare>
#include <cwctype>
#include <fmt/format.h>
#include <span>
#include <utility>

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

// How well a skeleton's name fits the motion's name, compared with other names that are the same
// without extension and in folded case. A greater Fit is better.
struct Fit {
    // Whether the motion's name begins with the skeleton's name in the same letter case.
    bool sameCase = false;
    // Whether both files are packed by gzip, or neither is.
    bool samePacking = false;

    // NOLINTNEXTLINE(modernize-use-nullptr): the check warns about a 0 in generated code.
    auto operator<=>(const Fit&) const = default;
};

std::string_view StemOf(std::string_view name) {
    return text::WithoutExtension(text::WithoutGzip(name));
}

Fit FitOf(std::string_view motion, std::string_view skeleton) {
    return {StemOf(motion).starts_with(StemOf(skeleton)),
            text::IsGzipName(motion) == text::IsGzipName(skeleton)};
}

// Whether a skeleton fits whose name is the first `length` characters of the motion's name.
bool MayEndAt(std::wstring_view motion, std::size_t length) {
    return length == motion.size() || !IsLetterOrDigit(motion[length]) ||
           !IsLetterOrDigit(motion[length - 1]);
}

// Chooses from one or more skeletons, whose names are the same without extension and in folded
// case.
Pairing Choose(std::string_view motion, const std::vector<std::string>& names,
               const std::vector<std::size_t>& indexes) {
    const std::string* found = &names[indexes.front()];
    Fit best = FitOf(motion, *found);
    const std::string* equallyGood = nullptr;
    for (const std::size_t index : std::span(indexes).subspan(1)) {
        const Fit fit = FitOf(motion, names[index]);
        if (fit < best) continue;
        equallyGood = fit == best ? found : nullptr;
        best = fit;
        found = &names[index];
    }
    if (equallyGood)
        return {"", fmt::format("{} and {} both fit the motion's name; choose one with --asf FILE",
                                *equallyGood, *found)};
    return {*found, ""};
}

}  // namespace

Skeletons::Skeletons(std::vector<std::string> names) : names_(std::move(names)) {
    for (std::size_t index = 0; index < names_.size(); ++index)
        byStem_[text::FoldCase(StemOf(names_[index]))].push_back(index);
}

Pairing Skeletons::Find(std::string_view motion) const {
    const std::wstring stem = text::FoldCase(StemOf(motion));
    for (std::size_t length = stem.size(); length > 0; --length) {
        if (!MayEndAt(stem, length)) continue;
        const auto fitting = byStem_.find(stem.substr(0, length));
        if (fitting != byStem_.end()) return Choose(motion, names_, fitting->second);
    }
    if (names_.size() == 1) return {names_.front(), ""};
    if (names_.empty())
        return {"", "no skeleton: the motion's folder has no .asf file; name one with --asf FILE"};
    return {"", fmt::format("no skeleton: none of the {} .asf files in the motion's folder fits the"
                            " motion's name; choose one with --asf FILE",
                            names_.size())};
}

Pairing FindSkeleton(std::string_view motion, const std::vector<std::string>& skeletons) {
    return Skeletons(skeletons).Find(motion);
}

}  // namespace pairing
