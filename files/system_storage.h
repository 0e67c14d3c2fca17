// Implements text::Storage with the file system.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "text/api.h"
#include "text/storage.h"

namespace files {

// Read maps files into memory (see MappedFile). MakeTemporaryFolder creates folders that only this
// user may enter (see MendedFolder).
class ZKMOCAP_API SystemStorage final : public text::Storage {
  public:
    // With `removeOnSignals`, a temporary folder is also removed if a signal ends the process (see
    // MendedFolderWatch). Only a program may ask for this, because it needs signal handlers, and a
    // library must not install any.
    explicit SystemStorage(bool removeOnSignals = false) : removeOnSignals_(removeOnSignals) {}

    std::unique_ptr<text::StoredText> Read(const std::string& path) override;
    std::unique_ptr<text::TemporaryFolder> MakeTemporaryFolder(std::uint64_t bytes) override;

  private:
    bool removeOnSignals_;
};

}  // namespace files
