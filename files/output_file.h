// Writes a file that gets its final name only after all its bytes were written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "text/byte_sink.h"

namespace files {

// Writes through a buffer to a temporary file in the folder of the final file. Commit gives the
// temporary file its final name. If Commit is not called or fails, the destructor removes the
// temporary file, and a file that already had the final name is unchanged. If `path` is a symbolic
// link, the file that it leads to is replaced. The functions that write throw text::WriteError or
// text::WriteCancelled. The constructor throws text::WriteError, for example if `path` exists and
// is not a regular file. If the file system has no room, the WriteError is a DiskFull.
class OutputFile final : public text::ByteSink {
  public:
    // `isCancelled` is called before each write to the temporary file and in FinishWriting. It
    // returns whether the user wants to stop. If it is empty, writing is never cancelled. It is
    // called on the thread that writes; exporters write on several, but not at the same time.
    explicit OutputFile(const std::string& path, std::function<bool()> isCancelled = nullptr);
    ~OutputFile() override;

    void Write(std::string_view bytes) override {
        if (bytes.size() > kBufferSize - used_) {
            FlushAndWrite(bytes);
            return;
        }
        bytes.copy(buffer_.get() + used_, bytes.size());
        used_ += bytes.size();
    }
    bool CanSkip() const override { return true; }
    std::uint64_t Skip(std::uint64_t size) override;
    void WriteAt(std::uint64_t offset, std::string_view bytes) override;
    // Writes the rest of the buffer to the temporary file and checks for write errors. After that
    // only the renaming in Commit can fail.
    void FinishWriting();
    // Calls FinishWriting if the caller has not called it, and gives the file its final name. A
    // second call does nothing.
    void Commit();
    // Commits both files or neither. If the second file cannot be renamed, the first file is
    // removed, and the file that it replaced is restored. On a file system without hard links a
    // replaced file cannot be restored; in that case the first file keeps its final name.
    static void CommitBoth(OutputFile& first, OutputFile& second);

    static constexpr std::size_t kBufferSize = std::size_t{64} << 10;  // bytes

  private:
    // A second name (hard link) for the file that already has the output's final name. After Commit
    // has replaced that file, RestoreTarget can restore it from the second name.
    struct Backup {
        bool hadFile = false;  // whether a file already had the final name
        std::string name;      // path of the second name; empty if there is none
    };

    // Commit clears `temporary_` after it has renamed the temporary file.
    bool IsCommitted() const { return temporary_.empty(); }
    void OpenTemporary();
    Backup BackUpTarget() const;
    // Undoes Commit: the file of the backup gets the final name again. If no file had the final
    // name before, the new file is removed.
    void RestoreTarget(const Backup& backup) const;
    // Writes bytes for which the buffer has no room.
    void FlushAndWrite(std::string_view bytes);
    void Flush();
    void WriteUnbuffered(std::string_view bytes);
    // Throws text::WriteCancelled if the user wants to stop.
    void CheckCancelled() const;
    // Throws text::WriteError, or DiskFull, with the text of the error number.
    [[noreturn]] void Fail(int error) const;

    std::string path_;       // the path that the caller gave, for messages
    std::string target_;     // path of the final file, after symbolic links were followed
    std::string temporary_;  // path of the temporary file; empty after Commit
    int file_ = -1;          // descriptor of the open temporary file; -1 after Commit
    // kBufferSize bytes. They are not set at first, so only the part that is used takes memory.
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;  // number of bytes in the buffer that are not yet written to the file
    std::uint64_t missing_ = 0;  // number of bytes that were left out and are not yet written
    bool isFinished_ = false;    // FinishWriting has succeeded
    std::function<bool()> isCancelled_;
};

// Whether a file with this name (without a folder) is the temporary file of an OutputFile. The
// OutputFile holds a lock (flock) on its temporary file until Commit or the destructor.
bool IsTemporaryName(std::string_view name);

// The names (without a folder) of the temporary files that a process of this program can have in a
// folder at the same time, if none of these names was in use before.
std::vector<std::string> UsualTemporaryNames(pid_t process);

}  // namespace files
