// One import in its own process.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace dataset {

// A child process that runs this program with other arguments. It has its own process group, so a
// Ctrl-C on the terminal reaches it only through Interrupt. It gets SIGINT when its parent dies.
// The first 256 KiB of its standard output and of its standard error are kept.
class ImportProcess {
  public:
    // Throws std::system_error where the process cannot be started.
    explicit ImportProcess(const std::vector<std::string>& arguments);
    ~ImportProcess();  // kills the process if it still runs
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;

    // File descriptors of the child's output pipes, for poll; -1 after the end of the output.
    int OutputFile() const { return output_.file; }
    int ErrorFile() const { return errors_.file; }
    // Reads what the pipes hold, without waiting.
    void Read();

    // Returns whether the process has ended, without waiting. If it has, Reap has read the rest of
    // its output.
    bool Reap();
    // The status from waitpid; valid after the process has ended.
    int WaitStatus() const { return waitStatus_; }

    void Interrupt() const;
    void Kill() const;

    pid_t Id() const { return id_; }
    const std::string& Output() const { return output_.text; }
    const std::string& Errors() const { return errors_.text; }

  private:
    struct Stream {
        int file = -1;
        std::string text;
        void Read();
        void Close();
    };

    pid_t id_ = -1;
    bool ended_ = false;
    int waitStatus_ = 0;
    Stream output_;
    Stream errors_;
};

}  // namespace dataset
