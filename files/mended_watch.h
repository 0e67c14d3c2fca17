#pragma once

namespace files {

// As long as it exists, a signal that ends the process, by a crash or otherwise, first removes the
// MendedFolder of the process. A signal that the program handles or ignores is still handled or
// ignored; at a crash the program's handler runs after the removal. It is for programs, because it
// sets signal handlers, which a library must not do. Only one object may exist at a time.
class MendedFolderWatch {
  public:
    MendedFolderWatch();
    ~MendedFolderWatch();
    MendedFolderWatch(const MendedFolderWatch&) = delete;
    MendedFolderWatch& operator=(const MendedFolderWatch&) = delete;
};

}  // namespace files
