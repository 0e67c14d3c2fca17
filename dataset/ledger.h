// What a run has done so far, in a hidden file of the output folder, so that a later one can go on
// after any end of it.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "dataset/index_file.h"
#include "dataset/jobs.h"

namespace dataset {

inline constexpr char kLedgerName[] = ".zkhost-convert";

// One line of options, then one record for each job that went well, as it was done.
class Ledger {
  public:
    // `path`: beside the outputs. `options`: what outputs depend on besides their inputs. Reads
    // nothing, writes nothing.
    Ledger(std::string path, std::string options);
    ~Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    enum class Found : std::uint8_t { Nothing, OtherOptions, Usable };
    // Takes over what an earlier run with the same options noted.
    Found Read();

    // What was noted of this very job, with this output, which is as long as it was; null: nothing.
    const IndexRow* Find(const Job& job) const;

    // Writes the ledger anew, holding `rows` of `jobs` (side by side) that went well, and keeps it
    // open for Note. Throws text::WriteError.
    void Start(const std::vector<Job>& jobs, const std::vector<IndexRow>& rows);
    // Adds a job that went well. Where it cannot be written, only a later run's time is lost.
    void Note(const Job& job, const IndexRow& row);

  private:
    struct Entry {
        std::string skeleton;
        std::string sizes;  // of the outputs, when they were made
        IndexRow row;
    };

    std::string RecordOf(const Job& job, const IndexRow& row) const;

    std::string path_;
    std::string folder_;
    std::string options_;
    std::unordered_map<std::string, Entry> entries_;  // by source
    int file_ = -1;
};

}  // namespace dataset
