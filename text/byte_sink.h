// The interface to which exporters write bytes, with an implementation in memory.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

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

    // Appends the bytes to those of earlier calls. Throws WriteError or WriteCancelled. After an
    // exception the caller must not call Write again.
    virtual void Write(std::string_view bytes) = 0;
};

// Keeps the bytes in memory.
class ZKMOCAP_API StringSink : public ByteSink {
  public:
    void Write(std::string_view bytes) override { bytes_ += bytes; }
    const std::string& Bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

}  // namespace text
