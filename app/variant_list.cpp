#include "app/variant_list.h"

#include <utility>

namespace app {
namespace {

// The published type words.
enum : std::uint16_t { kReal = 5, kText = 8, kBoolean = 11, kWord = 18 };

}  // namespace

void VariantList::AddText(std::wstring text) {
    texts_.push_back(std::move(text));
    VARIANT& record = Next();
    record.vt = kText;
    record.bstrVal = texts_.back().c_str();
}

void VariantList::AddBoolean(bool value) {
    VARIANT& record = Next();
    record.vt = kBoolean;
    record.boolVal = value ? 0xFFFF : 0;
}

void VariantList::AddWord(std::uint16_t word) {
    VARIANT& record = Next();
    record.vt = kWord;
    record.boolVal = word;
}

void VariantList::AddReal(double value) {
    VARIANT& record = Next();
    record.vt = kReal;
    record.dblVal = value;
}

VARIANT& VariantList::Next() {
    if (added_ == records_.size()) records_.emplace_back();
    return records_[added_++];
}

}  // namespace app
