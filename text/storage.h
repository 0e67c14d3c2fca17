// The interface through which imports read texts and write temporary files. A program implements it
// with its file system (files/system_storage.h) or with something else, such as memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "text/api.h"
#include "text/byte_sink.h"

namespace text {

// Files and texts with this many bytes or more are refused, because the plug-in counts bytes in 32
// bits.
inline constexpr std::uint64_t kTooLarge = std::uint64_t{1} << 32;

// A whole text that was read into memory, or the reason why it could not be read.
class ZKMOCAP_API StoredText {
  public:
    StoredText() = default;
    virtual ~StoredText() = default;
    StoredText(const StoredText&) = delete;
    StoredText& operator=(const StoredText&) = delete;

    // The text. It is valid as long as this object exists. In memory, a NUL byte follows the last
    // byte of the text. The text is empty if it could not be read.
    virtual std::string_view Text() const = 0;
    // Why the text could not be read, in plain words ("no such file"). Empty if it was read.
    virtual const std::string& Problem() const = 0;
};

// A file of a TemporaryFolder while it is written. It cannot leave out bytes (see ByteSink).
class ZKMOCAP_API TemporaryFile : public ByteSink {
  public:
    // Must be called after all bytes were written and before the file is read. Throws WriteError.
    virtual void Close() = 0;
    virtual const std::string& Path() const = 0;
};

// A temporary folder. The destructor removes it with the files in it.
class ZKMOCAP_API TemporaryFolder {
  public:
    TemporaryFolder() = default;
    virtual ~TemporaryFolder() = default;
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Creates a file with this name in the folder. Never returns null. The folder must outlive the
    // file. Throws WriteError.
    virtual std::unique_ptr<TemporaryFile> Create(const std::string& baseName) = 0;
    // Writes a file with this name into the folder and returns its path. Throws WriteError.
    std::string Write(const std::string& baseName, std::string_view text);
};

class ZKMOCAP_API Storage {
  public:
    Storage() = default;
    virtual ~Storage() = default;
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;

    // Reads the text that the path names. Never returns null. If the text could not be read,
    // Problem() of the result says why.
    virtual std::unique_ptr<StoredText> Read(const std::string& path) = 0;
    // Creates a temporary folder for files with about `bytes` bytes in all. Never returns null.
    // Throws WriteError if no folder can be created.
    virtual std::unique_ptr<TemporaryFolder> MakeTemporaryFolder(std::uint64_t bytes) = 0;
};

}  // namespace text
