#include "cli/exports.h"

#include <fmt/format.h>
#include <utility>

#include "take/commands.h"
#include "take/findings.h"
#include "take/user_input_json.h"

namespace cli {
namespace {

const char* Text(bool value) {
    return value ? "true" : "false";
}

exporters::FileSkeleton SkeletonOf(const survey::Outline& outline) {
    exporters::FileSkeleton skeleton;
    for (const survey::OutlineJoint& joint : outline) {
        const bool isRoot = joint.parent == survey::OutlineJoint::kNoParent;
        skeleton.push_back(
            {joint.name, isRoot ? exporters::FileJoint::kNoParent : joint.parent, joint.isEndSite});
    }
    return skeleton;
}

exporters::Source SourceOf(const take::Request& request, const take::Result& result,
                           std::vector<exporters::SourceFile> files) {
    const take::FormatInfo& format = take::InfoOf(request.format);
    exporters::Source source;
    source.files = std::move(files);
    source.format = format.name;
    source.tool = "zkhost " ZKHOST_VERSION;
    source.options = {{"nulls", Text(request.useNulls)},
                      {"chainFromParent", Text(request.chainFromParentJoint)},
                      {"effectorToLastBone", Text(request.effectorToLastBone)}};
    if (!format.hasLimitsAndLengths) return source;
    source.options.emplace_back("limits", Text(request.applyLimits));
    if (result.lengthMultiplier)
        source.options.emplace_back("length", fmt::format("{}", *result.lengthMultiplier));
    return source;
}

}  // namespace

std::vector<exporters::FileSkeleton> SkeletonsOf(const take::Result& result) {
    std::vector<exporters::FileSkeleton> skeletons;
    for (const survey::Outline& outline : result.outlines)
        skeletons.push_back(SkeletonOf(outline));
    return skeletons;
}

exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result,
                                   std::vector<exporters::SourceFile> sources) {
    exporters::Options options = request.exports;
    options.enlarged = result.multiplied;
    options.framesPerSecond = result.framesPerSecond;
    options.models = result.outcome.models;
    options.skeletons = SkeletonsOf(result);
    options.source = SourceOf(request.take, result, std::move(sources));
    return options;
}

exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result) {
    const headless::Recording& recording = result.recording;
    exporters::RunRecord record{result.code, recording.log, recording.bar, recording.commands};
    record.userInput = take::UserInputJson(result.userInput);
    if (!request.take.asIs || result.isRefused)
        record.findings = take::FindingsJson(result.findings);
    record.findingFrames = take::FramesOf(result.findings);
    record.multiplied = result.multiplied;
    return record;
}

}  // namespace cli
