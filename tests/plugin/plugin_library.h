// The real plug-in, loaded as a host loads it, and argument lists as raw as a host's.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "host/variant.h"
#include "plugin/contract.h"
#include "plugin/user_input.h"

namespace plugin_test {

// As many records as the longer command reads, full of rubbish, type words included, but for the
// slots that a test sets.
class Arguments {
  public:
    Arguments();
    // Kept alive by the list.
    Arguments& Text(std::size_t index, const std::wstring& text);
    Arguments& NullText(std::size_t index);
    // The sixteen bits alone: what lies beside them stays rubbish.
    Arguments& Word(std::size_t index, std::uint16_t word);
    Arguments& Real(std::size_t index, double value);
    const VARIANT* Get() const { return records_.data(); }

  private:
    static constexpr std::size_t kRecords = plugin::acclaim::kArgumentCount;
    std::array<VARIANT, kRecords> records_;
    // Where a text lies does not change when the list is copied.
    std::array<std::shared_ptr<const std::wstring>, kRecords> texts_;
};

// The Biovision command for this file, as nulls, everything else off.
Arguments Biovision(const std::wstring& path);
// The Acclaim command for these files, everything off.
Arguments Acclaim(const std::wstring& asf, const std::wstring& amc);

// Loaded at the first call and kept.
std::uint32_t Call(const wchar_t* command, const Arguments& arguments);
std::uint32_t Call(const wchar_t* command, const VARIANT* arguments);
const USERINPUT& Input();

// ASCII alone.
std::wstring Wide(const std::string& text);

}  // namespace plugin_test
