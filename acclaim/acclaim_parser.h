#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "acclaim/amc_key_lists.h"
#include "acclaim/node_names.h"
#include "mocap/mocap_parser.h"

// What the files of an Acclaim pair say beyond their nodes and keys.
struct AcclaimFacts {
    std::string name;            // of the skeleton, as in the file
    std::wstring documentation;  // by the process's character locale
    // The factor on bone lengths. It stays from file to file, and so does the frame time.
    double lengthMultiplier = 1.0;
    double frameTime = 0.03333333333333333;  // seconds
    std::uint32_t lastFrame = 0;             // the highest frame number of the motion
    bool degrees = true;                     // the unit of the skeleton file's angles
};

// Parses an ASF file to nodes, and then any number of AMC files to keys in the channels of these
// nodes. Before each file: Forget its predecessor, then load it into the reader.
class AcclaimParser : public MocapParser {
  public:
    // Keeps references to all four, and sets the reader's separators.
    AcclaimParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                  FileAllowances& fileAllowances, ParseMonitor& parseMonitor);

    // Before an AMC file: forgets what the parser knows of the file before.
    void ForgetFile();
    // Before an ASF file: forgets the skeleton too. The nodes and their keys belong to the caller.
    void ForgetSkeleton();

    // False when there was no memory for the separators. Nothing can be parsed then.
    bool HasSeparators() const { return hasSeparators; }

    // --- An ASF file: the version first, then the rest. ---
    std::int32_t ParseVersion();
    // Returns mocap::kEndOfFile or a failure.
    std::int32_t ParseASF();

    // --- An AMC file: the header first, then the frames. ---
    std::int32_t ParseMotionHeader();
    // Gives keys to every channel that the frames hold values for.
    std::int32_t ParseAMC();

    // With true, `multiplier` replaces the length factor of the skeleton file and scales the root's
    // translations as well. With false, `multiplier` is ignored, and the file's factor is used as
    // soon as a file has one.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier);
    // Whether values of a motion are held within the limits of the skeleton file.
    void ApplyLimits(bool apply) { applyLimits = apply; }

    // The first node of that name, in any letter case of ASCII; null when there is none.
    MOCAPMODEL* FindModelByName(const char* name);

    const AcclaimFacts& Facts() const { return facts; }

  private:
    struct ChannelTokens;
    // The bones of a frame, in the order of the first frame that named them, and the values so far.
    struct Motion;

    // The next token that is not a comment; null at the end of the file. A comment runs from a
    // token that begins with "#" to the end of its line, and in the last line to the end of the
    // file.
    const char* GetNextAccString();
    // Moves to the next line. Returns false, and does not move, in the last line.
    bool SkipLine();

    // --- asf_parser.cpp, asf_bonedata.cpp, asf_hierarchy.cpp ---
    // Each handler parses from after its section's keyword up to the next one. It returns kOk when
    // there is a next one and mocap::kEndOfFile when the file ends.
    std::int32_t HandleName();
    std::int32_t HandleUnits();
    std::int32_t HandleDocumentation();
    std::int32_t HandleRoot();
    std::int32_t HandleBoneData();
    std::int32_t HandleBoneBegin();
    std::int32_t HandleHierarchy();

    std::int32_t ParseRootParameter(MOCAPMODEL& root, const char* token, const char*& order);
    std::int32_t ParseRootOrientation(MOCAPMODEL& root, const char* order);
    std::int32_t ParseBoneParameter(MOCAPMODEL& bone, const char* token);
    std::int32_t ParseBoneName(MOCAPMODEL& bone);
    std::int32_t ParseBoneAxis(MOCAPMODEL& bone);
    std::int32_t ParseLimits(MOCAPMODEL& bone);
    std::int32_t ParseLimit(double& limit, bool& hasLimit);

    std::int32_t RenameRoot(const char* token);
    std::int32_t ParseHierarchyLine(const char* token);
    static void AttachChild(MOCAPMODEL& parent, MOCAPMODEL& child);
    std::int32_t EndLeaves();

    // --- asf_values.cpp ---
    // Parses three numbers. `expected` holds the message for each one that may be missing.
    std::int32_t ParseVector(double* vector, const wchar_t* const* expected);
    std::int32_t ParseAxisOrder(const char*& order, const wchar_t* unknown);
    std::int32_t ParseRootOrder(MOCAPMODEL& root);
    std::int32_t ParseDof(MOCAPMODEL& bone);
    // Parses the rest of a line of channel names into the node's slots, from the first.
    std::int32_t ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens);
    // Converts angles about the axes in `order`, the first acting first, to the angles of the same
    // rotation in the order x, y, z. Both are in the file's unit.
    void ConvertToXYZ(double* angles, const char* order) const;
    // Converts from the file's unit to degrees.
    void ConvertToDegrees(double* angles) const;

    // --- amc_header.cpp, amc_parser.cpp ---
    std::int32_t ParseAngleUnit();
    std::int32_t ParseFrames();
    bool ParseFrameNumber(int& number);
    std::int32_t ParseFrame(Motion& motion);
    // Adds the bone of that name to the motion's slots. An unknown bone is warned of and not added.
    std::int32_t ResolveBone(Motion& motion, const char* name);
    std::int32_t ParseBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys);
    double ConvertValue(const CHANNELS& channel, double value) const;
    std::int32_t AttachKeys(Motion& motion);
    // Reports the warning, as long as the file's allowance lasts. The others are counted.
    void Warn(const std::wstring& message);
    // One last warning says how many others there are.
    void WarnOfOthers() const;

    // In characters: a line of one or two bytes can ask for a warning of sixty characters.
    FileAllowance warnings{std::uint64_t{4} << 20, 2, 1};
    std::uint64_t warningsLeftOut = 0;
    AcclaimFacts facts;
    bool applyLimits = false;
    bool overrideLengthMultiplier = false;
    bool hasSeparators;

    NodeNames names;
    std::size_t namedNodes = 0;    // how many of the nodes `names` has
    std::size_t settledNodes = 0;  // how many of them EndLeaves has looked at
    std::uint32_t lastLine;        // no further line begins from this position on
};
