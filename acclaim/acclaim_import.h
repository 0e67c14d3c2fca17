#pragma once

#include <cstdint>
#include <string>

#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/bar_monitor.h"
#include "mocap/mocap_import_base.h"

// Imports Acclaim files. An ASF file becomes a model with a skeleton. An AMC file becomes a motion
// of this skeleton. The importer keeps the parsed skeleton, so any number of motions can be
// imported after it.
class CAcclaimImport : public CMocapImportBase {
  public:
    CAcclaimImport();
    ~CAcclaimImport() override;

    // If `apply` is true, values of a motion are clamped to the limits in the skeleton file.
    void ApplyLimits(bool apply) { parser.ApplyLimits(apply); }
    // If `overrideMultiplier` is true, `multiplier` replaces the length factor of every skeleton
    // file, and the root's translations are multiplied by it too. If it is false, `multiplier` is
    // ignored. The present factor then stays in use until a skeleton file gives another factor.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier) {
        parser.OverrideLengthMultiplier(overrideMultiplier, multiplier);
    }

    // Imports a whole ASF file as a model named after `name`. If the import fails, the objects that
    // it has created stay in the scene.
    Zelk::CStatus ImportSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    // Imports a whole AMC file onto the skeleton that was imported last, as an action called
    // `motionName`. After the import the model is in its base pose.
    Zelk::CStatus ImportMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);

    // The text of the skeleton file's ":documentation" section.
    const Zelk::CString& GetDocumentation() const { return documentation; }

    // Returns the first node with that name, or null if there is none. Upper and lower case of
    // ASCII letters are not distinguished. The node is valid until the next call of ImportSkeleton.
    MOCAPMODEL* FindModelByName(const char* name) { return parser.FindModelByName(name); }

  private:
    // Connects the parser to the progress bar, and writes its warnings to the host's log.
    class Monitor : public BarMonitor {
      public:
        using BarMonitor::BarMonitor;
        void Warn(const std::wstring& message) override;
    };

    // Frees the file and the keys. If `all` is true, also frees the skeleton. The length factor,
    // the options and the frame time keep their values.
    void Clear(bool all);
    // Calls Clear, then records the error and returns `status`. Because the file is already freed,
    // the error has no line number.
    std::int32_t RefuseFile(bool all, std::int32_t status, const Zelk::CString& message);

    // --- asf_import.cpp, amc_import.cpp ---
    // Check the arguments, load the file, and parse the ASF version or the AMC header.
    std::int32_t OpenSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    std::int32_t OpenMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);
    std::int32_t ParseASF();
    std::int32_t ParseAMC();
    Zelk::CStatus BuildSkeleton(const Zelk::CString& name);
    Zelk::CStatus BuildMotion(const Zelk::CString& motionName);
    Zelk::CStatus CreateSkeletonZelkEntities(const Zelk::CString& name);
    Zelk::CStatus CreateMotionZelkEntities(const Zelk::CString& motionName);

    // --- asf_fixups.cpp: called after FixRotationsOrder ---
    // Converts rotations about each bone's own axes to rotations about its parent's axes.
    std::int32_t GlobalizeRotations();
    // Adds these conversions to `jobs`.
    std::int32_t CollectGlobalRotations(RotationJobs& jobs);
    // Converts animated bone lengths to animated positions of the bones' children.
    std::int32_t FixLength();

    Monitor monitor{progressBar};
    AcclaimParser parser{stringFile, *this, allowances, monitor};
    Zelk::CString documentation;
};
