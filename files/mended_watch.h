#pragma once

namespace files {

// While an object of this class exists, a signal that ends the process, for example after a crash,
// first removes the MendedFolder of the process. Signals that the program handles or ignores are
// still handled or ignored. After a crash the program's handler runs when the folder has been
// removed. Only programs may use this class, because it sets signal handlers, which a library must
// not do. Only one object of this class may exist at a time.
class MendedFolderWatch {
  public:
    MendedFolderWatch();
    ~MendedFolderWatch();
    MendedFolderWatch(const MendedFolderWatch&) = delete;
    MendedFolderWatch& operator=(const MendedFolderWatch&) = delete;
};

}  // namespace files
