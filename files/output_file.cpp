#include "files/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/links.h"
#include "text/byte_sink.h"
#include "text/path_text.h"

namespace files {
namespace {

constexpr mode_t kAllPermissions = 07777;
constexpr std::string_view kTemporaryStart = ".zkhost-";
constexpr std::string_view kTemporaryEnd = ".tmp";
// There are file systems that count no links.
constexpr unsigned kHoldAttempts = 16;

// Shows that the file is not abandoned. False where it was taken for that before, and removed.
// (Where files cannot be locked, none is taken for abandoned.)
bool HoldTemporary(int file) {
    flock(file, LOCK_EX);
    struct stat status {};
    return fstat(file, &status) != 0 || status.st_nlink > 0;
}

}  // namespace

OutputFile::OutputFile(const std::string& path, std::function<bool()> isCancelled)
    : path_(path),
      target_(FollowLinks(path)),
      buffer_(kBufferSize),
      isCancelled_(std::move(isCancelled)) {
    struct stat existing {};
    const bool exists = stat(target_.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode))
        throw text::WriteError(fmt::format("cannot write {}: not a regular file", path_));
    // Renaming would replace a write-protected file without asking.
    if (exists && access(target_.c_str(), W_OK) != 0) Fail(errno);
    OpenTemporary();
    if (exists) fchmod(file_, existing.st_mode & kAllPermissions);
}

OutputFile::~OutputFile() {
    if (file_ >= 0) close(file_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::OpenTemporary() {
    const std::string stem =
        fmt::format("{}{}{}-", text::FolderPart(target_), kTemporaryStart, getpid());
    for (unsigned number = 0; file_ < 0; ++number) {
        const std::string name = fmt::format("{}{}{}", stem, number, kTemporaryEnd);
        file_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file_ < 0 && errno != EEXIST) Fail(errno);
        if (file_ >= 0 && !HoldTemporary(file_) && number < kHoldAttempts) {
            close(file_);
            file_ = -1;
        }
        if (file_ >= 0) temporary_ = name;
    }
}

void OutputFile::WriteAcross(std::string_view bytes) {
    Flush();
    if (bytes.size() >= kBufferSize) {
        WriteThrough(bytes);
        return;
    }
    bytes.copy(buffer_.data(), bytes.size());
    used_ = bytes.size();
}

void OutputFile::Flush() {
    const std::size_t size = used_;
    used_ = 0;
    WriteThrough({buffer_.data(), size});
}

void OutputFile::WriteThrough(std::string_view bytes) {
    while (!bytes.empty()) {
        StopWhereCancelled();
        const ssize_t written = write(file_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail(errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutputFile::Settle() {
    Flush();
    // What a file system puts off until a file is closed fails now; its lock stays.
    const int copy = dup(file_);
    if (copy < 0 || close(copy) != 0) Fail(errno);
    StopWhereCancelled();
    settled_ = true;
}

void OutputFile::Commit() {
    if (temporary_.empty()) return;
    if (!settled_) Settle();
    // Still open, and so still held.
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(errno);
    temporary_.clear();
    close(file_);
    file_ = -1;
}

OutputFile::Kept OutputFile::KeepOld() const {
    struct stat existing {};
    Kept kept;
    kept.exists = stat(target_.c_str(), &existing) == 0;
    const std::string stem =
        temporary_.substr(0, temporary_.size() - kTemporaryEnd.size()) + "-old";
    for (unsigned number = 0; kept.exists && number < kHoldAttempts; ++number) {
        const std::string name = fmt::format("{}{}{}", stem, number, kTemporaryEnd);
        if (link(target_.c_str(), name.c_str()) == 0) {
            kept.name = name;
            break;
        }
        if (errno != EEXIST) break;  // a file system without links
    }
    return kept;
}

void OutputFile::PutBack(const Kept& kept) const {
    if (kept.name.empty()) {
        if (!kept.exists) unlink(target_.c_str());
        return;
    }
    std::rename(kept.name.c_str(), target_.c_str());
    // Two names of one file stay two when one is renamed to the other.
    unlink(kept.name.c_str());
}

void OutputFile::CommitBoth(OutputFile& first, OutputFile& second) {
    first.Settle();
    second.Settle();
    const Kept kept = first.KeepOld();
    try {
        first.Commit();
        second.Commit();
    } catch (...) {
        first.PutBack(kept);
        throw;
    }
    if (!kept.name.empty()) unlink(kept.name.c_str());
}

void OutputFile::StopWhereCancelled() const {
    if (isCancelled_ && isCancelled_()) throw text::WriteCancelled();
}

void OutputFile::Fail(int error) const {
    throw text::WriteError(fmt::format("cannot write {}: {}", path_, std::strerror(error)));
}

bool IsTemporaryName(std::string_view name) {
    return name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

}  // namespace files
