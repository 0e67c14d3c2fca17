#pragma once

#include <cstdint>

#include "bvh/bvh_parser.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/file_allowance.h"
#include "mocap/mocap_import_base.h"

// Imports Biovision BVH files: each HIERARCHY section of a file, with the MOTION that follows it,
// becomes a model of its own.
class CBiovisionImport : public CMocapImportBase {
  public:
    CBiovisionImport();
    ~CBiovisionImport() override;

    // Imports a whole file. Models are named after `name`. Scene objects that were made before a
    // failure stay. GetModelsCount says how many models were completed; GetLastModel,
    // GetLastBasePose and GetLastMotion return what belongs to the last of them.
    Zelk::CStatus ImportBVH(const Zelk::CString& fileName, const Zelk::CString& name);
    std::uint32_t GetModelsCount() const { return importedModels; }

    // Builds the scene of a section that the caller parsed, as a model named after `name`.
    // `sectionFrameTime` is in seconds. Afterwards GetSkeleton returns the section's nodes with
    // their scene objects.
    Zelk::CStatus ImportParsed(MocapSkeleton section, double sectionFrameTime,
                               const Zelk::CString& name);

  private:
    // Connects the parser to the progress bar: tells it whether the user cancelled, and shows its
    // progress.
    class Monitor : public ParseMonitor {
      public:
        explicit Monitor(CBiovisionImport& importer) : importer_(importer) {}
        bool IsCancelled() override { return importer_.progressBar->IsCancelled(); }
        void Advance(unsigned int steps) override { importer_.progressBar->Advance(steps); }
        void BeginValues() override { importer_.ShowMotionProgress(); }

      private:
        CBiovisionImport& importer_;
    };

    // Parses what follows a section's HIERARCHY keyword. Returns mocap::kEndOfFile when the file
    // ends without a motion. Errors are recorded.
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
    // Counts the section against the limits of its file. If a limit is exceeded, records the error
    // and returns its status.
    std::int32_t CountSection(const Zelk::CString& name);
    Zelk::CStatus CreateActions();
    Zelk::CStatus CreateSkeleton();
    Zelk::CStatus CreateMotion();
    // Frees what was parsed, and with `clearFile` the file too.
    void Clear(bool clearFile);

    // How many sections without channels or frames a file may have. Each of them makes a model, two
    // actions and a group from very little text. Other sections need more text, so they are not
    // counted.
    FileAllowance sectionsLeft{10000, 1, 96};
    std::uint32_t importedModels = 0;
    Monitor monitor{*this};
    BvhParser parser{stringFile, *this, allowances, monitor};
    double frameTime = 0.0;  // seconds
};
