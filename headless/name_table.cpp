#include "headless/name_table.h"

#include <string>

#include "headless/text.h"

namespace headless {

namespace {

// Appended numbers have fewer digits than this, and a number with this many digits still fits into
// 64 bits.
constexpr std::size_t kMaxDigits = 19;

constexpr bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

}  // namespace

void NameTable::Insert(const Zelk::CString& name, const Key& key, std::uint32_t id) {
    reserved_.insert(Reserved{name, id, key.hash});
}

Zelk::CString NameTable::Reserve(const Zelk::CString& name, std::uint32_t id) {
    const Key wanted(View(name));
    const auto present = reserved_.find(wanted);
    if (present == reserved_.end()) {
        Insert(name, wanted, id);
        return name;
    }

    // If this adds an entry, its key shares the text of the name in `reserved_`.
    Numbers& numbers = numbers_[present->name];
    std::wstring numbered(View(name));
    Zelk::CString reserved;
    const auto reserveNumbered = [&](std::uint64_t number) {
        numbered.resize(name.Length());
        numbered += std::to_wstring(number);
        const Key key(numbered);
        if (reserved_.find(key) != reserved_.end()) return false;
        reserved = Text(numbered);
        Insert(reserved, key, id);
        return true;
    };
    while (numbers.freed) {
        // The smallest freed number is tried. It may be in use again, because the name with this
        // number was reserved directly. The number is removed from `freed` even then.
        const bool done = reserveNumbered(*numbers.freed->begin());
        numbers.freed->erase(numbers.freed->begin());
        if (numbers.freed->empty()) numbers.freed.reset();
        if (done) return reserved;
    }
    while (!reserveNumbered(numbers.next))
        ++numbers.next;
    ++numbers.next;
    return reserved;
}

void NameTable::Free(const Zelk::CString& freed) {
    const std::wstring_view name = View(freed);
    const auto found = reserved_.find(Key(name));
    if (found == reserved_.end()) return;

    // "Hand12" may be "Hand" with the number 12, or "Hand1" with the number 2. So 12 becomes
    // available for "Hand", and 2 for "Hand1".
    std::uint64_t number = 0;
    std::uint64_t weight = 1;
    std::size_t start = name.size();
    while (start > 0 && name.size() - start < kMaxDigits && IsDigit(name[start - 1])) {
        --start;
        const auto digit = static_cast<std::uint64_t>(name[start] - L'0');
        number += digit * weight;
        weight *= 10;
        if (digit == 0) continue;  // appended numbers have no leading zeros
        const auto entry = numbers_.find(name.substr(0, start));
        if (entry == numbers_.end() || number >= entry->second.next) continue;
        std::unique_ptr<std::set<std::uint64_t>>& numbers = entry->second.freed;
        if (!numbers) numbers = std::make_unique<std::set<std::uint64_t>>();
        numbers->insert(number);
    }
    reserved_.erase(found);
}

std::uint32_t NameTable::Find(std::wstring_view name) const {
    const auto found = reserved_.find(Key(name));
    return found == reserved_.end() ? 0 : found->id;
}

}  // namespace headless
