#include "export/body_sides.h"

#include <string_view>
#include <unordered_set>

#include "export/object_names.h"

namespace exporters {
namespace {

struct Words {
    std::wstring_view left;
    std::wstring_view right;
};

constexpr Words kWords[] = {{L"Left", L"Right"}, {L"left", L"right"}, {L"LEFT", L"RIGHT"}};
constexpr Words kLetters[] = {{L"l", L"r"}, {L"L", L"R"}};

// Removes a number from the end of a name, or from before the ending of an end site. Some programs
// number all joints: "LeftHip-23".
std::wstring WithoutNumber(std::wstring name) {
    if (name.ends_with(kEndSuffix)) name.resize(name.size() - kEndSuffix.size());
    const std::size_t last = name.find_last_not_of(L"0123456789-_. ");
    if (last != std::wstring::npos) name.resize(last + 1);
    return name;
}

class SideFinder {
  public:
    explicit SideFinder(const std::vector<std::wstring>& names)
        : names_(names.begin(), names.end()) {
        for (const std::wstring& name : names)
            stems_.insert(WithoutNumber(name));
    }

    Side Find(const std::wstring& name) const {
        for (const Words& words : kWords) {
            if (HasWordOf(name, words.left, words.right)) return Side::Left;
            if (HasWordOf(name, words.right, words.left)) return Side::Right;
        }
        for (const Words& letters : kLetters) {
            if (IsLetterOf(name, letters.left, letters.right)) return Side::Left;
            if (IsLetterOf(name, letters.right, letters.left)) return Side::Right;
        }
        return Side::Middle;
    }

  private:
    // Whether another joint is called as `name` is if `word`, at the index `at`, becomes `other`.
    bool HasMirror(const std::wstring& name, std::size_t at, std::wstring_view word,
                   std::wstring_view other) const {
        std::wstring mirrored = name;
        return names_.contains(mirrored.replace(at, word.size(), other));
    }

    // Whether the name has the word, and another joint the other one. Numbers after the names may
    // differ.
    bool HasWordOf(const std::wstring& name, std::wstring_view word,
                   std::wstring_view other) const {
        std::wstring mirrored = WithoutNumber(name);
        const std::size_t at = mirrored.find(word);
        return at != std::wstring::npos &&
               stems_.contains(mirrored.replace(at, word.size(), other));
    }

    // Letters count at the beginning of a name, and at its beginning after a colon as in
    // "rig:lArm"; and at its end, and before the end of an end site, after "_" or ".".
    bool IsLetterOf(const std::wstring& name, std::wstring_view letter,
                    std::wstring_view other) const {
        const std::size_t first = name.rfind(L':') + 1;  // 0 if there is no colon
        if (name.compare(first, 1, letter) == 0 && HasMirror(name, first, letter, other))
            return true;
        for (const wchar_t separator : {L'_', L'.'}) {
            const std::wstring part = separator + std::wstring(letter);
            for (std::size_t at = name.find(part); at != std::wstring::npos;
                 at = name.find(part, at + 1)) {
                const std::size_t end = at + part.size();
                const bool ends = end == name.size() || name[end] == L'_' || name[end] == L'.';
                if (ends && HasMirror(name, at + 1, letter, other)) return true;
            }
        }
        return false;
    }

    std::unordered_set<std::wstring> names_;
    std::unordered_set<std::wstring> stems_;  // the names without numbers at their ends
};

}  // namespace

std::vector<Side> SidesOf(const std::vector<std::wstring>& names) {
    const SideFinder finder(names);
    std::vector<Side> sides;
    sides.reserve(names.size());
    for (const std::wstring& name : names)
        sides.push_back(finder.Find(name));
    return sides;
}

}  // namespace exporters
