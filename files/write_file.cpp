#include "files/write_file.h"

#include <fmt/format.h>
#include <new>

#include "files/disk_full.h"
#include "files/output_file.h"
#include "text/byte_sink.h"

namespace files {
namespace {

std::string CannotWrite(const std::string& path, const std::string& reason) {
    return fmt::format("cannot write {}: {}", path, reason);
}

// Calls `write` and returns its result or its exception as a WriteOutcome. `write` returns why it
// failed, or an empty text.
WriteOutcome Outcome(const std::string& path, const std::function<std::string()>& write) {
    WriteOutcome outcome;
    try {
        const std::string reason = write();
        if (!reason.empty()) outcome.problem = CannotWrite(path, reason);
    } catch (const DiskFull& error) {
        outcome.problem = error.what();
        outcome.isDiskFull = true;
    } catch (const text::WriteError& error) {
        outcome.problem = error.what();
    } catch (const text::WriteCancelled&) {
        outcome.isCancelled = true;
    } catch (const std::bad_alloc&) {
        outcome.problem = CannotWrite(path, "out of memory");
    }
    return outcome;
}

}  // namespace

WriteOutcome WriteFile(const std::string& path, const FillFile& fill,
                       const std::function<bool()>& isCancelled) {
    return Outcome(path, [&] {
        OutputFile file(path, isCancelled);
        std::string reason = fill(file);
        if (reason.empty()) file.Commit();
        return reason;
    });
}

WriteOutcome WriteFilePair(const std::string& path, const std::string& sidePath,
                           const FillPair& fill, const std::function<bool()>& isCancelled) {
    return Outcome(path, [&] {
        OutputFile file(path, isCancelled);
        OutputFile side(sidePath, isCancelled);
        std::string reason = fill(file, side);
        if (reason.empty()) OutputFile::CommitBoth(side, file);
        return reason;
    });
}

}  // namespace files
