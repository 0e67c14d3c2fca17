// The text of an input file, wherever it is: on disk or in memory, plain or packed by gzip.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "take/request.h"
#include "text/storage.h"

namespace take {

// The name of the file without its folder and without ".gz": "walk.bvh" for "takes/walk.bvh.gz".
std::string PlainName(const InputFile& file);

// Whether the file's name ends in ".gz".
bool IsPacked(const InputFile& file);

class InputText {
  public:
    // Reads the file from the storage, unless the request holds its bytes. Unpacks it, if its name
    // ends in ".gz". `file` must outlive this object.
    InputText(const InputFile& file, text::Storage& storage);

    // The text; a NUL byte follows it in memory. Empty if the file cannot be read.
    std::string_view Text() const;
    // Why the file cannot be read; empty if it can be read.
    const std::string& Problem() const { return problem_; }
    // Whether the file was packed.
    bool IsUnpacked() const { return unpacked_.has_value(); }

  private:
    void Unpack(std::string_view bytes);

    const std::string* content_;                // the request's bytes; null if it has none
    std::unique_ptr<text::StoredText> stored_;  // null if `content_` or `unpacked_` is the text
    std::optional<std::string> unpacked_;       // nullopt if the file is not packed
    std::string problem_;
};

}  // namespace take
