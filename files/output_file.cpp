#include "files/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "files/disk_full.h"
#include "files/links.h"
#include "text/byte_sink.h"
#include "text/path_text.h"

namespace files {
namespace {

constexpr mode_t kAllPermissions = 07777;
constexpr std::string_view kTemporaryStart = ".zkhost-";
constexpr std::string_view kTemporaryEnd = ".tmp";
// A limit for loops that try one name after the other. Some file systems report 0 links for every
// file, so that LockTemporary always returns false. After this many names OpenTemporary ignores
// that result, because it would never end otherwise.
constexpr unsigned kMostAttempts = 16;

// Locks the temporary file. The lock shows RemoveLeftovers in other processes that the file is
// still written. Returns false if another process removed the file before it was locked. A failure
// to lock is ignored, because RemoveLeftovers removes no file on a file system without locks.
bool LockTemporary(int file) {
    flock(file, LOCK_EX);
    struct stat status {};
    return fstat(file, &status) != 0 || status.st_nlink > 0;
}

// The name of a temporary file without kTemporaryEnd.
std::string TemporaryStem(pid_t process, unsigned number) {
    return fmt::format("{}{}-{}", kTemporaryStart, process, number);
}

// The end of the name of a Backup, after the stem of its file's name.
std::string BackupEnd(unsigned number) {
    return fmt::format("-old{}{}", number, kTemporaryEnd);
}

}  // namespace

OutputFile::OutputFile(const std::string& path, std::function<bool()> isCancelled)
    : path_(path),
      target_(FollowLinks(path)),
      buffer_(new char[kBufferSize]),
      isCancelled_(std::move(isCancelled)) {
    struct stat existing {};
    const bool exists = stat(target_.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode))
        throw text::WriteError(fmt::format("cannot write {}: not a regular file", path_));
    // Without this check, renaming would replace a write-protected file.
    if (exists && access(target_.c_str(), W_OK) != 0) Fail(errno);
    OpenTemporary();
    if (exists) fchmod(file_, existing.st_mode & kAllPermissions);
}

OutputFile::~OutputFile() {
    if (file_ >= 0) close(file_);
    if (!IsCommitted()) unlink(temporary_.c_str());
}

void OutputFile::OpenTemporary() {
    for (unsigned number = 0; file_ < 0; ++number) {
        const std::string name = fmt::format("{}{}{}", text::FolderPart(target_),
                                             TemporaryStem(getpid(), number), kTemporaryEnd);
        file_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file_ < 0 && errno != EEXIST) Fail(errno);
        if (file_ >= 0 && !LockTemporary(file_) && number < kMostAttempts) {
            close(file_);
            file_ = -1;
        }
        if (file_ >= 0) temporary_ = name;
    }
}

void OutputFile::FlushAndWrite(std::string_view bytes) {
    Flush();
    if (bytes.size() >= kBufferSize) {
        WriteUnbuffered(bytes);
        return;
    }
    bytes.copy(buffer_.get(), bytes.size());
    used_ = bytes.size();
}

void OutputFile::Flush() {
    const std::size_t size = used_;
    used_ = 0;
    WriteUnbuffered({buffer_.get(), size});
}

void OutputFile::WriteUnbuffered(std::string_view bytes) {
    while (!bytes.empty()) {
        CheckCancelled();
        const ssize_t written = write(file_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail(errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::uint64_t OutputFile::Skip(std::uint64_t size) {
    Flush();
    // The bytes are written in any order, so without this the disk would be full before anybody
    // noticed that they do not fit.
    struct statvfs space {};
    if (fstatvfs(file_, &space) == 0 && space.f_bavail < (missing_ + size) / space.f_frsize)
        Fail(ENOSPC);
    const off_t end = lseek(file_, static_cast<off_t>(size), SEEK_CUR);
    if (end < 0) Fail(errno);
    missing_ += size;
    return static_cast<std::uint64_t>(end) - size;
}

void OutputFile::WriteAt(std::uint64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        CheckCancelled();
        const ssize_t written =
            pwrite(file_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail(errno);
        offset += static_cast<std::uint64_t>(written);
        missing_ -= static_cast<std::uint64_t>(written);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutputFile::FinishWriting() {
    Flush();
    // Some file systems report write errors only when a file is closed. Closing a copy of the file
    // descriptor reports them too and keeps the lock.
    const int copy = dup(file_);
    if (copy < 0 || close(copy) != 0) Fail(errno);
    CheckCancelled();
    isFinished_ = true;
}

void OutputFile::Commit() {
    if (IsCommitted()) return;
    if (!isFinished_) FinishWriting();
    // The file is renamed before it is closed, so that it is locked until it has its final name.
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(errno);
    temporary_.clear();
    close(file_);
    file_ = -1;
}

OutputFile::Backup OutputFile::BackUpTarget() const {
    struct stat existing {};
    Backup backup;
    backup.hadFile = stat(target_.c_str(), &existing) == 0;
    const std::string stem = temporary_.substr(0, temporary_.size() - kTemporaryEnd.size());
    for (unsigned number = 0; backup.hadFile && number < kMostAttempts; ++number) {
        const std::string name = stem + BackupEnd(number);
        if (link(target_.c_str(), name.c_str()) == 0) {
            backup.name = name;
            break;
        }
        if (errno != EEXIST) break;  // for example on a file system without hard links
    }
    return backup;
}

void OutputFile::RestoreTarget(const Backup& backup) const {
    if (backup.name.empty()) {
        if (!backup.hadFile) unlink(target_.c_str());
        return;
    }
    std::rename(backup.name.c_str(), target_.c_str());
    // If both names still belong to the same file, rename does nothing. The backup's name is then
    // removed here.
    unlink(backup.name.c_str());
}

void OutputFile::CommitBoth(OutputFile& first, OutputFile& second) {
    first.FinishWriting();
    second.FinishWriting();
    const Backup backup = first.BackUpTarget();
    try {
        first.Commit();
        second.Commit();
    } catch (...) {
        first.RestoreTarget(backup);
        throw;
    }
    if (!backup.name.empty()) unlink(backup.name.c_str());
}

void OutputFile::CheckCancelled() const {
    if (isCancelled_ && isCancelled_()) throw text::WriteCancelled();
}

void OutputFile::Fail(int error) const {
    const std::string message = fmt::format("cannot write {}: {}", path_, std::strerror(error));
    if (IsDiskFull(error)) throw DiskFull(message);
    throw text::WriteError(message);
}

bool IsTemporaryName(std::string_view name) {
    return name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

std::vector<std::string> UsualTemporaryNames(pid_t process) {
    constexpr unsigned kMostFiles = 2;  // an output and its second file
    std::vector<std::string> names;
    for (unsigned number = 0; number < kMostFiles; ++number) {
        const std::string stem = TemporaryStem(process, number);
        names.push_back(fmt::format("{}{}", stem, kTemporaryEnd));
        names.push_back(stem + BackupEnd(0));
    }
    return names;
}

}  // namespace files
