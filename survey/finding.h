// What a survey tells about a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace survey {

enum class Severity : std::uint8_t {
    Note,     // worth knowing, nothing is lost
    Warning,  // mended or kept, but something was lost, guessed or is likely not meant
    Error,    // the file is refused
};

struct Finding {
    std::string_view code;  // one of codes.h
    Severity severity = Severity::Note;
    // Of the first case, from 1, in the file as it was given; columns count characters. 0 and 0
    // where the file as a whole is meant.
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t count = 1;  // how many cases there are
    std::string joint;      // or bone, of the first case, in UTF-8; empty where there is none
    std::string message;    // a sentence without the code, in UTF-8
    bool mended = false;    // because of it another text is handed to the plug-in
};

}  // namespace survey
