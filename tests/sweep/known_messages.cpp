#include "tests/sweep/known_messages.h"

#include <filesystem>

#include "tests/support/files.h"

namespace sweep {
namespace {

void AddTexts(const std::filesystem::path& source, std::set<std::string>& messages) {
    const std::string code = support::ReadText(source);
    for (std::size_t at = code.find("L\""); at != std::string::npos; at = code.find("L\"", at)) {
        const std::size_t end = code.find('"', at + 2);
        if (end == std::string::npos) return;
        messages.insert(code.substr(at + 2, end - at - 2));
        at = end + 1;
    }
}

std::set<std::string> ReadMessages() {
    std::set<std::string> messages;
    for (const char* room : {"acclaim", "bvh", "mocap", "plugin"})
        for (const auto& file :
             support::FilesIn(std::filesystem::path(ZKMOCAP_SOURCE_DIR) / room, ".cpp"))
            AddTexts(file, messages);
    messages.erase("");
    return messages;
}

}  // namespace

const std::set<std::string>& KnownMessages() {
    static const std::set<std::string> messages = ReadMessages();
    return messages;
}

}  // namespace sweep
