#include "dataset/output_folder.h"

#include <system_error>

namespace dataset {

OutputFolder::OutputFolder(const std::string& path) {
    try {
        std::filesystem::path folder;
        for (const std::filesystem::path& part : std::filesystem::path(path)) {
            folder /= part;
            if (!std::filesystem::is_directory(folder) && std::filesystem::create_directory(folder))
                created_.push_back(folder);
        }
    } catch (...) {
        RemoveCreated();
        throw;
    }
}

OutputFolder::~OutputFolder() {
    RemoveCreated();
}

void OutputFolder::RemoveCreated() const {
    std::error_code ignored;
    for (auto folder = created_.rbegin(); folder != created_.rend(); ++folder)
        std::filesystem::remove(*folder, ignored);
}

}  // namespace dataset
