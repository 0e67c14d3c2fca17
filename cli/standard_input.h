// The standard input as a file to read. On the command line it is called "-", and in messages
// "<stdin>". Its model is called "stdin".
#pragma once

#include <optional>
#include <span>
#include <string>

#include "pairing/capture_kind.h"
#include "take/request.h"

namespace cli {

bool IsStandardInput(const std::string& path);

// Parses the value of --as, in any letter case; nullopt if there is none. Throws UsageError for
// another word, if several of the files are "-", and if --as is given but no file is "-".
std::optional<pairing::CaptureKind> ParseAs(const std::optional<std::string>& as,
                                            std::span<const std::string> files);

// Returns the file for a path of the command line. `kind` says what the file is.
take::InputFile InputOf(const std::string& path, pairing::CaptureKind kind);

// If the file is the standard input, reads it to its end. The text may be packed by gzip. Throws
// std::runtime_error if it cannot be read.
void LoadStandardInput(take::InputFile& file);

}  // namespace cli
