#include "cli/check_arguments.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <set>

#include "cli/arguments.h"
#include "cli/check_files.h"
#include "cli/option_values.h"
#include "cli/standard_input.h"
#include "pairing/capture_kind.h"
#include "take/input_text.h"
#include "text/path_text.h"

namespace cli {
namespace {

// Throws UsageError if an output of --fix would overwrite another output or an input.
void RequireSeparateOutputs(const CheckRequest& request) {
    std::set<std::string> names;
    for (const CheckInput& file : InputsOf(request)) {
        const std::string name = take::PlainName(file.file);
        if (!names.insert(name).second)
            throw UsageError(fmt::format("--out-dir: two files are called {}", name));
        const std::string output =
            request.output.empty() ? request.outDir + '/' + name : request.output;
        for (const std::string& input : request.files)
            RequireNotOverwritten(input, output);
    }
}

}  // namespace

void DescribeCheck(CLI::App& check, CheckWords& words) {
    CheckRequest& request = words.request;
    check.add_option("--as", words.as);
    check.add_option("files", request.files)->required();
    check.add_flag("--json", request.json);
    check.add_flag("--strict", request.strict);
    check.add_flag("--fix", request.fix);
    check.add_option("-o,--output", request.output);
    check.add_option("--out-dir", request.outDir);
    check.add_option("--encoding", request.encoding);
}

CheckRequest BuildCheckRequest(CheckWords& words) {
    CheckRequest& request = words.request;
    request.as = ParseAs(words.as, request.files);
    for (const std::string& file : request.files) {
        if (IsStandardInput(file) && !request.as)
            throw UsageError("-: --as bvh, asf or amc must say what the standard input is");
        if (!IsStandardInput(file) && !pairing::KindOf(file))
            throw UsageError(fmt::format("{}: not a .bvh, .asf or .amc file", file));
    }
    RequireKnownEncoding(request.encoding);
    const bool hasOutput = !request.output.empty();
    const bool hasFolder = !request.outDir.empty();
    if (!request.fix && (hasOutput || hasFolder)) throw UsageError("-o and --out-dir need --fix");
    if (!request.fix) return request;
    if (hasOutput == hasFolder)
        throw UsageError("--fix needs either -o OUT, for one file, or --out-dir DIR");
    if (hasOutput && request.files.size() > 1)
        throw UsageError("-o is for one file; use --out-dir DIR for several");
    if (hasOutput) RequireFileName("-o", request.output);
    if (text::IsGzipName(request.output))
        throw UsageError(
            fmt::format("-o {}: --fix writes plain text; leave out .gz", request.output));
    RequireSeparateOutputs(request);
    return request;
}

}  // namespace cli
