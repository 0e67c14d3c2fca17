#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "host/export.h"
#include "host/string.h"

namespace headless {

// Names of one owner, each unique. A taken name gets the smallest number from 1 that makes it
// unique appended; how many names there are does not matter to the cost. Texts are shared with
// those who hold the names.
class ZELK_API NameTable {
  public:
    // Takes and returns the name as it is or with a number; `id` is what Find gives back.
    Zelk::CString Take(const Zelk::CString& name, std::uint32_t id);
    // The name is free again.
    void Free(const Zelk::CString& name);
    // 0 where the name is not taken.
    std::uint32_t Find(std::wstring_view name) const;

  private:
    // A text that is looked for. The hash goes along, since names may be long.
    struct Key {
        explicit Key(std::wstring_view name)
            : text(name), hash(static_cast<std::uint32_t>(std::hash<std::wstring_view>{}(name))) {}
        std::wstring_view text;
        std::uint32_t hash;
    };
    struct Taken {
        Zelk::CString name;
        std::uint32_t id;
        std::uint32_t hash;
    };
    static std::wstring_view TextOf(const Key& key) noexcept { return key.text; }
    static std::wstring_view TextOf(const Taken& taken) noexcept {
        return {taken.name.GetWideString(), taken.name.Length()};
    }
    struct Hash {
        using is_transparent = void;
        template <class Named>
        std::size_t operator()(const Named& named) const noexcept {
            return named.hash;
        }
    };
    struct Equal {
        using is_transparent = void;
        template <class A, class B>
        bool operator()(const A& a, const B& b) const noexcept {
            return a.hash == b.hash && TextOf(a) == TextOf(b);
        }
    };

    // Of a name that was taken when it was asked for: every number below `next` is taken, except
    // those in `freed` (which may hold some that were taken again since).
    struct Numbers {
        std::uint64_t next = 1;
        std::unique_ptr<std::set<std::uint64_t>> freed;
    };
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view text) const {
            return std::hash<std::wstring_view>{}(text);
        }
        std::size_t operator()(const Zelk::CString& text) const {
            return (*this)({text.GetWideString(), text.Length()});
        }
    };
    struct TextEqual {
        using is_transparent = void;
        bool operator()(const Zelk::CString& a, const Zelk::CString& b) const { return a == b; }
        bool operator()(std::wstring_view a, const Zelk::CString& b) const {
            return a == std::wstring_view(b.GetWideString(), b.Length());
        }
        // libc++ of clang 14 asks with the looked-for text second.
        bool operator()(const Zelk::CString& a, std::wstring_view b) const { return (*this)(b, a); }
    };

    void Insert(const Zelk::CString& name, const Key& key, std::uint32_t id);

    std::unordered_set<Taken, Hash, Equal> taken_;
    std::unordered_map<Zelk::CString, Numbers, TextHash, TextEqual> numbers_;
};

}  // namespace headless
