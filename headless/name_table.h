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

// The names that are in use for one kind of things, for example for the actions of a model. No two
// of these things have the same name. If a wanted name is in use, a number is appended to it: the
// smallest one, counted from 1, that makes the name unique. The number of names in the table hardly
// affects the time that a call takes. The table shares the texts of the names with the records that
// have them.
class ZELK_API NameTable {
  public:
    // Reserves `name`, if necessary with a number appended, and returns the reserved name. From now
    // on Find returns `id` for the reserved name.
    Zelk::CString Reserve(const Zelk::CString& name, std::uint32_t id);
    // Makes the name available again. Ignores a name that is not reserved.
    void Free(const Zelk::CString& name);
    // The id of the name; 0 if it is not reserved.
    std::uint32_t Find(std::wstring_view name) const;

  private:
    // A name to look up. The hash of the name is stored, because computing the hash of a long name
    // takes time.
    struct Key {
        explicit Key(std::wstring_view name)
            : text(name), hash(static_cast<std::uint32_t>(std::hash<std::wstring_view>{}(name))) {}
        std::wstring_view text;
        std::uint32_t hash;
    };
    struct Reserved {
        Zelk::CString name;
        std::uint32_t id;
        std::uint32_t hash;
    };
    static std::wstring_view TextOf(const Key& key) noexcept { return key.text; }
    static std::wstring_view TextOf(const Reserved& reserved) noexcept {
        return {reserved.name.GetWideString(), reserved.name.Length()};
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

    // The numbers that were appended to one name. All numbers from 1 to `next` - 1 are in use,
    // except those in `freed`. Some numbers in `freed` may be in use again.
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
        // libc++ of clang 14 passes the text to look up as the second argument.
        bool operator()(const Zelk::CString& a, std::wstring_view b) const { return (*this)(b, a); }
    };

    void Insert(const Zelk::CString& name, const Key& key, std::uint32_t id);

    std::unordered_set<Reserved, Hash, Equal> reserved_;
    std::unordered_map<Zelk::CString, Numbers, TextHash, TextEqual> numbers_;
};

}  // namespace headless
