#include "cli/standard_input.h"

#include <algorithm>
#include <fmt/format.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

#include "cli/arguments.h"
#include "files/stream_text.h"
#include "text/gzip.h"

namespace cli {
namespace {

constexpr char kWord[] = "-";
constexpr char kNameInMessages[] = "<stdin>";

}  // namespace

bool IsStandardInput(const std::string& path) {
    return path == kWord;
}

std::optional<pairing::CaptureKind> ParseAs(const std::optional<std::string>& as,
                                            std::span<const std::string> files) {
    const auto count = std::count_if(files.begin(), files.end(), IsStandardInput);
    if (count > 1) throw UsageError("-: only one file can be the standard input");
    if (!as) return std::nullopt;
    // A name that is a dot and the word has the kind that the word names.
    const std::optional<pairing::CaptureKind> kind = pairing::KindOf('.' + *as);
    if (!kind || as->find_first_of("./") != std::string::npos)
        throw UsageError(fmt::format("--as {}: expected bvh, asf or amc", *as));
    if (count == 0) throw UsageError("--as is for the standard input; name it as the file -");
    return kind;
}

take::InputFile InputOf(const std::string& path, pairing::CaptureKind kind) {
    take::InputFile file{path};
    if (!IsStandardInput(path)) return file;
    file.path = kNameInMessages;
    file.name = fmt::format("stdin.{}", pairing::NameOf(kind));
    return file;
}

void LoadStandardInput(take::InputFile& file) {
    if (file.name.empty()) return;
    files::StreamText read = files::ReadStream(STDIN_FILENO);
    if (!read.problem.empty())
        throw std::runtime_error(fmt::format("{}: {}", kNameInMessages, read.problem));
    if (text::IsGzip(read.text)) file.name += ".gz";
    file.content = std::move(read.text);
}

}  // namespace cli
