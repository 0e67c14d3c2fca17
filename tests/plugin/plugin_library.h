// The real plug-in, loaded as a host loads it, and argument lists as raw as a host's.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "host/variant.h"
#include "plugin/user_input.h"

namespace plugin_test {

// Ten records full of rubbish, type words included, but for the slots that a test sets.
class Arguments {
  public:
    Arguments();
    // Kept alive by the list.
    Arguments& Text(std::size_t place, const std::wstring& text);
    Arguments& NullText(std::size_t place);
    // The sixteen bits alone: what lies beside them stays rubbish.
    Arguments& Word(std::size_t place, std::uint16_t word);
    Arguments& Real(std::size_t place, double value);
    const VARIANT* Get() const { return records_.data(); }

  private:
    std::array<VARIANT, 10> records_;
    // Where a text lies does not change when the list is copied.
    std::array<std::shared_ptr<const std::wstring>, 10> texts_;
};

inline constexpr std::uint16_t kTrue = 0xFFFF;

// "Biovision Import function" for this file, as nulls, everything else off.
Arguments Biovision(const std::wstring& path);
// "Acclaim Import function" for these files, everything off.
Arguments Acclaim(const std::wstring& asf, const std::wstring& amc);

// Loaded at the first call and kept.
std::uint32_t Call(const wchar_t* command, const Arguments& arguments);
std::uint32_t Call(const wchar_t* command, const VARIANT* arguments);
const USERINPUT& Input();

inline constexpr const wchar_t* kBiovision = L"Biovision Import function";
inline constexpr const wchar_t* kAcclaim = L"Acclaim Import function";

// ASCII alone.
std::wstring Wide(const std::string& text);

}  // namespace plugin_test
