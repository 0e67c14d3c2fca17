#include "dataset/ledger.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <utility>

#include "dataset/freshness.h"
#include "files/output_file.h"
#include "text/csv_record.h"

namespace dataset {

Ledger::Ledger(std::string path, std::string options)
    : path_(std::move(path)),
      folder_(path_.substr(0, path_.rfind('/'))),
      options_(std::move(options)) {}

Ledger::~Ledger() {
    if (file_ >= 0) close(file_);
}

Ledger::Content Ledger::Read() {
    // Only a regular file is read: a FIFO or a device could block for ever.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path_, error)) return Content::Nothing;
    std::ifstream file(path_, std::ios::binary);
    if (!file) return Content::Nothing;
    std::ostringstream content;
    content << file.rdbuf();
    const std::string text = std::move(content).str();
    std::string_view rest = text;
    if (text::ReadCsvRecord(rest) != std::vector<std::string>{options_})
        return Content::OtherOptions;
    while (!rest.empty()) {
        std::vector<std::string> fields = text::ReadCsvRecord(rest);
        // A record is incomplete if the run was killed while it wrote the record.
        if (fields.size() != 10) continue;
        IndexRow row{fields[0], fields[2], JobStatus::Ok, fields[3], fields[4], fields[5],
                     fields[6], "",        fields[8],     fields[9]};
        entries_[fields[0]] = {std::move(fields[1]), std::move(fields[7]), std::move(row)};
    }
    return Content::Usable;
}

const IndexRow* Ledger::Find(const Job& job) const {
    const auto entry = entries_.find(job.source);
    const bool isSame = entry != entries_.end() && entry->second.skeleton == job.skeleton &&
                        entry->second.row.output == OutputField(job.outputs) &&
                        entry->second.sizes == SizesOf(job, folder_);
    return isSame ? &entry->second.row : nullptr;
}

std::string Ledger::RecordOf(const Job& job, const IndexRow& row) const {
    return text::CsvRecord({job.source, job.skeleton, row.output, row.joints, row.frames,
                            row.framesPerSecond, row.seconds, SizesOf(job, folder_), row.warnings,
                            row.findings});
}

void Ledger::Start(const std::vector<Job>& jobs, const std::vector<IndexRow>& rows) {
    files::OutputFile file(path_);
    file.Write(text::CsvRecord({options_}));
    for (std::size_t index = 0; index < jobs.size(); ++index)
        if (rows[index].status == JobStatus::Ok) file.Write(RecordOf(jobs[index], rows[index]));
    file.Commit();
    if (file_ >= 0) close(file_);
    file_ = open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
}

void Ledger::Note(const Job& job, const IndexRow& row) {
    if (file_ < 0) return;
    const std::string record = RecordOf(job, row);
    const ssize_t written = write(file_, record.data(), record.size());
    if (written == static_cast<ssize_t>(record.size())) return;
    // Only a part of the record was written. Nothing more is written to the file, because it would
    // be read as the rest of this record.
    close(file_);
    file_ = -1;
}

}  // namespace dataset
