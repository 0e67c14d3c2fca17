#include "dataset/output_names.h"

#include <fmt/format.h>
#include <unordered_map>
#include <unordered_set>

#include "text/case_folding.h"
#include "text/path_text.h"

namespace dataset {
namespace {

// The jobs, grouped by output path. The key is the output path in folded case.
using JobsByOutput = std::unordered_map<std::wstring, std::vector<Job*>>;

JobsByOutput GroupByOutput(std::vector<Job>& jobs) {
    JobsByOutput groups;
    for (Job& job : jobs)
        if (job.refusal.empty()) groups[text::FoldCase(job.output)].push_back(&job);
    return groups;
}

struct Extensions {
    std::string_view output;
    std::string_view sideOutput;  // empty: the outputs have no second file
};

void NameOutput(Job& job, std::string_view stem, const Extensions& extensions) {
    job.output = fmt::format("{}{}", stem, extensions.output);
    job.sideOutput =
        extensions.sideOutput.empty() ? "" : fmt::format("{}{}", stem, extensions.sideOutput);
}

void KeepSourceExtensions(std::vector<Job>& jobs, const Extensions& extensions) {
    for (const auto& [output, sharers] : GroupByOutput(jobs)) {
        if (sharers.size() < 2 && output != text::FoldCase(kIndexName)) continue;
        for (Job* job : sharers)
            NameOutput(*job, job->relativePath, extensions);
    }
}

void RefuseSharedNames(std::vector<Job>& jobs) {
    for (const auto& [output, sharers] : GroupByOutput(jobs)) {
        if (sharers.size() < 2) continue;
        for (Job* job : sharers) {
            const Job* other = job == sharers[0] ? sharers[1] : sharers[0];
            job->refusal = fmt::format("its output {} would collide with that of {}", job->output,
                                       other->source);
        }
    }
}

// Returns all folders that contain outputs, and all folders above these folders. The paths are in
// folded case and have no slash at the end.
std::unordered_set<std::wstring> FoldersOf(const std::vector<Job>& jobs) {
    std::unordered_set<std::wstring> folders;
    for (const Job& job : jobs) {
        std::string_view folder = text::FolderPart(job.output);
        while (!folder.empty() &&
               folders.insert(text::FoldCase(folder.substr(0, folder.size() - 1))).second)
            folder = text::FolderPart(folder.substr(0, folder.size() - 1));
    }
    return folders;
}

void RefuseNamesOfFolders(std::vector<Job>& jobs) {
    const std::unordered_set<std::wstring> folders = FoldersOf(jobs);
    for (Job& job : jobs) {
        if (!job.refusal.empty()) continue;
        for (const std::string& file : FilesOf(job))
            if (folders.contains(text::FoldCase(file)))
                job.refusal = fmt::format("its output {} is a folder of other outputs", file);
    }
}

}  // namespace

void NameOutputs(std::vector<Job>& jobs, std::string_view extension,
                 std::string_view sideExtension) {
    const Extensions extensions{extension, sideExtension};
    for (Job& job : jobs)
        if (job.refusal.empty())
            NameOutput(job, text::WithoutExtension(job.relativePath), extensions);
    KeepSourceExtensions(jobs, extensions);
    RefuseSharedNames(jobs);
    RefuseNamesOfFolders(jobs);
}

}  // namespace dataset
