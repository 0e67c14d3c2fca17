#include "take/import.h"

#include <filesystem>
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

// The paths of the files that the plug-in reads. The destructor removes those that are temporary.
class PluginFiles {
  public:
    // Writes the mended and the unpacked texts, and the files that exist only in memory, to a
    // temporary folder of the storage. Empties each mended or unpacked text after it was written,
    // so that its memory is free during the import. Throws text::WriteError.
    PluginFiles(const Request& request, FileSurvey& survey, text::Storage& storage) {
        std::string* const file = NewText(survey.file, survey.unpackedFile);
        std::string* const motion = NewText(survey.motion, survey.unpackedMotion);
        const std::size_t bytes =
            SizeOf(request.file, file) + (request.motion ? SizeOf(*request.motion, motion) : 0);
        file_ = PathOf(request.file, file, bytes, storage);
        if (request.motion) motion_ = PathOf(*request.motion, motion, bytes, storage);
    }

    const std::wstring& File() const { return file_; }
    const std::wstring& Motion() const { return motion_; }  // empty if there is no motion

  private:
    // The text that the survey made for the plug-in; null if it made none.
    static std::string* NewText(std::optional<survey::MendedText>& mended,
                                std::optional<std::string>& unpacked) {
        if (mended) return &mended->text;
        return unpacked ? &*unpacked : nullptr;
    }

    static std::size_t SizeOf(const InputFile& file, const std::string* newText) {
        if (newText) return newText->size();
        return file.content ? file.content->size() : 0;
    }

    std::wstring PathOf(const InputFile& file, std::string* newText, std::size_t bytes,
                        text::Storage& storage) {
        if (!newText && !file.content) return AbsolutePath(file);
        if (!folder_) folder_ = storage.MakeTemporaryFolder(bytes);
        const std::string path =
            folder_->Write(PlainName(file), newText ? *newText : *file.content);
        if (newText) *newText = std::string();
        return text::DecodeUtf8(path);
    }

    std::unique_ptr<text::TemporaryFolder> folder_;  // null if no temporary file was needed
    std::wstring file_;
    std::wstring motion_;
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
    OriginalLines lines(survey.file ? &survey.file->lines : nullptr,
                        survey.motion ? &survey.motion->lines : nullptr,
                        request.motion.has_value());
    std::vector<headless::LogLine> log;
    Listener restoring = listener;
    restoring.onLog = [&](const headless::LogLine& line) {
        log.push_back(lines.Restore(line));
        if (listener.onLog) listener.onLog(log.back());
    };
    // A mended text is always UTF-8, so the locale's encoding must not be used for it.
    const bool isMended = survey.file || survey.motion;
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
