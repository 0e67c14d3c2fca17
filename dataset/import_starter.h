// A process that starts the processes of imports quickly.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace dataset {

// The exit status of a child that cannot become an import; shells use the same number.
inline constexpr int kCannotRun = 127;

// How a process becomes an import without starting this program anew.
struct ImportCode {
    // Called once, before the first import. Loads what all imports need.
    std::function<void()> prepare;
    // Does what this program does with these arguments, which do not include the program's name.
    // Returns the exit status.
    std::function<int(const std::vector<std::string>& arguments)> run;
};

// To start an import with fork and exec takes longer than to import a small file. The starter is a
// copy of this process that has loaded the plug-in. It makes a copy of itself for each import, and
// is made before the jobs are listed, because to copy a process takes longer the more memory it
// has. The copies are children of this process and not of the starter, so that this process can
// wait for them, and so that they notice its end.
class ImportStarter {
  public:
    // Makes the starter. This process must have only one thread, and nothing may be in the buffer
    // of its standard output. If the starter cannot be made, CanStart() is false.
    explicit ImportStarter(const ImportCode& code);
    ~ImportStarter();  // ends the starter, but not the imports
    ImportStarter(const ImportStarter&) = delete;
    ImportStarter& operator=(const ImportStarter&) = delete;

    // Becomes false if Start finds that the starter cannot start imports here, for example because
    // somebody has killed it, or because the plug-in has started a thread.
    bool CanStart() const { return socket_ >= 0; }

    // Starts an import and returns its process id. This process has to wait for it. `arguments`
    // must not be empty. `output` and `errors` become the import's standard output and standard
    // error (see SetUpImport). If CanStart() has become false, returns -1. Throws std::system_error
    // if the system cannot start a process now.
    pid_t Start(const std::vector<std::string>& arguments, int output, int errors);

  private:
    void Stop();

    int socket_ = -1;  // -1: there is no starter
    pid_t id_ = -1;
};

// Gives the process of an import its standard streams, its process group and its signals. Calls
// only async-signal-safe functions. `parent` is the process that waits for the import.
void SetUpImport(int output, int errors, pid_t parent);

}  // namespace dataset
