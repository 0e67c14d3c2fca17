#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "acclaim/amc_key_lists.h"
#include "acclaim/node_names.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/file_allowance.h"
#include "mocap/mocap_import_base.h"

// Imports the Acclaim pair: an ASF file becomes a model with a skeleton, an AMC file a motion of
// it. The parsed skeleton stays for any number of motions.
class CAcclaimImport : public CMocapImportBase {
  public:
    CAcclaimImport();
    ~CAcclaimImport() override;

    // Whether values of a motion are held within the limits of the skeleton file.
    void ApplyLimits(bool apply) { applyLimits = apply; }
    // With true, `multiplier` replaces the length factor of the skeleton file and scales the root's
    // translations as well. With false the file's factor holds, once it names one; the number then
    // means nothing.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier);

    // The whole import of one skeleton. The model is named after `name`. Scene objects made before
    // a failure stay.
    Zelk::CStatus ImportSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    // The whole import of one motion onto the skeleton that was imported last, as an action of that
    // name. The model is then in its base pose.
    Zelk::CStatus ImportMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);

    // What the skeleton file says about itself.
    const Zelk::CString& GetDocumentation() const { return documentation; }

  protected:
    // --- acclaim_import.cpp ---
    // Frees the file and the keys, with `all` the skeleton too. The length factor, the options and
    // the frame time stay.
    void Clear(bool all);
    // The first node of that name in any letter case; null without one.
    MOCAPMODEL* FindModelByName(const char* name);
    // The next token that is no comment; null at the end of the file. A comment runs from a token
    // that begins with "#" to the end of its line, and in the last line to the end of the file.
    const char* GetNextAccString();

    // --- asf_parser.cpp, asf_bonedata.cpp, asf_hierarchy.cpp: from tokens to nodes ---
    // Parses what follows the file's version. Gives mocap::kEndOfFile or a failure that was
    // recorded. The handlers parse from their section's keyword to the next one, and give kOk where
    // there is a next one.
    std::int32_t ParseASF();
    std::int32_t HandleName();
    std::int32_t HandleUnits();
    std::int32_t HandleDocumentation();
    std::int32_t HandleRoot();
    std::int32_t HandleBoneData();
    std::int32_t HandleBoneBegin();
    std::int32_t HandleHierarchy();

    // --- asf_fixups.cpp: after the keys were read and their order was normalised ---
    // From rotations in each bone's own frame to rotations as its parent sees them.
    std::int32_t GlobalizeRotations();
    // From animated lengths to translations of the bones' children.
    std::int32_t FixLength();

    // --- asf_import.cpp, amc_import.cpp: from nodes and keys to the scene ---
    Zelk::CStatus CreateSkeletonZelkEntities(const Zelk::CString& name);
    Zelk::CStatus CreateMotionZelkEntities(const Zelk::CString& motionName);

    // --- amc_parser.cpp ---
    // The file from behind its header on: keys for every channel that the frames hold values for.
    std::int32_t ParseAMC();

  private:
    struct ChannelTokens;
    // A frame's bones in the order of the first frame that named them, and the values so far.
    struct Motion;

    // To the next line; false, without moving, in the last one.
    bool SkipLine();

    std::int32_t ParseRootParameter(MOCAPMODEL& root, const char* token, const char*& order);
    std::int32_t ParseRootOrientation(MOCAPMODEL& root, const char* order);
    std::int32_t ParseBoneParameter(MOCAPMODEL& bone, const char* token);
    std::int32_t ParseBoneName(MOCAPMODEL& bone);
    std::int32_t ParseBoneAxis(MOCAPMODEL& bone);
    std::int32_t ParseLimits(MOCAPMODEL& bone);
    std::int32_t ParseLimit(double& limit, bool& hasLimit);

    // --- asf_values.cpp ---
    // Three numbers, each with the message for where it is missing.
    std::int32_t ParseVector(double* vector, const wchar_t* const* expected);
    std::int32_t ParseAxisOrder(const char*& order, const wchar_t* unknown);
    std::int32_t ParseRootOrder(MOCAPMODEL& root);
    std::int32_t ParseDof(MOCAPMODEL& bone);
    // The rest of a line of channel names, into the slots from the first.
    std::int32_t ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens);
    // Angles applied in that order of axes to the same rotation's X-Y-Z angles, in the file's unit.
    void ConvertToXYZ(double* angles, const char* order) const;
    // From the file's unit to degrees.
    void ConvertToDegrees(double* angles) const;

    std::int32_t RenameRoot(const char* token);
    std::int32_t ParseHierarchyLine(const char* token);
    static void AttachChild(MOCAPMODEL& parent, MOCAPMODEL& child);
    std::int32_t EndLeaves();

    bool ReadFrameNumber(int& number);
    std::int32_t ReadFrame(Motion& motion);
    // Fills the slot behind the last; it stays unfilled where the bone is unknown.
    std::int32_t ResolveBone(Motion& motion, const char* name);
    std::int32_t ReadBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys);
    double ConvertValue(const CHANNELS& channel, double value) const;
    std::int32_t AttachKeys(Motion& motion);

    Zelk::CStatus BuildSkeleton(const Zelk::CString& name);
    // The arguments, the file, and its head up to where the parsers begin.
    std::int32_t ReadSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name);
    std::int32_t CheckVersion();
    std::int32_t ReadMotion(const Zelk::CString& amcFile, const Zelk::CString& motionName);
    std::int32_t ReadMotionHeader();
    std::int32_t ReadAngleUnit();
    Zelk::CStatus BuildMotion(const Zelk::CString& motionName);
    // Recorded when the file is gone, so without a line.
    std::int32_t RefuseFile(bool all, std::int32_t status, const Zelk::CString& message);

    // To the log, while the file has warnings left; the others are counted.
    void LogWarning(const std::wstring& message);
    // The last of a file's warnings says how many others there are.
    void LogWarningsLeftOut() const;

    // In characters: a line of a byte or two can ask for a warning of sixty.
    FileAllowance warnings{std::uint64_t{4} << 20, 2, 1};
    std::uint64_t warningsLeftOut = 0;
    Zelk::CString documentation;
    double lengthMultiplier = 1.0;
    double frameTime = 0.03333333333333333;  // seconds
    std::uint32_t lastFrame = 0;             // the highest number of a frame
    bool degrees = true;                     // the unit of the skeleton file's angles
    bool applyLimits = false;
    bool hasSeparators = false;  // false where there was no memory for them
    bool overrideLengthMultiplier = false;

    NodeNames names;
    std::size_t namedNodes = 0;    // how many of the nodes `names` knows
    std::size_t settledNodes = 0;  // how many of them went through EndLeaves
    std::uint32_t lastLine = 0;    // from this position on, no further line begins
};
