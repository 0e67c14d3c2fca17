#pragma once

#include <cstdint>
#include <list>
#include <memory>

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

    // The whole import of one file. Models are named after `name`. Scene objects made before a
    // failure stay; GetModelsCount tells how many models were completed, and the last of them is
    // the one that GetLastModel and its kin hand out.
    Zelk::CStatus ImportBVH(const Zelk::CString& fileName, const Zelk::CString& name);
    std::uint32_t GetModelsCount() const { return importedModels; }

  protected:
    // --- bvh_parser.cpp: from tokens to nodes and keys; makes no scene object ---
    // Parses what follows a section's HIERARCHY keyword. mocap::kEndOfFile: the file ended
    // without a motion. Failures are recorded.
    std::int32_t ParseBVH(MOCAPMODEL* current);
    std::int32_t ParseMotion();

    // --- bvh_import.cpp: from nodes and keys to the scene ---
    Zelk::CStatus CreateZelkEntities(const Zelk::CString& name);
    // Frees what was parsed, with `clearFile` the file too.
    void Clear(bool clearFile);

  private:
    enum class NodeKind { Joint, EndSite };
    std::int32_t ParseNode(NodeKind kind, MOCAPMODEL*& current);
    std::int32_t ParseName(NodeKind kind, MOCAPMODEL& node);
    bool AllowsEndSiteName(const MOCAPMODEL* parent);
    static std::unique_ptr<char[]> EndSiteName(const MOCAPMODEL* parent);
    std::int32_t ParseOffset(MOCAPMODEL& node);
    void AttachToParent(MOCAPMODEL& node);
    std::int32_t ParseChannels(MOCAPMODEL& node);
    std::int32_t ParseChannel(MOCAPMODEL& node);

    std::int32_t ParseFrameHeader();
    void ShowMotionProgress();
    // Whether so many values can follow in the rest of the file at all.
    bool CanHoldFrames() const;
    std::int32_t ReadFrames(KeyArray* keys);

    // Whether the next token is `keyword`, which is then taken.
    bool TakeKeyword(const char* keyword);

    Zelk::CStatus ImportFile(const Zelk::CString& fileName, const Zelk::CString& name);
    Zelk::CStatus ImportSections(const Zelk::CString& name);
    Zelk::CStatus ImportSection(const Zelk::CString& name, std::int32_t& parsed);
    Zelk::CStatus BuildSection(const Zelk::CString& name, std::int32_t& parsed);
    // Whether the file may have this section: a failure is recorded.
    std::int32_t CountSection(const Zelk::CString& name);
    Zelk::CStatus CreateActions();
    Zelk::CStatus CreateSkeleton();
    Zelk::CStatus CreateMotion();

    // Each makes a model, two actions and a group. Those with channels and frames do not count.
    FileAllowance sectionsLeft{10000, 1, 96};
    std::uint32_t importedModels = 0;
    std::uint32_t bracketDepth = 0;  // "{" opened and not yet closed
    std::list<KeyArray*> keySlots;   // of each channel, in the file's order; the nodes'
    double frameTime = 0.0;          // seconds
};
