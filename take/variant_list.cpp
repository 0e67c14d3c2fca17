#include "take/variant_list.h"

#include <utility>

#include "plugin/contract.h"

namespace take {
void VariantList::AddText(std::wstring text) {
    texts_.push_back(std::move(text));
    VARIANT& record = Next();
    record.vt = plugin::kTextType;
    record.bstrVal = texts_.back().c_str();
}

void VariantList::AddBoolean(bool value) {
    VARIANT& record = Next();
    record.vt = plugin::kBooleanType;
    record.boolVal = plugin::BooleanWord(value);
}

void VariantList::AddWord(std::uint16_t word) {
    VARIANT& record = Next();
    record.vt = plugin::kWordType;
    record.boolVal = word;
}

void VariantList::AddReal(double value) {
    VARIANT& record = Next();
    record.vt = plugin::kRealType;
    record.dblVal = value;
}

VARIANT& VariantList::Next() {
    if (added_ == records_.size()) records_.emplace_back();
    return records_[added_++];
}

}  // namespace take
