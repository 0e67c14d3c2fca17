#include "files/disk_full.h"

#include <cerrno>

namespace files {

bool IsDiskFull(int error) {
    return error == ENOSPC || error == EDQUOT;
}

}  // namespace files
