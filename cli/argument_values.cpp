// Parses the values of single arguments: numbers, and the arguments of "zkhost command".
#include <charconv>
#include <fmt/format.h>
#include <system_error>

#include "cli/arguments.h"
#include "cli/suggestion.h"

namespace cli {
namespace {

// Parses a decimal number, or a hexadecimal one after "0x". Returns nullopt for any other text and
// for a number above 65535.
std::optional<std::uint16_t> ParseWord(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    std::uint16_t word = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, word, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != last) return std::nullopt;
    return word;
}

RawArgument ParseBoolean(std::string_view value) {
    const std::string word = LowerCase(value);
    if (word != "true" && word != "false")
        throw UsageError(fmt::format("bool:{}: expected bool:true or bool:false{}", value,
                                     Suggestion(word, {"true", "false"})));
    RawArgument argument;
    argument.kind = RawArgument::Kind::Boolean;
    argument.boolean = word == "true";
    return argument;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double number = 0.0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error != std::errc() || end != last) return std::nullopt;
    return number;
}

RawArgument ParseRawArgument(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string_view kind = text.substr(0, colon);
    const std::string_view value =
        colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
    RawArgument argument;
    if (colon != std::string_view::npos && kind == "str") {
        argument.text = value;
        return argument;
    }
    if (colon != std::string_view::npos && kind == "bool") return ParseBoolean(value);
    if (colon != std::string_view::npos && kind == "word") {
        const auto word = ParseWord(value);
        if (!word)
            throw UsageError(fmt::format("{}: expected a whole number from 0 to 65535", text));
        argument.kind = RawArgument::Kind::Word;
        argument.word = *word;
        return argument;
    }
    if (colon != std::string_view::npos && kind == "real") {
        const auto real = ParseNumber(value);
        if (!real) throw UsageError(fmt::format("{} is not a number", text));
        argument.kind = RawArgument::Kind::Real;
        argument.real = *real;
        return argument;
    }
    const std::string_view start = colon == std::string_view::npos ? "" : text.substr(0, colon + 1);
    throw UsageError(fmt::format("{}: an argument must begin with str:, bool:, word: or real:{}",
                                 text, Suggestion(start, {"str:", "bool:", "word:", "real:"})));
}

}  // namespace cli
