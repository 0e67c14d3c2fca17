// Values of options as the user wrote them, made sense of. All throw UsageError.
#pragma once

#include <fmt/format.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "cli/arguments.h"

namespace cli {

double FiniteNumber(const char* option, const std::string& text);
double PositiveNumber(const char* option, const std::string& text);

template <class Value>
Value Choice(const char* option, const std::string& text,
             std::initializer_list<std::pair<std::string_view, Value>> choices) {
    std::string names;
    for (const auto& [name, value] : choices) {
        if (text == name) return value;
        names += (names.empty() ? "" : " or ") + std::string(name);
    }
    throw UsageError(fmt::format("{} {}: expected {}", option, text, names));
}

Progress ProgressChoice(const std::optional<std::string>& text);

// One that iconv knows; empty is fine.
void RequireKnownEncoding(const std::string& encoding);

// An existing input must not be written to.
void RefuseToOverwrite(const std::string& output, const std::string& input);

}  // namespace cli
