// The file system as a program sees it.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "text/api.h"
#include "text/storage.h"

namespace files {

// Maps the files it reads; temporary folders are of this user alone (MendedFolder).
class ZKMOCAP_API SystemStorage final : public text::Storage {
  public:
    // `removeOnSignals`: temporary folders are removed too where a signal ends the process while
    // one exists (MendedFolderWatch), for programs that may handle signals.
    explicit SystemStorage(bool removeOnSignals = false) : removeOnSignals_(removeOnSignals) {}

    std::unique_ptr<text::StoredText> Read(const std::string& path) override;
    std::unique_ptr<text::TemporaryFolder> MakeTemporaryFolder(std::size_t bytes) override;

  private:
    bool removeOnSignals_;
};

}  // namespace files
