// A file that appears under its name when it is whole, or not at all.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "text/byte_sink.h"

namespace files {

// Writes to a temporary file in the folder of `path`, through a buffer; Commit writes what is
// left and gives it its name. Without Commit, or after any failure, the temporary file is removed
// and what stood under the name stays. A symbolic link is followed; anything that is not a regular
// file is refused. Failures are text::WriteError or text::WriteCancelled.
class OutputFile final : public text::ByteSink {
  public:
    // `isCancelled` is asked from time to time whether the user wants to stop; empty: never.
    explicit OutputFile(const std::string& path, std::function<bool()> isCancelled = nullptr);
    ~OutputFile() override;

    void Write(std::string_view bytes) override {
        if (bytes.size() > kBufferSize - used_) {
            WriteAcross(bytes);
            return;
        }
        bytes.copy(buffer_.data() + used_, bytes.size());
        used_ += bytes.size();
    }
    // Hands everything to the system, so that all that can still fail is the new name.
    void Settle();
    void Commit();
    // Both, or neither: where the second cannot have its name, what stood under the first's is put
    // back.
    static void CommitBoth(OutputFile& first, OutputFile& second);

    static constexpr std::size_t kBufferSize = std::size_t{1} << 20;

  private:
    void OpenTemporary();
    // Another name for what stands under the output's, and whether something does.
    struct Kept {
        std::string name;  // empty without one
        bool exists = false;
    };
    Kept KeepOld() const;
    void PutBack(const Kept& kept) const;
    void WriteAcross(std::string_view bytes);
    void Flush();
    void WriteThrough(std::string_view bytes);
    void StopWhereCancelled() const;
    [[noreturn]] void Fail(int error) const;

    std::string path_;       // as the user gave it, for messages
    std::string target_;     // what is replaced: where symbolic links lead to
    std::string temporary_;  // empty once renamed
    int file_ = -1;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    bool settled_ = false;
    std::function<bool()> isCancelled_;
};

// Whether a file of that name is an output that is being written, or was when its writer was
// killed. Writers hold a lock on it (flock).
bool IsTemporaryName(std::string_view name);

}  // namespace files
