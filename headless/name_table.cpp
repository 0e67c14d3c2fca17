#include "headless/name_table.h"

#include <string>

#include "headless/text.h"

namespace headless {

namespace {

// More digits than any number that was appended can have.
constexpr std::size_t kMaxDigits = 19;

constexpr bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

}  // namespace

void NameTable::Insert(const Zelk::CString& name, const Key& key, std::uint32_t id) {
    taken_.insert(Taken{name, id, key.hash});
}

Zelk::CString NameTable::Take(const Zelk::CString& name, std::uint32_t id) {
    const Key wish(View(name));
    const auto present = taken_.find(wish);
    if (present == taken_.end()) {
        Insert(name, wish, id);
        return name;
    }

    // Under the text that is kept anyway.
    Numbers& numbers = numbers_[present->name];
    std::wstring numbered(View(name));
    Zelk::CString taken;
    const auto takeNumbered = [&](std::uint64_t number) {
        numbered.resize(name.Length());
        numbered += std::to_wstring(number);
        const Key key(numbered);
        if (taken_.find(key) != taken_.end()) return false;
        taken = Text(numbered);
        Insert(taken, key, id);
        return true;
    };
    while (numbers.freed) {
        // One that somebody has taken since by its full name is dropped: it is not free.
        const bool done = takeNumbered(*numbers.freed->begin());
        numbers.freed->erase(numbers.freed->begin());
        if (numbers.freed->empty()) numbers.freed.reset();
        if (done) return taken;
    }
    while (!takeNumbered(numbers.next))
        ++numbers.next;
    ++numbers.next;
    return taken;
}

void NameTable::Free(const Zelk::CString& freed) {
    const std::wstring_view name = View(freed);
    const auto found = taken_.find(Key(name));
    if (found == taken_.end()) return;

    // "Hand12" may be "Hand" with 12 or "Hand1" with 2: each of them may give its number again.
    std::uint64_t number = 0;
    std::uint64_t weight = 1;
    std::size_t start = name.size();
    while (start > 0 && name.size() - start < kMaxDigits && IsDigit(name[start - 1])) {
        --start;
        const auto digit = static_cast<std::uint64_t>(name[start] - L'0');
        number += digit * weight;
        weight *= 10;
        if (digit == 0) continue;  // a number is appended without leading zeros
        const auto entry = numbers_.find(name.substr(0, start));
        if (entry == numbers_.end() || number >= entry->second.next) continue;
        std::unique_ptr<std::set<std::uint64_t>>& numbers = entry->second.freed;
        if (!numbers) numbers = std::make_unique<std::set<std::uint64_t>>();
        numbers->insert(number);
    }
    taken_.erase(found);
}

std::uint32_t NameTable::Find(std::wstring_view name) const {
    const auto found = taken_.find(Key(name));
    return found == taken_.end() ? 0 : found->id;
}

}  // namespace headless
