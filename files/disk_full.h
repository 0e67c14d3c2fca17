#pragma once

#include "text/api.h"
#include "text/byte_sink.h"

namespace files {

// Returns whether the error number says that a file system has no room for anything: ENOSPC or
// EDQUOT. EFBIG is not one of them, because it is about one file that is too large; smaller files
// can still be written.
ZKMOCAP_API bool IsDiskFull(int error);

// The WriteError that is thrown if the file system has no room.
class ZKMOCAP_API DiskFull : public text::WriteError {
  public:
    using WriteError::WriteError;
};

}  // namespace files
