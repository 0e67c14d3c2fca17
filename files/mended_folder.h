// Stores mended texts as temporary files, which the plug-in reads instead of the user's files.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

#include "text/storage.h"

namespace files {

// A temporary folder that only this user may enter. It is in memory (/dev/shm) if there is room,
// otherwise in the folder that TMPDIR names, or in /tmp. The destructor removes it with its files.
// If a signal may end the process before, a MendedFolderWatch removes it; after SIGKILL another
// process removes it with RemoveMendedFolders. Only one object may exist at a time.
class MendedFolder final : public text::TemporaryFolder {
  public:
    // `bytes` is the number of bytes that will be written. Throws text::WriteError if no folder can
    // be created.
    explicit MendedFolder(std::size_t bytes);
    ~MendedFolder() override;

    // Writes one of at most two files and returns its path. Throws text::WriteError.
    std::string Write(const std::string& baseName, std::string_view text) override;

  private:
    std::string folder_;
};

// Removes the folder of this process and its files, if there are any. May be called from a signal
// handler.
void RemoveMendedFolder() noexcept;

// Removes the folders that the process with this id left. The process must have ended.
void RemoveMendedFolders(pid_t process);

}  // namespace files
