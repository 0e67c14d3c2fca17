// Where texts are read from and, for a while, put: the file system of a program, or what stands in
// for one.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "text/api.h"

namespace text {

// A whole text in memory.
class ZKMOCAP_API StoredText {
  public:
    StoredText() = default;
    virtual ~StoredText() = default;
    StoredText(const StoredText&) = delete;
    StoredText& operator=(const StoredText&) = delete;

    // Followed by a NUL byte. Valid as long as this lives.
    virtual std::string_view Text() const = 0;
    // Why it could not be read, in plain words ("no such file"); empty where it was.
    virtual const std::string& Problem() const = 0;
};

// A folder that is removed, with the files in it, at the end of this object's life.
class ZKMOCAP_API TemporaryFolder {
  public:
    TemporaryFolder() = default;
    virtual ~TemporaryFolder() = default;
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Writes a file of that base name and returns its path. Throws WriteError (byte_sink.h).
    virtual std::string Write(const std::string& baseName, std::string_view text) = 0;
};

class ZKMOCAP_API Storage {
  public:
    Storage() = default;
    virtual ~Storage() = default;
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;

    // Never null: a text that cannot be read says why.
    virtual std::unique_ptr<StoredText> Read(const std::string& path) = 0;
    // `bytes`: what will be written to it. Throws WriteError where no folder can be made.
    virtual std::unique_ptr<TemporaryFolder> MakeTemporaryFolder(std::size_t bytes) = 0;
};

}  // namespace text
