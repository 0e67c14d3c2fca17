#pragma once

#include <cstdint>

#include "bvh/bvh_parser.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/bar_monitor.h"
#include "mocap/file_allowance.h"
#include "mocap/mocap_import_base.h"

// Imports Biovision BVH files. Each HIERARCHY of a file, with the MOTION that follows it, is a
// section. Each section becomes a separate model.
class CBiovisionImport : public CMocapImportBase {
  public:
    CBiovisionImport();
    ~CBiovisionImport() override;

    // Imports a whole file. The host makes the names of the models from `name`. If the import
    // fails, the objects that it has created stay in the scene. GetModelsCount returns how many
    // models were completed. GetLastModel, GetLastBasePose and GetLastMotion return the objects of
    // the last completed model.
    Zelk::CStatus ImportBVH(const Zelk::CString& fileName, const Zelk::CString& name);
    std::uint32_t GetModelsCount() const { return importedModels; }

    // Builds the scene of a section that the caller has parsed. The host makes the name of the
    // model from `name`. `sectionFrameTime` is in seconds. After the call, GetSkeleton returns the
    // section's nodes with their scene objects.
    Zelk::CStatus ImportParsed(MocapSkeleton section, double sectionFrameTime,
                               const Zelk::CString& name);

  private:
    // Connects the parser to the progress bar, and prepares the bar for the values of the motion.
    class Monitor : public BarMonitor {
      public:
        explicit Monitor(CBiovisionImport& importer)
            : BarMonitor(importer.progressBar), importer_(importer) {}
        void BeginValues() override { importer_.ShowMotionProgress(); }

      private:
        CBiovisionImport& importer_;
    };

    // Parses a section from after its HIERARCHY keyword to its last value. `current` must be null.
    // Returns mocap::kEndOfFile when the file ends without a motion. Errors are recorded.
    std::int32_t ParseBVH(MOCAPMODEL* current);
    std::int32_t ParseMotion();
    void ShowMotionProgress();

    Zelk::CStatus ImportFile(const Zelk::CString& fileName, const Zelk::CString& name);
    Zelk::CStatus ImportSections(const Zelk::CString& name);
    Zelk::CStatus ImportSection(const Zelk::CString& name, std::int32_t& parsed);
    Zelk::CStatus BuildSection(const Zelk::CString& name, std::int32_t& parsed);
    // Builds the scene from the parsed nodes and keys.
    Zelk::CStatus BuildScene(const Zelk::CString& name);
    Zelk::CStatus CreateZelkEntities(const Zelk::CString& name);
    // If the section has no channels, or has no frames, takes what it needs from the allowances of
    // the file. If not enough is left, records the error and returns a negative status.
    std::int32_t CountSection(const Zelk::CString& name);
    Zelk::CStatus CreateActions();
    Zelk::CStatus CreateSkeleton();
    Zelk::CStatus CreateMotion();
    // Frees the parsed section. If `clearFile` is true, also frees the file.
    void Clear(bool clearFile);

    // How many more sections the file may have that have no channels, or that have no frames. Such
    // a section may need only a few bytes of the file. Even so, it creates a model, two actions
    // and, if `createGroup` is true, a group. All other sections have more text, so they are not
    // counted.
    FileAllowance sectionsLeft{10000, 1, 96};
    std::uint32_t importedModels = 0;
    Monitor monitor{*this};
    BvhParser parser{stringFile, *this, allowances, monitor};
    double frameTime = 0.0;  // seconds
};
