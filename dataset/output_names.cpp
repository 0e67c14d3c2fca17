#include "dataset/output_names.h"

#include <fmt/format.h>
#include <unordered_map>
#include <unordered_set>

#include "text/case_folding.h"
#include "text/path_text.h"

namespace dataset {
namespace {

using Takers = std::unordered_map<std::wstring, std::vector<Job*>>;

Takers TakersOf(std::vector<Job>& jobs) {
    Takers takers;
    for (Job& job : jobs)
        if (job.refusal.empty()) takers[text::FoldCase(job.output)].push_back(&job);
    return takers;
}

// What the outputs' names end in.
struct Endings {
    std::string_view extension;
    std::string_view sideExtension;  // empty: there is no file beside them
};

void NameOutput(Job& job, std::string_view stem, const Endings& endings) {
    job.output = fmt::format("{}{}", stem, endings.extension);
    job.sideOutput =
        endings.sideExtension.empty() ? "" : fmt::format("{}{}", stem, endings.sideExtension);
}

void KeepSourceExtensions(std::vector<Job>& jobs, const Endings& endings) {
    for (const auto& [output, takers] : TakersOf(jobs)) {
        if (takers.size() < 2 && output != text::FoldCase(kIndexName)) continue;
        for (Job* job : takers)
            NameOutput(*job, job->place, endings);
    }
}

void RefuseSharedNames(std::vector<Job>& jobs) {
    for (const auto& [output, takers] : TakersOf(jobs)) {
        if (takers.size() < 2) continue;
        for (Job* job : takers) {
            const Job* other = job == takers[0] ? takers[1] : takers[0];
            job->refusal = fmt::format("its output {} would collide with that of {}", job->output,
                                       other->source);
        }
    }
}

// The folders that outputs stand in, each folded, without a slash at the end.
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
    const Endings endings{extension, sideExtension};
    for (Job& job : jobs)
        if (job.refusal.empty()) NameOutput(job, text::WithoutExtension(job.place), endings);
    KeepSourceExtensions(jobs, endings);
    RefuseSharedNames(jobs);
    RefuseNamesOfFolders(jobs);
}

}  // namespace dataset
