// The real plug-in, loaded as a host loads it, and argument lists like those of a host.
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

// As many records as the command with the most arguments reads. All bytes that a test does not set
// are rubbish, including the type words.
class Arguments {
  public:
    Arguments();
    // The list keeps a copy of the text.
    Arguments& Text(std::size_t index, const std::wstring& text);
    Arguments& NullText(std::size_t index);
    // Sets only the sixteen bits; the bytes after them stay rubbish.
    Arguments& Word(std::size_t index, std::uint16_t word);
    Arguments& Real(std::size_t index, double value);
    const VARIANT* Get() const { return records_.data(); }

  private:
    static constexpr std::size_t kRecords = plugin::acclaim::kArgumentCount;
    std::array<VARIANT, kRecords> records_;
    // Shared, so that the address of a text does not change when the list is copied.
    std::array<std::shared_ptr<const std::wstring>, kRecords> texts_;
};

// Arguments of the Biovision command for this file: a skeleton of nulls, all other options off.
Arguments Biovision(const std::wstring& path);
// Arguments of the Acclaim command for these files, all options off.
Arguments Acclaim(const std::wstring& asf, const std::wstring& amc);

// The first call loads the plug-in, which then stays loaded. Returns the callback's result.
std::uint32_t Call(const wchar_t* command, const Arguments& arguments);
std::uint32_t Call(const wchar_t* command, const VARIANT* arguments);
const USERINPUT& Input();

// Only for ASCII.
std::wstring Wide(const std::string& text);

}  // namespace plugin_test
