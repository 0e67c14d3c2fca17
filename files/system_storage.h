// Implements text::Storage with the file system.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "text/api.h"
#include "text/storage.h"

namespace files {

// Files that are read are mapped into memory (MappedFile). Only this user may enter the temporary
// folders (MendedFolder).
class ZKMOCAP_API SystemStorage final : public text::Storage {
  public:
    // With `removeOnSignals`, a temporary folder is also removed if a signal ends the process
    // (MendedFolderWatch). Only programs may ask for it, because it sets signal handlers.
    explicit SystemStorage(bool removeOnSignals = false) : removeOnSignals_(removeOnSignals) {}

    std::unique_ptr<text::StoredText> Read(const std::string& path) override;
    std::unique_ptr<text::TemporaryFolder> MakeTemporaryFolder(std::size_t bytes) override;

  private:
    bool removeOnSignals_;
};

}  // namespace files
