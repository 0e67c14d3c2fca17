// Stores mended texts (corrected copies of the user's files) as temporary files. The plug-in reads
// the temporary files instead of the user's files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <sys/types.h>

#include "text/storage.h"

namespace files {

// A temporary folder that only this user may enter. It is created in memory (/dev/shm) if there is
// enough space. Otherwise it is created in the folder that the environment variable TMPDIR names,
// or in /tmp if TMPDIR is not set. The destructor removes the folder with its files. If a signal
// ends the process, the destructor does not run; a MendedFolderWatch removes the folder in that
// case. No process can handle SIGKILL; another process can call RemoveMendedFolders afterwards.
// Only one object of this class may exist at a time.
class MendedFolder final : public text::TemporaryFolder {
  public:
    // `bytes` is about the number of bytes that all files together will have. Throws
    // text::WriteError if no folder can be created.
    explicit MendedFolder(std::uint64_t bytes);
    ~MendedFolder() override;

    // Creates a file with this name. At most two files can be created. Throws text::WriteError.
    std::unique_ptr<text::TemporaryFile> Create(const std::string& baseName) override;

  private:
    std::string folder_;
};

// Removes the folder of this process with its files. Does nothing if there is no folder. May be
// called from a signal handler.
void RemoveMendedFolder() noexcept;

// Removes the folders that the process with this id left. That process must have ended, and its
// TMPDIR must have been the same as that of the calling process.
void RemoveMendedFolders(pid_t process);

}  // namespace files
