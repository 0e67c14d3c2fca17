#include "export/fbx.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <vector>

#include "export/exported_motion.h"
#include "export/fbx_animation.h"
#include "export/fbx_motion.h"
#include "export/fbx_objects.h"
#include "export/fbx_settings.h"
#include "export/fbx_skeleton.h"
#include "export/figure_facts.h"
#include "export/motion_facts.h"
#include "export/timeline.h"

namespace exporters {
namespace {

// The share of the time after which the file is built.
constexpr double kBuildShare = 0.8;

class FbxBuilder {
  public:
    FbxBuilder(const headless::Scene& scene, const Options& options)
        : scene_(scene), options_(options) {}

    // Throws ExportError if the scene cannot be written as FBX, and what `progress` throws.
    void Build(const Progress& progress) {
        AddFbxHeader(file_, options_);
        FbxNode& settings = file_.Add("GlobalSettings");
        FbxNode& documents = file_.Add("Documents");
        file_.Add("References").CloseList();
        FbxNode& definitions = file_.Add("Definitions");
        FbxObjects objects(file_.Add("Objects"), file_.Add("Connections"));

        const std::vector<ExportedModel> models = ExportedModels(scene_, options_);
        for (const ExportedModel& model : models)
            AddModel(objects, model, progress.Part(model.index, models.size()));
        AddFbxSettings(settings, settings_);
        AddFbxDocuments(documents, takes_);
        AddFbxDefinitions(definitions, objects.Counts());
        AddFbxTakes(file_.Add("Takes"), takes_);
    }

    void Write(text::ByteSink& out, const Progress& progress) { file_.Write(out, progress); }

    const Notes& GetNotes() const { return notes_; }

  private:
    void AddModel(FbxObjects& objects, const ExportedModel& model, const Progress& progress) {
        const ExportedMotion pose(scene_, model, options_);
        const FbxSkeleton skeleton = AddFbxSkeleton(objects, scene_, model, pose, options_, notes_);
        if (model.index == 0) DescribeUnit(model);
        if (MotionOf(*model.object) == nullptr) NoteNoMotion(*model.object, notes_);
        // The first action is the base pose; all others are motions.
        const auto& actions = model.object->modelData->actions;
        for (std::size_t action = 1; action < actions.size(); ++action) {
            const ExportedMotion motion(scene_, model, actions[action].get(), options_, false,
                                        notes_);
            if (motion.Motion() == nullptr || skeleton.joints.empty()) continue;
            AddMotion(objects, model, motion, skeleton,
                      progress.Part(action - 1, actions.size() - 1));
        }
    }

    // The other outputs that state the unit look at the first model and its last motion too.
    void DescribeUnit(const ExportedModel& model) {
        Notes notes;  // AddModel makes the same ones
        const ExportedMotion motion(scene_, model, MotionOf(*model.object), options_, false, notes);
        if (motion.Joints().empty()) return;
        const double metres = DescribeFigure(motion, options_).metresPerUnit;
        if (metres > 0.0) settings_.centimetresPerUnit = 100.0 * metres;
    }

    void AddMotion(FbxObjects& objects, const ExportedModel& model, const ExportedMotion& source,
                   const FbxSkeleton& skeleton, const Progress& progress) {
        const FbxMotion& motion =
            motions_.emplace_back(scene_, *model.object, source, skeleton.rest,
                                  options_.compress.value_or(true), times_, progress);
        AddFbxAnimation(objects, motion, skeleton);
        if (takes_.empty()) settings_.framesPerSecond = motion.FramesPerSecond();
        settings_.stop = std::max(settings_.stop, motion.Stop());
        takes_.push_back({motion.Name(), motion.Stop()});
    }

    const headless::Scene& scene_;
    const Options& options_;
    Notes notes_;
    FbxTimes times_;
    std::deque<FbxMotion> motions_;  // to whose keys the nodes of the file refer
    std::vector<FbxTake> takes_;
    FbxSettings settings_;
    FbxFile file_;
};

}  // namespace

Notes WriteFbx(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress) {
    FbxBuilder builder(scene, options);
    builder.Build(progress.Between(0.0, kBuildShare));
    builder.Write(out, progress.Between(kBuildShare, 1.0));
    return builder.GetNotes();
}

}  // namespace exporters
