#include "dataset/freshness.h"

#include <algorithm>
#include <compare>
#include <fmt/format.h>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace dataset {
namespace {

using Status = struct stat;

// Returns nullopt if the path does not lead to a regular file.
std::optional<Status> StatusOf(const std::string& path) {
    Status status{};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return status;
}

struct FileTime {
    time_t seconds = 0;
    long nanoseconds = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the check reports a 0 that the compiler generates.
    auto operator<=>(const FileTime&) const = default;
};

FileTime TimeOf(const Status& status) {
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace

bool IsUpToDate(const Job& job, const std::string& outDir) {
    std::vector<std::string> inputs = {job.source};
    if (!job.skeleton.empty()) inputs.push_back(job.skeleton);
    FileTime newest;
    for (const std::string& input : inputs) {
        const auto status = StatusOf(input);
        if (!status) return false;
        newest = std::max(newest, TimeOf(*status));
    }
    const std::vector<std::string> outputs = FilesOf(job);
    return std::all_of(outputs.begin(), outputs.end(), [&](const std::string& output) {
        const auto status = StatusOf(fmt::format("{}/{}", outDir, output));
        return status && status->st_size > 0 && TimeOf(*status) > newest;
    });
}

std::string SizesOf(const Job& job, const std::string& outDir) {
    std::string sizes;
    for (const std::string& output : FilesOf(job)) {
        const auto status = StatusOf(fmt::format("{}/{}", outDir, output));
        if (!status) return {};
        if (!sizes.empty()) sizes += ' ';
        sizes += std::to_string(status->st_size);
    }
    return sizes;
}

}  // namespace dataset
