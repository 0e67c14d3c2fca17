#include "files/system_storage.h"

#include "files/mapped_file.h"
#include "files/mended_folder.h"
#include "files/mended_watch.h"
#include "text/storage.h"

namespace files {
namespace {

// A temporary folder that is also removed if a signal ends the process.
class WatchedFolder final : public text::TemporaryFolder {
  public:
    explicit WatchedFolder(std::uint64_t bytes) : folder_(bytes) {}
    std::unique_ptr<text::TemporaryFile> Create(const std::string& baseName) override {
        return folder_.Create(baseName);
    }

  private:
    MendedFolderWatch watch_;  // declared first, so that it is destroyed after the folder
    MendedFolder folder_;
};

}  // namespace

std::unique_ptr<text::StoredText> SystemStorage::Read(const std::string& path) {
    return std::make_unique<MappedFile>(path);
}

std::unique_ptr<text::TemporaryFolder> SystemStorage::MakeTemporaryFolder(std::uint64_t bytes) {
    if (removeOnSignals_) return std::make_unique<WatchedFolder>(bytes);
    return std::make_unique<MendedFolder>(bytes);
}

}  // namespace files
