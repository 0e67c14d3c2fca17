#include "dataset/jobs.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <sys/stat.h>
#include <unordered_map>
#include <unordered_set>

#include "dataset/output_names.h"
#include "dataset/request.h"
#include "pairing/capture_kind.h"
#include "pairing/skeleton_pairing.h"
#include "text/path_text.h"

namespace dataset {
namespace {

std::optional<FileId> IdOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileId{status.st_dev, status.st_ino};
}

// Makes a job for every .bvh file, for every .amc file, and for every .asf file that is not the
// skeleton of an .amc file. Also makes a refused job for every file or folder that cannot be read.
class JobMaker {
  public:
    explicit JobMaker(const std::string& skeleton) : skeleton_(skeleton) {}

    std::vector<Job> Make(const CaptureTree& tree) {
        std::vector<Job> jobs;
        for (const CaptureFile& file : tree.files)
            if (file.kind == pairing::CaptureKind::Motion) jobs.push_back(MotionJob(file));
        for (const CaptureFile& file : tree.files) {
            const bool isPaired =
                file.kind == pairing::CaptureKind::Skeleton && IsPaired(file.path);
            if (file.kind != pairing::CaptureKind::Motion && !isPaired)
                jobs.push_back({file.path, "", file.relativePath, {}, ""});
        }
        for (const CaptureProblem& problem : tree.problems)
            jobs.push_back({problem.path, "", "", {}, problem.error});
        return jobs;
    }

  private:
    Job MotionJob(const CaptureFile& motion) {
        Job job{motion.path, skeleton_, motion.relativePath, {}, ""};
        if (skeleton_.empty()) {
            const std::string folder(text::FolderPart(motion.path));
            const pairing::Pairing pairing = SkeletonsOf(folder).Find(text::NamePart(motion.path));
            job.refusal = pairing.problem;
            if (pairing.skeleton.empty()) return job;
            job.skeleton = folder + pairing.skeleton;
        }
        if (const auto id = IdOf(job.skeleton)) paired_.insert(*id);
        return job;
    }

    bool IsPaired(const std::string& path) const {
        const auto id = IdOf(path);
        return id && paired_.contains(*id);
    }

    const pairing::Skeletons& SkeletonsOf(const std::string& folder) {
        const auto entry = skeletons_.find(folder);
        if (entry != skeletons_.end()) return entry->second;
        return skeletons_.emplace(folder, SkeletonsIn(folder)).first->second;
    }

    const std::string& skeleton_;  // the .asf for every .amc; empty: each .amc finds its own
    std::set<FileId> paired_;      // the .asf files that are the skeleton of an .amc file
    std::unordered_map<std::string, pairing::Skeletons> skeletons_;  // the key is the folder
};

// `outDir` ends with a slash here and in the functions below.
void RefuseToOverwriteInputs(std::vector<Job>& jobs, const std::string& outDir) {
    std::map<FileId, const std::string*> inputs;
    for (const Job& job : jobs)
        for (const std::string* file : {&job.source, &job.skeleton})
            if (const auto id = file->empty() ? std::nullopt : IdOf(*file))
                inputs.emplace(*id, file);
    for (Job& job : jobs) {
        if (!job.refusal.empty()) continue;
        for (const std::string& file : FilesOf(job)) {
            const auto id = IdOf(outDir + file);
            const auto input = id ? inputs.find(*id) : inputs.end();
            if (input != inputs.end())
                job.refusal = fmt::format("its output would overwrite {}", *input->second);
        }
    }
}

// Refuses outputs whose path is a symbolic link. The program, not the user, chose these paths, so
// it must not write to the file that a link leads to.
void RefuseLinks(std::vector<Job>& jobs, const std::string& outDir) {
    for (Job& job : jobs) {
        if (!job.refusal.empty()) continue;
        for (const std::string& file : FilesOf(job)) {
            std::error_code unreadable;
            if (std::filesystem::is_symlink(outDir + file, unreadable))
                job.refusal = fmt::format("its output {} is a symbolic link", file);
        }
    }
}

// Refuses outputs that would be in a searched folder. It is called if outputs are capture
// files, because the next run would read them as inputs.
void RefuseToAddInputs(std::vector<Job>& jobs, const std::string& outDir,
                       const std::set<FileId>& searched) {
    std::unordered_map<std::string, bool> isSearched;  // the key is the output's folder
    for (Job& job : jobs) {
        if (!job.refusal.empty()) continue;
        const std::string folder(FolderOf(job));
        const auto [entry, isNew] = isSearched.try_emplace(folder, false);
        if (isNew) {
            // A run also searches the folders below a searched folder. If the output's folder does
            // not exist yet, it is enough to check the nearest existing folder above it.
            std::string_view existing = folder;
            auto id = IdOf(outDir + folder);
            while (!id && !existing.empty()) {
                existing = text::FolderPart(existing.substr(0, existing.size() - 1));
                id = IdOf(outDir + std::string(existing));
            }
            entry->second = id && searched.contains(*id);
        }
        if (entry->second)
            job.refusal =
                "its output would be in an input folder and become an input of the next run";
    }
}

}  // namespace

std::vector<std::string> FilesOf(const Job& job) {
    std::vector<std::string> files = job.outputs;
    files.insert(files.end(), job.sideOutputs.begin(), job.sideOutputs.end());
    return files;
}

std::string_view FolderOf(const Job& job) {
    return job.outputs.empty() ? std::string_view() : text::FolderPart(job.outputs.front());
}

std::vector<Job> ListJobs(const Request& request) {
    if (!request.skeleton.empty() && !IdOf(request.skeleton))
        throw RequestError(fmt::format("--asf {}: {}", request.skeleton, std::strerror(errno)));
    const CaptureTree tree = FindCaptures(request.paths, request.outDir);
    std::vector<Job> jobs = JobMaker(request.skeleton).Make(tree);
    if (jobs.empty()) throw RequestError("nothing to convert: there is no .bvh, .asf or .amc file");
    std::sort(jobs.begin(), jobs.end(),
              [](const Job& a, const Job& b) { return a.source < b.source; });
    NameOutputs(jobs, request.formats);
    const std::string outDir = request.outDir + '/';
    RefuseToOverwriteInputs(jobs, outDir);
    RefuseLinks(jobs, outDir);
    const bool areCaptures = std::any_of(
        request.formats.begin(), request.formats.end(),
        [](const OutputFormat& format) { return pairing::KindOf(format.extension).has_value(); });
    if (areCaptures) RefuseToAddInputs(jobs, outDir, tree.folders);
    return jobs;
}

}  // namespace dataset
