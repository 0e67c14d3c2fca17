#include "dataset/job_arguments.h"

#include "dataset/capture_files.h"
#include "pairing/capture_kind.h"
#include "text/shell_words.h"

namespace dataset {
namespace {

// Puts "./" before a path that begins with a dash, because zkhost would read it as an option.
std::string AsFile(const std::string& path) {
    return path.starts_with('-') ? "./" + path : path;
}

// Returns the extensions of the formats, such as ".glb.npz".
std::string Extensions(const Request& request) {
    std::string extensions;
    for (const OutputFormat& format : request.formats)
        extensions += format.extension;
    return extensions;
}

void Append(std::vector<std::string>& words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
}

}  // namespace

std::vector<std::string> ImportArguments(const Job& job, const Request& request, bool withOutput) {
    std::vector<std::string> words = {"import"};
    if (!job.skeleton.empty()) words.push_back(AsFile(job.skeleton));
    words.push_back(AsFile(job.source));
    Append(words, request.importOptions);
    if (pairing::IsAcclaim(job.source)) Append(words, request.acclaimOptions);
    if (!request.plugin.empty()) words.push_back("--plugin=" + request.plugin);
    // The JSON record contains the events of the progress bar. Without this option, a record would
    // differ depending on whether stderr is a terminal.
    words.emplace_back("--progress=off");
    if (withOutput && request.noClobber) words.emplace_back("--no-clobber");
    if (withOutput && request.hashSources) words.emplace_back("--provenance");
    if (withOutput) words.emplace_back("--make-folders");
    if (withOutput)
        for (const std::string& output : job.outputs)
            Append(words, {"-o", AsFile(request.outDir + '/' + output)});
    return words;
}

std::string OptionsLine(const Request& request) {
    std::vector<std::string> words = {"zkhost", ZKHOST_VERSION, Extensions(request),
                                      request.skeleton, request.plugin};
    Append(words, request.importOptions);
    words.emplace_back("--");
    Append(words, request.acclaimOptions);
    return text::ShellLine(words);
}

}  // namespace dataset
