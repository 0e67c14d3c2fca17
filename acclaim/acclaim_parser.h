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
    std::wstring documentation;  // decoded in the encoding of the process's locale
    // The factor on bone lengths. A new file does not reset it or the frame time; they stay until a
    // file states others.
    double lengthMultiplier = 1.0;
    double frameTime = 0.03333333333333333;  // seconds
    std::uint32_t lastFrame = 0;             // the highest frame number of the motion
    bool degrees = true;                     // the unit of the skeleton file's angles
};

// Parses an ASF file to nodes, and then any number of AMC files to keys in the channels of these
// nodes. Before each file, call ForgetSkeleton (ASF) or ForgetFile (AMC), and load the file into
// the reader.
class AcclaimParser : public MocapParser {
  public:
    // Keeps references to all four, and sets the reader's separators.
    AcclaimParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                  FileAllowances& fileAllowances, ParseMonitor& parseMonitor);

    // Call this before an AMC file. Clears the error and the number of the last frame.
    void ForgetFile();
    // Call this before an ASF file. Also clears what the parser stores about the last skeleton, but
    // not its nodes and keys: the caller owns them and must clear them.
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
    // translations as well. With false, `multiplier` is ignored: the factor stays as it is until a
    // skeleton file states one.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier);
    // Whether values of a motion are clamped to the limits in the skeleton file.
    void ApplyLimits(bool apply) { applyLimits = apply; }

    // The first node of that name; null when there is none. Upper and lower case of ASCII letters
    // are not distinguished.
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
    // The keyword of a section was consumed before its handler is called. The handler parses the
    // section and leaves the keyword of the next one. A negative result is a failure.
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
    // Parses the channel names in the rest of the line into the node's slots; the first name goes
    // to slot 0.
    std::int32_t ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens);
    // Converts angles about the axes in `order`, of which the last acts first, to the X-Y-Z angles
    // of the same rotation, of which X acts first. The order "xyz" is an exception: its angles are
    // not changed. The unit is the file's.
    void ConvertToXYZ(double* angles, const char* order) const;
    // Converts from the file's unit to degrees.
    void ConvertToDegrees(double* angles) const;

    // --- amc_header.cpp, amc_parser.cpp ---
    std::int32_t ParseAngleUnit();
    std::int32_t ParseFrames();
    bool ParseFrameNumber(int& number);
    std::int32_t ParseFrame(Motion& motion);
    // Adds the bone of that name to the motion's slots. If there is no such bone, only logs a
    // warning.
    std::int32_t ResolveBone(Motion& motion, const char* name);
    std::int32_t ParseBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys);
    double ConvertValue(const CHANNELS& channel, double value) const;
    std::int32_t AttachKeys(Motion& motion);
    // Reports the warning, as long as the file's allowance lasts. The others are counted.
    void Warn(const std::wstring& message);
    // One last warning says how many others there are.
    void WarnOfOthers() const;

    // How many characters the warnings about one file may have. It is limited, because a line of
    // two bytes can cause a warning of sixty characters.
    FileAllowance warnings{std::uint64_t{4} << 20, 2, 1};
    std::uint64_t warningsLeftOut = 0;
    AcclaimFacts facts;
    bool applyLimits = false;
    bool overrideLengthMultiplier = false;
    bool hasSeparators;

    NodeNames names;
    std::size_t namedNodes = 0;    // the number of nodes that FindModelByName has looked at
    std::size_t settledNodes = 0;  // the number of nodes that EndLeaves has looked at
    // A position in the last line of the file; the highest number until one is known.
    std::uint32_t lastLinePosition;
};
