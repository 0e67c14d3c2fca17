// Parses and checks the values of options. All functions throw UsageError for a wrong value. The
// parameter `option` is the name of the option, for the error message.
#pragma once

#include <cstddef>
#include <fmt/format.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/arguments.h"
#include "cli/suggestion.h"

namespace cli {

double FiniteNumber(const char* option, const std::string& text);
double PositiveNumber(const char* option, const std::string& text);
// A whole number from 1 to `most`.
std::size_t Count(const char* option, const std::string& text, std::size_t most);
// The value of --threads. Nullopt if the user did not give it.
std::optional<std::size_t> ThreadCount(const std::optional<std::string>& text);

// Returns the value of the choice whose name is `text`, in any letter case.
template <class Value>
Value Choice(const char* option, const std::string& text,
             std::initializer_list<std::pair<std::string_view, Value>> choices) {
    std::vector<std::string> names;
    for (const auto& [name, value] : choices) {
        if (LowerCase(text) == name) return value;
        names.emplace_back(name);
    }
    throw UsageError(
        fmt::format("{} {}: expected {}{}", option, text, ListOf(names), Suggestion(text, names)));
}

Progress ProgressChoice(const std::optional<std::string>& text);

// Requires that `encoding` is empty or the name of an encoding that iconv knows.
void RequireKnownEncoding(const std::string& encoding);

// Requires that `path` can be the name of a file: it is not empty and leads to no folder.
void RequireFileName(const char* option, const std::string& path);

// Requires that `input` and `output` do not lead to the same existing file. `input` may be empty.
void RequireNotOverwritten(const std::string& input, const std::string& output);

}  // namespace cli
