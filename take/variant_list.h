// The array of arguments that the plug-in's callback reads.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "host/variant.h"
#include "plugin/contract.h"

namespace take {

// Owns the texts that its records point to. It always has at least as many records as any command
// reads; those that were not added are zero, which is a null pointer where a text is read.
class VariantList {
  public:
    void AddText(std::wstring text);
    void AddBoolean(bool value);  // 0xFFFF or 0
    void AddWord(std::uint16_t word);
    void AddReal(double value);

    // The pointer is valid until the next addition.
    const VARIANT* Data() const { return records_.data(); }

  private:
    VARIANT& Next();

    static constexpr std::size_t kLeastRecords = 16;
    static_assert(kLeastRecords >= plugin::acclaim::kArgumentCount &&
                  kLeastRecords >= plugin::biovision::kArgumentCount);

    std::deque<std::wstring> texts_;  // a deque, because records point to its elements
    std::vector<VARIANT> records_ = std::vector<VARIANT>(kLeastRecords);
    std::size_t added_ = 0;
};

}  // namespace take
