#include "bridge/export_input.h"

#include <fmt/format.h>
#include <utility>

#include "survey/outline.h"
#include "take/commands.h"
#include "take/findings.h"
#include "take/user_input_json.h"

namespace bridge {
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
                           std::string tool, std::vector<exporters::SourceFile> files) {
    const take::FormatInfo& format = take::InfoOf(request.format);
    exporters::Source source;
    source.files = std::move(files);
    source.format = format.name;
    source.tool = std::move(tool);
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

exporters::Options ExportOptionsOf(const exporters::Options& chosen, const take::Request& request,
                                   const take::Result& result, std::string tool,
                                   std::vector<exporters::SourceFile> files) {
    exporters::Options options = chosen;
    options.enlarged = result.multiplied;
    options.framesPerSecond = result.framesPerSecond;
    options.models = result.outcome.models;
    options.skeletons = SkeletonsOf(result);
    options.source = SourceOf(request, result, std::move(tool), std::move(files));
    return options;
}

exporters::RunRecord RecordOf(const take::Request& request, const take::Result& result) {
    const headless::Recording& recording = result.recording;
    exporters::RunRecord record{result.code, recording.log, recording.bar, recording.commands};
    record.userInput = take::UserInputJson(result.userInput);
    if (!request.asIs || result.isRefused) record.findings = take::FindingsJson(result.findings);
    record.findingFrames = take::FramesOf(result.findings);
    record.multiplied = result.multiplied;
    return record;
}

}  // namespace bridge
