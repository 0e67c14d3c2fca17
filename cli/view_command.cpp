#include "cli/view_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "cli/exports.h"
#include "cli/import_show.h"
#include "cli/interrupt.h"
#include "cli/open_page.h"
#include "cli/print.h"
#include "cli/progress_line.h"
#include "cli/run_take.h"
#include "cli/source_files.h"
#include "cli/view_folder.h"
#include "dataset/exit_status.h"
#include "export/page.h"
#include "files/write_file.h"
#include "take/outcome.h"

namespace cli {
namespace {

class ViewRun {
  public:
    explicit ViewRun(const ViewRequest& request) : request_(request) {}

    int Run() {
        const std::string folder = PrepareViewFolder();
        for (const ImportRequest& take : request_.takes) {
            AddTake(take);
            if (isCancelled_ || Interrupted()) return dataset::kCancelled;
        }
        if (takes_.empty()) return isUnwritable_ ? dataset::kOutputFailed : dataset::kImportFailed;
        const std::string path = folder + '/' + NameOfPage();
        const files::WriteOutcome outcome = files::WriteFile(
            path,
            [&](text::ByteSink& out) {
                exporters::WritePage(out, takes_);
                return std::string();
            },
            Interrupted);
        if (outcome.isCancelled) return dataset::kCancelled;
        if (!outcome.IsWritten()) {
            PrintError(outcome.problem);
            return dataset::kOutputFailed;
        }
        RestoreInterrupts();
        ToStdout()(path + '\n');
        if (request_.open) Open(path);
        if (takes_.size() < request_.takes.size()) return dataset::kSomeFailed;
        return isPart_ ? dataset::kImportedInPart : dataset::kImported;
    }

  private:
    void AddTake(const ImportRequest& request) {
        const TakeRun run = RunTake(request);
        isCancelled_ = run.result.outcome.status == take::Status::Cancelled;
        if (!run.result.problem.empty()) PrintError(run.result.problem);
        if (!run.result.IsImported()) return;
        isPart_ |= run.result.outcome.status == take::Status::ImportedInPart;
        const exporters::Options options = ExportOptionsOf(
            request, run.result, DescribeSources(run.take, request.provenance).files);
        try {
            takes_.push_back(Pack(request, run, options));
        } catch (const exporters::ExportError& error) {
            PrintError(fmt::format("{}: {}", request.take.file.path, error.what()));
            isUnwritable_ = true;
        } catch (const text::WriteCancelled&) {
            isCancelled_ = true;
        }
    }

    static exporters::PageTake Pack(const ImportRequest& request, const TakeRun& run,
                                    const exporters::Options& options) {
        const std::unique_ptr<ProgressLine> line = run.drawsBar ? MakeBar() : nullptr;
        const exporters::Progress progress([&line](double share) {
            if (Interrupted()) throw text::WriteCancelled();
            if (line) line->Show(L"Making the page...", share);
        });
        const exporters::RunRecord record = RecordOf(request, run.result);
        return exporters::BuildPageTake(run.result.Scene(), options, &record, progress);
    }

    // The same files with the same options give the same name. A record names the options.
    std::string NameOfPage() const {
        std::string key;
        const auto add = [&](const take::InputFile& file) {
            std::error_code error;
            key += std::filesystem::absolute(file.path, error).string() + '\n';
        };
        for (const exporters::PageTake& take : takes_)
            key += take.record;
        for (const ImportRequest& take : request_.takes) {
            add(take.take.file);
            if (take.take.motion) add(*take.take.motion);
        }
        return PageName(takes_.front().title, key);
    }

    static void Open(const std::string& path) {
        const std::string problem = OpenPage(path);
        if (!problem.empty())
            PrintError(fmt::format("cannot open the page: {}; open it in a browser", problem));
    }

    const ViewRequest& request_;
    std::vector<exporters::PageTake> takes_;
    bool isCancelled_ = false;
    bool isPart_ = false;        // whether a take was imported in part
    bool isUnwritable_ = false;  // whether a take that was imported could not be packed
};

}  // namespace

int RunView(const ViewRequest& request) {
    return ViewRun(request).Run();
}

}  // namespace cli
