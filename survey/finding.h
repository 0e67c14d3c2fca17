// One thing that a survey reports about a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace survey {

enum class Severity : std::uint8_t {
    Note,     // worth knowing; nothing is lost
    Warning,  // mended or kept, but something was lost or guessed, or is likely not meant
    Error,    // the file is refused
};

struct Finding {
    std::string_view code;  // one of codes.h
    Severity severity = Severity::Note;
    // Where the first case is in the file as it was given. Both count from 1, columns in
    // characters. Both are 0 if the finding is about the file as a whole.
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t count = 1;  // number of cases
    std::string joint;      // name of the joint or bone of the first case, in UTF-8; may be empty
    std::string message;    // a sentence without the code, in UTF-8
    bool mended = false;    // the plug-in gets another text because of this finding
};

}  // namespace survey
