#include "text/storage.h"

namespace text {

std::string TemporaryFolder::Write(const std::string& baseName, std::string_view text) {
    const std::unique_ptr<TemporaryFile> file = Create(baseName);
    file->Write(text);
    file->Close();
    return file->Path();
}

}  // namespace text
