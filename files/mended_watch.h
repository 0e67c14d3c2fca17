#pragma once

namespace files {

// For as long as one of these lives, a signal that ends the process, a crash included, first
// removes the MendedFolder there is. A signal that somebody handles or ignores keeps that handling.
// For programs: it sets signal handlers, which a library must not. One of them lives at a time.
class MendedFolderWatch {
  public:
    MendedFolderWatch();
    ~MendedFolderWatch();
    MendedFolderWatch(const MendedFolderWatch&) = delete;
    MendedFolderWatch& operator=(const MendedFolderWatch&) = delete;
};

}  // namespace files
