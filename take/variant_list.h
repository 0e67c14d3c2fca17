// The argument array of a callback.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "host/variant.h"
#include "plugin/contract.h"

namespace take {

// Owns the texts its records point to. Arguments that were not added are zero, a missing text a
// null pointer, for as many as any command reads.
class VariantList {
  public:
    void AddText(std::wstring text);
    void AddBoolean(bool value);  // 0xFFFF or 0
    void AddWord(std::uint16_t word);
    void AddReal(double value);

    // Valid until the next addition.
    const VARIANT* Data() const { return records_.data(); }

  private:
    VARIANT& Next();

    static constexpr std::size_t kLeastRecords = 16;
    static_assert(kLeastRecords >= plugin::acclaim::kArgumentCount &&
                  kLeastRecords >= plugin::biovision::kArgumentCount);

    std::deque<std::wstring> texts_;  // whose elements stay where they are
    std::vector<VARIANT> records_ = std::vector<VARIANT>(kLeastRecords);
    std::size_t added_ = 0;
};

}  // namespace take
