// Loads bytes of a test into a reader.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"
#include "textio/string_file.h"

namespace textio_test {

// The text must be ASCII.
inline std::wstring Wide(std::string_view text) {
    return std::wstring(text.begin(), text.end());
}

// Returns a reader that has loaded a file with these bytes; the test fails if it cannot.
inline std::unique_ptr<CStringFile> Load(const std::string& bytes,
                                         const char* separators = nullptr) {
    const support::TemporaryFolder dir;
    auto reader = std::make_unique<CStringFile>();
    EXPECT_TRUE(separators == nullptr || reader->RegisterWhiteSpaces(separators));
    EXPECT_TRUE(reader->ReadFile(Wide(dir.Write("text", bytes)).c_str()));
    return reader;
}

}  // namespace textio_test
