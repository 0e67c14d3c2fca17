// One import in a process of its own.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace dataset {

// This program, run once more. Lives in a process group of its own, so that a Ctrl-C on the
// terminal reaches it only as Interrupt, and is asked to stop should this process die. Everything
// it has to say is kept, up to a limit.
class ImportProcess {
  public:
    // Throws std::system_error where no process can be made.
    explicit ImportProcess(const std::vector<std::string>& arguments);
    ~ImportProcess();  // kills what still runs
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;

    // Ends of pipes to be read once they are readable, -1 when there is no more to read.
    int OutputFile() const { return output_.file; }
    int ErrorFile() const { return errors_.file; }
    void Read();

    // Whether it has ended; then, everything it said has been read.
    bool Reap();
    // As waitpid says; valid once it has ended.
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
