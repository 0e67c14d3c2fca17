#pragma once

#include <cstdint>
#include <string>

#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/mocap_import_base.h"

// Imports the Acclaim pair: an ASF file becomes a model with a skeleton, an AMC file a motion of
// it. The parsed skeleton stays, so that any number of motions can follow.
class CAcclaimImport : public CMocapImportBase {
  public:
    CAcclaimImport();
    ~CAcclaimImport() override;

    // Whether values of a motion are clamped to the limits in the skeleton file.
    void ApplyLimits(bool apply) { parser.ApplyLimits(apply); }
    // With true, `multiplier` replaces the length factor of the skeleton file and scales the root's
    // translations as well. With false, `multiplier` is ignored: the factor stays as it is until a
    // skeleton file states one.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier) {
        parser.OverrideLengthMultiplier(overrideMultiplier, multiplier);
    }

    // Imports a whole ASF file as a model named after `name`. Scene objects that were made before a
    // failure stay.
    Zelk::CStatus ImportSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    // Imports a whole AMC file onto the skeleton that was imported last, as an action called
    // `motionName`. The model is then in its base pose.
    Zelk::CStatus ImportMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);

    // The text of the skeleton file's ":documentation" section.
    const Zelk::CString& GetDocumentation() const { return documentation; }

    // The first node of that name; null when there is none. Upper and lower case of ASCII letters
    // are not distinguished. The nodes exist until the next skeleton is imported.
    MOCAPMODEL* FindModelByName(const char* name) { return parser.FindModelByName(name); }

  private:
    // Passes what the parser asks and reports on to the progress bar and the host's log.
    class Monitor : public ParseMonitor {
      public:
        explicit Monitor(CAcclaimImport& importer) : importer_(importer) {}
        bool IsCancelled() override { return importer_.progressBar->IsCancelled(); }
        void Advance(unsigned int steps) override { importer_.progressBar->Advance(steps); }
        void Warn(const std::wstring& message) override;

      private:
        CAcclaimImport& importer_;
    };

    // Frees the file and the keys, and with `all` the skeleton too. The length factor, the options
    // and the frame time stay.
    void Clear(bool all);
    // Frees what was parsed, then records the error. The file is freed too, so the error has no
    // line.
    std::int32_t RefuseFile(bool all, std::int32_t status, const Zelk::CString& message);

    // --- asf_import.cpp, amc_import.cpp ---
    // Check the arguments, load the file and parse its head.
    std::int32_t OpenSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    std::int32_t OpenMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);
    std::int32_t ParseASF();
    std::int32_t ParseAMC();
    Zelk::CStatus BuildSkeleton(const Zelk::CString& name);
    Zelk::CStatus BuildMotion(const Zelk::CString& motionName);
    Zelk::CStatus CreateSkeletonZelkEntities(const Zelk::CString& name);
    Zelk::CStatus CreateMotionZelkEntities(const Zelk::CString& motionName);

    // --- asf_fixups.cpp: after the keys were parsed and normalised ---
    // Converts rotations about each bone's own axes to rotations about its parent's.
    std::int32_t GlobalizeRotations();
    // Converts animated lengths to translations of the bones' children.
    std::int32_t FixLength();

    Monitor monitor{*this};
    AcclaimParser parser{stringFile, *this, allowances, monitor};
    Zelk::CString documentation;
};
