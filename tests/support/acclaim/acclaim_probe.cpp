#include "tests/support/acclaim/acclaim_probe.h"

#include "acclaim/acclaim_import.h"
#include "headless/session.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

std::wstring Wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

// A node without an object is the end node of a leaf; it is at the effector of the leaf's chain.
std::uint32_t ObjectOf(const MOCAPMODEL& node) {
    if (node.nullObject.IsValid()) return node.nullObject.GetRef().Object();
    if (node.bone.IsValid()) return node.bone.GetRef().Object();
    if (node.parent == nullptr || !node.parent->bone.IsValid()) return 0;
    return node.parent->bone.GetEffector().GetRef().Object();
}

}  // namespace

ProbedSection ProbeNodes(const CAcclaimImport& importer) {
    ProbedSection section;
    section.model = importer.GetLastModel().GetRef().Object();
    for (const auto& node : importer.GetSkeleton().models)
        section.joints.push_back(ObjectOf(*node));
    return section;
}

ProbedPair ImportAcclaimText(const std::string& asf, const std::optional<std::string>& amc,
                             const AcclaimOptions& options) {
    headless::Session::Current().Reset();
    // One for all imports of the process: making and removing files takes longer than an import.
    static const TemporaryFolder dir;
    CAcclaimImport importer;
    importer.SetOptions(options.nulls, options.chainFromParent, options.effectorToLastBone,
                        options.group);
    importer.ApplyLimits(options.limits);
    if (options.length) importer.OverrideLengthMultiplier(true, *options.length);

    ProbedPair result;
    result.skeletonStatus =
        importer.ImportSkeleton(Wide(dir.Write("probe.asf", asf)).c_str(), L"probe").GetCode();
    if (result.skeletonStatus == 0) {
        if (amc)
            result.motionStatus =
                importer.ImportMotion(Wide(dir.Write("probe.amc", *amc)).c_str(), L"motion")
                    .GetCode();
        result.section = ProbeNodes(importer);
    }
    result.error = Utf8(importer.GetLastError(nullptr, nullptr));
    return result;
}

}  // namespace support
