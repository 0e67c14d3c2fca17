// A finding: one oddity that a survey reports about a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace survey {

enum class Severity : std::uint8_t {
    Note,     // worth knowing; nothing is lost
    Warning,  // something was lost or guessed, or is likely not what the author meant
    Error,    // the file is refused: nothing of it is imported
};

struct Finding {
    std::string_view code;  // one of the codes in codes.h
    Severity severity = Severity::Note;
    // The position of the oddity in the user's file. If the file has the oddity several times, this
    // is the first case with the highest severity. Lines count from 1, and columns count characters
    // from 1. Both are 0 if the finding is about the file as a whole.
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t count = 1;  // how often the file has this oddity
    // The number of the frame at that position, as the scene's keys have it. Nullopt if the
    // position is not in a frame, or if there is none.
    std::optional<std::int64_t> frame = std::nullopt;
    std::string joint;    // the joint or bone of that case, in UTF-8; empty if it is about none
    std::string message;  // a sentence without the code, in UTF-8
    bool mended = false;  // whether this is a reason to replace the file's text by a mended one
};

}  // namespace survey
