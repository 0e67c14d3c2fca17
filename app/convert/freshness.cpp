#include "app/convert/freshness.h"

#include <algorithm>
#include <compare>
#include <optional>
#include <sys/stat.h>
#include <vector>

#include "app/convert/output_names.h"

namespace app {
namespace {

struct FileTime {
    time_t seconds = 0;
    long nanoseconds = 0;
    auto operator<=>(const FileTime&) const = default;
};

std::optional<FileTime> TimeOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return FileTime{status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace

bool IsUpToDate(const Job& job, const std::string& outDir) {
    std::vector<std::string> inputs = {job.source};
    if (!job.skeleton.empty()) inputs.push_back(job.skeleton);
    FileTime newest;
    for (const std::string& input : inputs) {
        const auto time = TimeOf(input);
        if (!time) return false;
        newest = std::max(newest, *time);
    }
    const std::vector<std::string> outputs = FilesOf(job.output);
    return std::all_of(outputs.begin(), outputs.end(), [&](const std::string& output) {
        const auto time = TimeOf(outDir + '/' + output);
        return time && *time > newest;
    });
}

}  // namespace app
