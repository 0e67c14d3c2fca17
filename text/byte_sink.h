// The interface to which exporters write bytes, with an implementation in memory.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "text/api.h"

namespace text {

// Thrown if bytes could not be written. The message is one line that says what could not be written
// and why.
class ZKMOCAP_API WriteError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Thrown if the user asked to stop while bytes were being written.
class ZKMOCAP_API WriteCancelled : public std::exception {
  public:
    const char* what() const noexcept override { return "cancelled"; }
};

class ZKMOCAP_API ByteSink {
  public:
    ByteSink() = default;
    virtual ~ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;

    // The functions that write throw WriteError or WriteCancelled. After an exception the caller
    // must not call them again. They may be called from several threads, but not at the same time.

    // Appends the bytes to those of earlier calls.
    virtual void Write(std::string_view bytes) = 0;

    // Whether bytes can be left out and written later, by the next two functions. A sink that
    // cannot do so need not override any of the three.
    virtual bool CanSkip() const { return false; }
    // Leaves out `size` bytes, as if they had been appended. Returns how many bytes are before
    // them. The caller must then write all of them by WriteAt, in any order.
    virtual std::uint64_t Skip(std::uint64_t size);
    // Writes bytes that were left out. `offset` is how many bytes are before them.
    virtual void WriteAt(std::uint64_t offset, std::string_view bytes);
};

// Keeps the bytes in memory.
class ZKMOCAP_API StringSink : public ByteSink {
  public:
    void Write(std::string_view bytes) override { bytes_ += bytes; }
    bool CanSkip() const override { return true; }
    std::uint64_t Skip(std::uint64_t size) override;
    void WriteAt(std::uint64_t offset, std::string_view bytes) override;
    const std::string& Bytes() const { return bytes_; }
    // Moves the bytes out. No bytes are left here.
    std::string Release() { return std::exchange(bytes_, {}); }

  private:
    std::string bytes_;
};

}  // namespace text
