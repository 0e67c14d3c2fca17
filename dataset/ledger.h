// The record of the jobs that a run has finished, in a hidden file of the output folder. With it a
// later run can continue, however the first one ended.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "dataset/index_file.h"
#include "dataset/jobs.h"

namespace dataset {

inline constexpr char kLedgerName[] = ".zkhost-convert";

// The file begins with a line of options. After it comes one CSV record for each job that
// succeeded.
class Ledger {
  public:
    // `path` is the ledger's path in the output folder. `options` is what the outputs depend on
    // except their inputs (OptionsLine). The file is neither read nor written yet.
    Ledger(std::string path, std::string options);
    ~Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    // What the ledger of an earlier run holds: there is none, its options differ, or it was read.
    enum class Content : std::uint8_t { Nothing, OtherOptions, Usable };
    // Reads the records of an earlier run, if it had the same options.
    Content Read();

    // Returns the row of a job that the ledger lists with the same skeleton and the same output;
    // null where it does not, or where the output's files have other sizes now.
    const IndexRow* Find(const Job& job) const;

    // Replaces the ledger's file by one that holds the `rows` of the `jobs` that succeeded, and
    // keeps it open for Note. `jobs` and `rows` have one element for each job. Throws
    // text::WriteError.
    void Start(const std::vector<Job>& jobs, const std::vector<IndexRow>& rows);
    // Adds a job that succeeded. A failure to write is ignored: a later run then converts more
    // files again than necessary.
    void Note(const Job& job, const IndexRow& row);

  private:
    struct Entry {
        std::string skeleton;
        std::string sizes;  // of the output's files when they were written (SizesOf)
        IndexRow row;
    };

    std::string RecordOf(const Job& job, const IndexRow& row) const;

    std::string path_;
    std::string folder_;
    std::string options_;
    std::unordered_map<std::string, Entry> entries_;  // by source
    int file_ = -1;  // the file descriptor that Note writes to; -1: none
};

}  // namespace dataset
