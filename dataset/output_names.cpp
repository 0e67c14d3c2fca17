#include "dataset/output_names.h"

#include <fmt/format.h>
#include <unordered_map>
#include <unordered_set>

#include "text/case_folding.h"
#include "text/path_text.h"

namespace dataset {
namespace {

// The jobs, grouped by the paths of the files that they write. The keys are in folded case. A job
// is in the group of each of its files.
using JobsByFile = std::unordered_map<std::wstring, std::vector<Job*>>;

JobsByFile GroupByFile(std::vector<Job>& jobs) {
    JobsByFile groups;
    for (Job& job : jobs) {
        if (!job.refusal.empty()) continue;
        for (const std::string& file : FilesOf(job))
            groups[text::FoldCase(file)].push_back(&job);
    }
    return groups;
}

void NameOutputsOf(Job& job, std::string_view stem, const std::vector<OutputFormat>& formats) {
    job.outputs.clear();
    job.sideOutputs.clear();
    for (const OutputFormat& format : formats) {
        job.outputs.push_back(fmt::format("{}{}", stem, format.extension));
        if (!format.sideExtension.empty())
            job.sideOutputs.push_back(fmt::format("{}{}", stem, format.sideExtension));
    }
}

void KeepSourceExtensions(std::vector<Job>& jobs, const std::vector<OutputFormat>& formats) {
    for (const auto& [file, sharers] : GroupByFile(jobs)) {
        if (sharers.size() < 2 && file != text::FoldCase(kIndexName)) continue;
        for (Job* job : sharers)
            NameOutputsOf(*job, job->relativePath, formats);
    }
}

void RefuseSharedNames(std::vector<Job>& jobs) {
    for (const auto& [file, sharers] : GroupByFile(jobs)) {
        if (sharers.size() < 2) continue;
        for (Job* job : sharers) {
            const Job* other = job == sharers[0] ? sharers[1] : sharers[0];
            job->refusal = other == job ? "two of its outputs would write the same file"
                                        : fmt::format("its output {} would collide with that of {}",
                                                      job->outputs.front(), other->source);
        }
    }
}

// Returns all folders that contain outputs, and all folders above these folders. The paths are in
// folded case and have no slash at the end.
std::unordered_set<std::wstring> FoldersOf(const std::vector<Job>& jobs) {
    std::unordered_set<std::wstring> folders;
    for (const Job& job : jobs) {
        std::string_view folder = FolderOf(job);
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

void NameOutputs(std::vector<Job>& jobs, const std::vector<OutputFormat>& formats) {
    for (Job& job : jobs)
        if (job.refusal.empty())
            NameOutputsOf(job, text::WithoutExtension(text::WithoutGzip(job.relativePath)),
                          formats);
    KeepSourceExtensions(jobs, formats);
    RefuseSharedNames(jobs);
    RefuseNamesOfFolders(jobs);
}

}  // namespace dataset
