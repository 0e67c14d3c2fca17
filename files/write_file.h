// Writes outputs to disk, each whole or not at all, and returns errors as values.
#pragma once

#include <functional>
#include <string>

#include "text/api.h"
#include "text/byte_sink.h"

namespace files {

struct WriteOutcome {
    // Why the output was not written, in one line that includes its path. Empty if it was written
    // or if `isCancelled` is set.
    std::string problem;
    bool isCancelled = false;  // the user wanted to stop; the output was not written
    bool isDiskFull = false;   // the output was not written because the file system has no room

    bool IsWritten() const { return problem.empty() && !isCancelled; }
};

// Functions that write the contents of an output to its sinks. They return an empty text if they
// succeed. Otherwise they return why the contents cannot be written, and no file is written. They
// must not catch the exceptions of the sinks.
using FillFile = std::function<std::string(text::ByteSink& out)>;
using FillPair = std::function<std::string(text::ByteSink& out, text::ByteSink& side)>;

// Writes one file. If it cannot be written completely, a file that already has this path is
// unchanged. `isCancelled` is called repeatedly and returns whether the user wants to stop; it may
// be empty. It is called on the threads that write, but not on two at the same time; a
// function that `fill` reports its progress to may run meanwhile. If `fill`
// throws text::WriteError, text::WriteCancelled or std::bad_alloc, WriteFile returns an outcome
// that says so. Other exceptions of `fill` are passed on to the caller.
ZKMOCAP_API WriteOutcome WriteFile(const std::string& path, const FillFile& fill,
                                   const std::function<bool()>& isCancelled = nullptr);

// Writes two files that belong together. If one of them cannot be written, neither is written. On
// some file systems this cannot be guaranteed (see OutputFile::CommitBoth). The first sink of
// `fill` writes to `path`, and the sink `side` writes to `sidePath`.
ZKMOCAP_API WriteOutcome WriteFilePair(const std::string& path, const std::string& sidePath,
                                       const FillPair& fill,
                                       const std::function<bool()>& isCancelled = nullptr);

}  // namespace files
