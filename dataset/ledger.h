// The record of the jobs that a run has finished. It is a hidden file in the output folder. A later
// run can read it and continue, even if the first run was killed.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "dataset/index_file.h"
#include "dataset/jobs.h"

namespace dataset {

inline constexpr char kLedgerName[] = ".zkhost-convert";

// The first CSV record of the file holds the options of the run. Each further record holds a job
// that succeeded.
class Ledger {
  public:
    // `path` is the path of the ledger's file. `options` is the OptionsLine of this run. The
    // constructor does not read or write the file.
    Ledger(std::string path, std::string options);
    ~Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    enum class Content : std::uint8_t {
        Nothing,       // there is no ledger of an earlier run, or it cannot be read
        OtherOptions,  // an earlier run had other options; its records were not read
        Usable,        // an earlier run had the same options; its records were read
    };
    // Reads the ledger of an earlier run.
    Content Read();

    // Finds the job's row of the index among the records that Read has read. Returns null if there
    // is no record of the job, or if the record has another skeleton or output path than `job`.
    // Also returns null if the sizes of the output's files differ from the record.
    const IndexRow* Find(const Job& job) const;

    // Replaces the ledger's file by a new one with this run's options and the `rows` that have
    // JobStatus::Ok. Keeps the file open for Note. `rows` has one element for each element of
    // `jobs`. Throws text::WriteError.
    void Start(const std::vector<Job>& jobs, const std::vector<IndexRow>& rows);
    // Adds a job that succeeded to the file. A write error is ignored. Its only effect is that a
    // later run may convert jobs again that succeeded.
    void Note(const Job& job, const IndexRow& row);

  private:
    struct Entry {
        std::string skeleton;
        std::string sizes;  // SizesOf the job when its output was written
        IndexRow row;
    };

    std::string RecordOf(const Job& job, const IndexRow& row) const;

    std::string path_;
    std::string folder_;  // the output folder, in which the ledger is
    std::string options_;
    std::unordered_map<std::string, Entry> entries_;  // what Read has read; the key is Job::source
    int file_ = -1;  // the file descriptor that Note writes to; -1: Note writes nothing
};

}  // namespace dataset
