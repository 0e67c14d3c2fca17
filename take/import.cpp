#include "take/import.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "headless/text.h"
#include "survey/finding_text.h"
#include "take/callback.h"
#include "take/file_survey.h"
#include "take/input_text.h"
#include "take/original_lines.h"
#include "take/session_lock.h"
#include "take/utf8_characters.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace take {
namespace {

// Makes the path absolute, which the plug-in needs. Symbolic links are not resolved, because the
// plug-in names the model after the file. If the file has no path, the result is what messages
// show.
std::wstring AbsolutePath(const InputFile& file) {
    if (!file.name.empty()) return text::DecodeUtf8(file.path);
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(file.path, error);
    return text::DecodeUtf8(error ? file.path : absolute.string());
}

struct PluginFile {
    std::wstring path;
    std::optional<LineMarks> marks;  // nullopt if the text was not mended

    const LineMarks* Marks() const { return marks ? &*marks : nullptr; }
};

// The files that the plug-in reads. The destructor removes those that are temporary.
class PluginFiles {
  public:
    // Writes the mended and the unpacked texts, and the files that exist only in memory, to a
    // temporary folder of the storage. Releases each new text after it was written, so that its
    // memory is free during the import. Throws text::WriteError.
    PluginFiles(const Request& request, FileSurvey& survey, text::Storage& storage) {
        const std::uint64_t bytes = SizeOf(request.file, survey.file) +
                                    (request.motion ? SizeOf(*request.motion, survey.motion) : 0);
        file_ = Prepare(request.file, survey.file, bytes, storage);
        if (request.motion) motion_ = Prepare(*request.motion, survey.motion, bytes, storage);
    }

    const std::wstring& File() const { return file_.path; }
    const std::wstring& Motion() const { return motion_.path; }  // empty if there is no motion
    // The marks of the texts that were mended; null for any other text.
    const LineMarks* FileMarks() const { return file_.Marks(); }
    const LineMarks* MotionMarks() const { return motion_.Marks(); }

  private:
    static std::uint64_t SizeOf(const InputFile& file, const NewText& text) {
        if (text.mended) return text.mended->LikelyBytes();
        if (text.original) return text.original->Text().size();
        return file.content ? file.content->size() : 0;
    }

    PluginFile Prepare(const InputFile& file, NewText& newText, std::uint64_t bytes,
                       text::Storage& storage) {
        if (!newText.original && !file.content) return {AbsolutePath(file), std::nullopt};
        const NewText released = std::move(newText);
        if (!folder_) folder_ = storage.MakeTemporaryFolder(bytes);
        const std::unique_ptr<text::TemporaryFile> out = folder_->Create(PlainName(file));
        PluginFile result{text::DecodeUtf8(out->Path()), std::nullopt};
        if (released.mended)
            result.marks = released.mended->Write(*out);
        else
            out->Write(released.original ? released.original->Text() : *file.content);
        out->Close();
        return result;
    }

    std::unique_ptr<text::TemporaryFolder> folder_;  // null if no temporary file was needed
    PluginFile file_;
    PluginFile motion_;
};

void AddSkeletonOptions(const Request& request, VariantList& arguments) {
    arguments.AddBoolean(request.addClip);
    arguments.AddBoolean(request.useNulls);
    arguments.AddBoolean(request.chainFromParentJoint);
    arguments.AddBoolean(request.effectorToLastBone);
    arguments.AddBoolean(request.createGroup);
}

struct Command {
    const wchar_t* name;
    VariantList arguments;
};

Command BiovisionCommand(const Request& request, const FileSurvey& /*survey*/,
                         const PluginFiles& files) {
    Command command{plugin::kBiovisionCommand, {}};
    command.arguments.AddText(files.File());
    AddSkeletonOptions(request, command.arguments);
    return command;
}

Command AcclaimCommand(const Request& request, const FileSurvey& survey, const PluginFiles& files) {
    Command command{plugin::kAcclaimCommand, {}};
    command.arguments.AddText(files.File());
    command.arguments.AddText(files.Motion());
    command.arguments.AddBoolean(request.applyLimits);
    command.arguments.AddBoolean(survey.lengthMultiplier.has_value());
    command.arguments.AddReal(survey.lengthMultiplier.value_or(1.0));
    AddSkeletonOptions(request, command.arguments);
    return command;
}

// What differs between the formats.
struct FormatTraits {
    Command (*command)(const Request&, const FileSurvey&, const PluginFiles&);
    // The members of the plug-in's record that name the files.
    Zelk::CString USERINPUT::*file;
    Zelk::CString USERINPUT::*motion;  // null if the format has no second file
};

const FormatTraits& TraitsOf(Format format) {
    static constexpr FormatTraits kTraits[kFormatCount] = {
        {BiovisionCommand, &USERINPUT::strBVHFile, nullptr},
        {AcclaimCommand, &USERINPUT::strASFFile, &USERINPUT::strAMCFile},
    };
    return kTraits[static_cast<std::size_t>(format)];
}

// Writes the absolute paths of the user's files into the plug-in's record. The plug-in may have
// recorded the paths of temporary files there.
void NameFiles(const Request& request, USERINPUT& input) {
    const FormatTraits& traits = TraitsOf(request.format);
    input.*traits.file = AbsolutePath(request.file).c_str();
    if (!traits.motion) return;
    input.*traits.motion = request.motion ? AbsolutePath(*request.motion).c_str() : Zelk::CString();
}

// Lets the plug-in import the files. A line number in the log that counts the lines of a mended
// text is replaced by the number of that line in the user's file.
void CallPlugin(const Plugin& plugin, const Request& request, FileSurvey& survey,
                text::Storage& storage, const Listener& listener, Result& result) {
    const SessionLock lock;
    const PluginFiles files(request, survey, storage);
    OriginalLines lines(files.FileMarks(), files.MotionMarks(), request.motion.has_value());
    std::vector<headless::LogLine> log;
    Listener restoring = listener;
    restoring.onLog = [&](const headless::LogLine& line) {
        log.push_back(lines.Restore(line));
        if (listener.onLog) listener.onLog(log.back());
    };
    // A mended text is always UTF-8, so the locale's encoding must not be used for it.
    const bool isMended = files.FileMarks() || files.MotionMarks();
    const Utf8Characters characters(isMended || !request.readsInLocale);
    const Command command = TraitsOf(request.format).command(request, survey, files);
    CallResult called =
        Call(lock, plugin, command.name, command.arguments, request.hasProgressBar, restoring);
    result.code = called.code;
    result.recording = std::move(called.recording);
    result.recording.log = std::move(log);
    result.userInput = std::move(called.userInput);
    NameFiles(request, result.userInput);
    const bool isCancelled = listener.isCancelled && listener.isCancelled();
    result.outcome = JudgeImport(result.code, result.recording.log, isCancelled);
}

}  // namespace

std::string Result::FirstError() const {
    if (!problem.empty()) return problem;
    const FindingInFile refusal = isRefused ? RefusalOf(findings) : FindingInFile();
    if (refusal.finding) return refusal.file->file + ": " + survey::FindingText(*refusal.finding);
    for (const headless::LogLine& line : recording.log)
        if (IsError(line)) return text::EncodeUtf8(headless::View(line.text));
    return outcome.status == Status::Cancelled ? "cancelled" : std::string();
}

Result Import(const Plugin& plugin, const Request& request, text::Storage& storage,
              const Listener& listener) {
    Result result;
    FileSurvey survey = SurveyFiles(request, storage);
    result.findings = std::move(survey.findings);
    result.isRefused = survey.isRefused;
    result.framesPerSecond = survey.framesPerSecond;
    result.rateOrigin = survey.rateOrigin;
    result.statedRate = survey.statedRate;
    result.lengthMultiplier = survey.lengthMultiplier;
    result.multiplied = survey.multiplied;
    result.outlines = std::move(survey.outlines);
    if (listener.onSurveyed) listener.onSurveyed(result.findings, result.isRefused);
    try {
        if (!result.isRefused) CallPlugin(plugin, request, survey, storage, listener, result);
    } catch (const text::WriteError& error) {
        result.problem = error.what();
        result.outcome.status = Status::Failed;
    }
    if (!result.recording.scene) result.recording.scene = std::make_unique<headless::Scene>();
    return result;
}

}  // namespace take
