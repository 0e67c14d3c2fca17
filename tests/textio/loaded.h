// Readers over bytes that a test states itself.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"
#include "textio/string_file.h"

namespace textio_test {

// ASCII alone.
inline std::wstring Wide(std::string_view text) {
    return std::wstring(text.begin(), text.end());
}

// A reader that holds these bytes, or none where the file could not be loaded.
inline std::unique_ptr<CStringFile> Load(const std::string& bytes,
                                         const char* separators = nullptr) {
    const support::TemporaryFolder dir;
    auto reader = std::make_unique<CStringFile>();
    EXPECT_TRUE(separators == nullptr || reader->RegisterWhiteSpaces(separators));
    EXPECT_TRUE(reader->ReadFile(Wide(dir.Write("text", bytes)).c_str()));
    return reader;
}

}  // namespace textio_test
