// Texts that are handed to the plug-in in the stead of files, for as long as it reads them.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

#include "text/storage.h"

namespace files {

// A folder that only this user may enter, in memory where the system has room there. It and the
// files in it are removed at the end of this object's life; a program that wants them removed where
// a signal ends it before has a MendedFolderWatch. A process that is killed leaves them to
// RemoveMendedFolders. One of them lives at a time.
class MendedFolder final : public text::TemporaryFolder {
  public:
    // `bytes`: what will be written to it. Throws text::WriteError where no folder can be made.
    explicit MendedFolder(std::size_t bytes);
    ~MendedFolder() override;

    // At most two files.
    std::string Write(const std::string& baseName, std::string_view text) override;

  private:
    std::string folder_;
};

// Removes what stands in the folder of this process, if there is one. Callable from a signal
// handler.
void RemoveMendedFolder() noexcept;

// Removes the folders that a process of that number left.
void RemoveMendedFolders(pid_t process);

}  // namespace files
