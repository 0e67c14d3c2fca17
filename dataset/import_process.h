// One import in its own process.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

#include "dataset/import_starter.h"

namespace dataset {

// A child process that runs this program with other arguments. Its standard output and its standard
// error are read through pipes; the first 256 KiB of each are kept. The child has its own process
// group, so Ctrl-C on the terminal sends no signal to the child. Interrupt sends it SIGINT. The
// child also gets SIGINT when its parent dies.
class ImportProcess {
  public:
    // Starts the process. `arguments` do not include the program's name. If the starter is null or
    // cannot start it, the program is started anew for it. Throws std::system_error if the process
    // cannot be started.
    ImportProcess(const std::vector<std::string>& arguments, ImportStarter* starter);
    ~ImportProcess();  // kills the process if it still runs, and waits for its end
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;

    // The file descriptors from which the child's output can be read, for poll. They belong to this
    // object and are -1 after the end of the output.
    int OutputFile() const { return output_.file; }
    int ErrorFile() const { return errors_.file; }
    // Reads what the pipes contain now, without waiting for more.
    void Read();

    // Returns whether the process has ended, without waiting for its end. If Reap returns true,
    // Output() and Errors() do not change any more.
    bool Reap();
    // The status from waitpid; valid after Reap has returned true.
    int WaitStatus() const { return waitStatus_; }

    // Interrupt sends SIGINT, and Kill sends SIGKILL. After Reap has returned true, they send
    // nothing.
    void Interrupt() const;
    void Kill() const;

    pid_t Id() const { return id_; }
    const std::string& Output() const { return output_.text; }
    const std::string& Errors() const { return errors_.text; }

  private:
    struct Stream {
        int file = -1;     // the descriptor of the pipe's end that is read; -1: closed
        std::string text;  // the first 256 KiB that were read
        void Read();
        void Close();
    };

    void CloseFiles();

    pid_t id_ = -1;
    bool ended_ = false;  // whether waitpid has returned the status
    int waitStatus_ = 0;
    Stream output_;
    Stream errors_;
};

}  // namespace dataset
