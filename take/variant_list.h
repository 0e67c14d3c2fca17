// The array of arguments that the plug-in's callback reads.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "host/variant.h"
#include "plugin/contract.h"

namespace take {

// Owns its records and the texts that they point to. The list always has at least as many records
// as any command reads. A record that was not added is zero. A command that reads a text from such
// a record gets a null pointer.
class VariantList {
  public:
    void AddText(std::wstring text);
    void AddBoolean(bool value);  // stored as 0xFFFF or 0
    void AddWord(std::uint16_t word);
    void AddReal(double value);

    // Returns the first record. The pointer is valid until another argument is added.
    const VARIANT* Data() const { return records_.data(); }

  private:
    VARIANT& Next();

    static constexpr std::size_t kLeastRecords = 16;
    static_assert(kLeastRecords >= plugin::acclaim::kArgumentCount &&
                  kLeastRecords >= plugin::biovision::kArgumentCount);

    std::deque<std::wstring> texts_;  // a deque, because records point to its elements
    std::vector<VARIANT> records_ = std::vector<VARIANT>(kLeastRecords);
    std::size_t added_ = 0;  // how many of `records_` were added
};

}  // namespace take
