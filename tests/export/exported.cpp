#include "tests/export/exported.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <unordered_map>

#include "acclaim/acclaim_import.h"
#include "bvh/biovision_import.h"
#include "export/bvh.h"
#include "export/csv.h"
#include "export/fbx.h"
#include "export/gltf.h"
#include "export/npz.h"
#include "export/page.h"
#include "export/skeleton_poses.h"
#include "files/output_file.h"
#include "headless/evaluation.h"
#include "headless/session.h"
#include "headless/text.h"
#include "tests/support/bvh_walk.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "text/wide_text.h"

namespace exported {
namespace {

using headless::Object;
using headless::Transform;

Zelk::CString HostText(const std::string& text) {
    return Zelk::CString(text::DecodeUtf8(text).c_str());
}

double BoxSize(const std::vector<Vec3>& positions) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    Vec3 least{kFar, kFar, kFar};
    Vec3 most{-kFar, -kFar, -kFar};
    for (const Vec3& position : positions) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], position[axis]);
            most[axis] = std::max(most[axis], position[axis]);
        }
    }
    return positions.empty() ? 0.0 : support::Distance(least, most);
}

std::vector<double> FramesOf(const headless::ActionSource& motion) {
    for (const headless::ActionItem& item : motion.items)
        if (item.IsCurve() && item.GetCurve().keys.Count() > 0) {
            const headless::NumberArray& times = *item.GetCurve().keys.times;
            return {times.begin(), times.end()};
        }
    return {};
}

}  // namespace

bool Import(const std::vector<std::string>& files, const ImportSettings& settings) {
    headless::Session::Current().Reset();
    const std::string name = std::filesystem::path(files.front()).stem().string();
    if (files.front().ends_with(".bvh")) {
        CBiovisionImport importer;
        importer.SetOptions(settings.nulls, true, settings.effectorToLastBone, true);
        return importer.ImportBVH(HostText(files.front()), HostText(name)).Succeeded();
    }
    CAcclaimImport importer;
    importer.SetOptions(settings.nulls, true, settings.effectorToLastBone, true);
    if (settings.lengthMultiplier != 0.0)
        importer.OverrideLengthMultiplier(true, settings.lengthMultiplier);
    return importer.ImportSkeleton(HostText(files.front()), HostText(name)).Succeeded() &&
           (files.size() == 1 ||
            importer.ImportMotion(HostText(files[1]), HostText(name + "_Motion")).Succeeded());
}

bool ImportText(const std::string& bvh, const ImportSettings& settings) {
    const support::TemporaryFolder folder;
    return Import({folder.Write("take.bvh", bvh)}, settings);
}

const headless::Scene& CurrentScene() {
    return headless::Session::Current().GetScene();
}

const headless::ActionSource* MotionOf(const Object& model) {
    const auto& actions = model.modelData->actions;
    return actions.size() > 1 ? actions.back().get() : nullptr;
}

double Take::Distance(const Take& other, std::size_t frame, std::size_t skipped) const {
    double most = 0.0;
    for (std::size_t joint = 0; joint < names.size(); ++joint) {
        const double distance =
            support::Distance(positions[frame][joint], other.positions[frame][joint + skipped]);
        if (!(distance <= most)) most = distance;
    }
    return most;
}

Take Record(const Object& model) {
    const headless::ActionSource* motion = MotionOf(model);
    const headless::MotionEvaluator evaluator(CurrentScene(), model, motion);
    std::unordered_map<const Object*, std::size_t> indexOf;
    for (std::size_t index = 0; index < evaluator.Objects().size(); ++index)
        indexOf[evaluator.Objects()[index]] = index;

    const exporters::SkeletonPoses order(CurrentScene(), model, 0, nullptr, {});
    Take take;
    std::vector<std::size_t> indices;
    for (const exporters::Joint& joint : order.Joints()) {
        take.names.push_back(text::EncodeUtf8(joint.name));
        indices.push_back(indexOf.at(joint.object));
    }
    if (motion) {
        take.frames = FramesOf(*motion);
        take.secondsPerFrame = headless::SecondsPerFrame(*motion);
    }
    std::vector<Transform> globals(evaluator.Objects().size());
    const std::vector<double> frames = take.frames.empty() ? std::vector<double>{1.0} : take.frames;
    for (const double frame : frames) {
        evaluator.Evaluate(frame, globals);
        auto& row = take.positions.emplace_back();
        for (const std::size_t index : indices) {
            const double* origin = globals[index].origin;
            row.push_back({origin[0], origin[1], origin[2]});
        }
    }
    take.size = BoxSize(take.positions.front());
    return take;
}

std::vector<Take> RecordAll() {
    std::vector<Take> takes;
    for (const Object* model : CurrentScene().Models())
        takes.push_back(Record(*model));
    return takes;
}

exporters::Notes ExportTo(const std::string& path, const exporters::Options& options) {
    const std::filesystem::path parts = path;
    const std::string extension = parts.extension().string();
    files::OutputFile file(path);
    exporters::Notes notes;
    if (extension == ".glb") notes = exporters::WriteGlb(file, CurrentScene(), options);
    if (extension == ".fbx") notes = exporters::WriteFbx(file, CurrentScene(), options);
    if (extension == ".bvh") notes = exporters::WriteBvh(file, CurrentScene(), options);
    if (extension == ".csv") notes = exporters::WriteCsv(file, CurrentScene(), options);
    if (extension == ".npz") notes = exporters::WriteNpz(file, CurrentScene(), options, {});
    if (extension == ".gltf") {
        const std::string binaryName = parts.stem().string() + ".bin";
        files::OutputFile binary((parts.parent_path() / binaryName).string());
        notes = exporters::WriteGltf(file, binary, binaryName, CurrentScene(), options);
        binary.Commit();
    }
    file.Commit();
    return notes;
}

std::string Export(const std::string& extension, const exporters::Options& options,
                   exporters::Notes* notes) {
    const support::TemporaryFolder folder;
    const std::string path = folder.Path("export" + extension);
    const exporters::Notes written = ExportTo(path, options);
    if (notes) *notes = written;
    return support::ReadText(path);
}

std::vector<exporters::Format> WrittenFormats() {
    std::vector<exporters::Format> formats;
    for (const exporters::Format& format : exporters::Formats())
        if (format.extension != ".html" || exporters::HasViewer()) formats.push_back(format);
    return formats;
}

std::vector<std::vector<std::string>> RealCaptures() {
    std::vector<std::vector<std::string>> captures;
    const std::filesystem::path folder = support::CaptureFolder().value();
    const auto acclaim = [&](const char* skeleton, const char* motion) {
        captures.push_back(
            {(folder / "acclaim" / skeleton).string(), (folder / "acclaim" / motion).string()});
    };
    for (const auto& file : support::FilesIn(folder / "bvh", ".bvh"))
        captures.push_back({file.string()});
    acclaim("08.asf", "08_04.amc");
    acclaim("11.asf", "11_01.amc");
    acclaim("14.asf", "14.amc");
    acclaim("135-martialArts.asf", "135_06-martialArts.amc");
    acclaim("08.asf", "zeros.amc");
    return captures;
}

std::vector<std::vector<std::string>> Samples() {
    const std::filesystem::path folder = ZKMOCAP_EXAMPLES_DIR;
    return {{(folder / "walk.bvh").string()},
            {(folder / "walk.asf").string(), (folder / "walk.amc").string()}};
}

}  // namespace exported
