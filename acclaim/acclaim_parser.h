#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "acclaim/amc_key_lists.h"
#include "acclaim/amc_rows.h"
#include "acclaim/node_names.h"
#include "mocap/mocap_parser.h"

// The contents of an ASF file and an AMC file, except nodes and keys.
struct AcclaimFacts {
    std::string name;            // the skeleton's name in the ASF file
    std::wstring documentation;  // decoded with the encoding of the process's locale
    // Bone lengths are multiplied by this factor. The factor and the frame time keep their values
    // when a new file is parsed, unless that file gives new ones.
    double lengthMultiplier = 1.0;
    double frameTime = 0.03333333333333333;  // seconds
    std::uint32_t lastFrame = 0;             // the highest frame number of the motion
    bool degrees = true;                     // the unit of the skeleton file's angles
};

// Parses an ASF file into nodes. Then parses any number of AMC files into keys of the channels of
// these nodes. Before each file, call ForgetSkeleton (ASF) or ForgetFile (AMC), and load the file
// into the reader.
class AcclaimParser : public MocapParser {
  public:
    // Stores references to the four arguments, so they must outlive the parser. Registers the
    // separators of Acclaim files with `fileReader`.
    AcclaimParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                  FileAllowances& fileAllowances, ParseMonitor& parseMonitor);

    // Call this before an AMC file. Clears the error and the number of the last frame.
    void ForgetFile();
    // Call this before an ASF file. Also clears what the parser stores about the last skeleton, but
    // not its nodes and keys: the caller owns them and must clear them.
    void ForgetSkeleton();

    // Returns false if memory ran out when the separators were registered. The parser cannot be
    // used then.
    bool HasSeparators() const { return hasSeparators; }

    // --- To parse an ASF file, call ParseVersion, then ParseASF. ---
    std::int32_t ParseVersion();
    // Returns mocap::kEndOfFile on success, or a negative status on failure.
    std::int32_t ParseASF();

    // --- To parse an AMC file, call ParseMotionHeader, then ParseAMC. ---
    std::int32_t ParseMotionHeader();
    // Parses the frames, and stores keys in every channel for which the frames have values.
    std::int32_t ParseAMC();

    // If `overrideMultiplier` is true, `multiplier` replaces the length factor of every skeleton
    // file, and the root's translations are multiplied by it too. If it is false, `multiplier` is
    // ignored. The present factor then stays in use until a skeleton file gives another factor.
    void OverrideLengthMultiplier(bool overrideMultiplier, double multiplier);
    // If `apply` is true, values of a motion are clamped to the limits in the skeleton file.
    void ApplyLimits(bool apply) { applyLimits = apply; }

    // Returns the first node with that name, or null if there is none. Upper and lower case of
    // ASCII letters are not distinguished.
    MOCAPMODEL* FindModelByName(const char* name);

    const AcclaimFacts& Facts() const { return facts; }

  private:
    struct ChannelTokens;
    // The bones that were found so far, in the order in which the frames name them, and the values
    // parsed so far.
    struct Motion;

    // Returns the next token that is not in a comment, or null at the end of the file. A comment
    // begins with a token whose first character is "#". It ends at the end of its line or of the
    // file.
    const char* GetNextAccString();
    // Moves to the next line. If the position is in the last line, does not move and returns false.
    bool SkipLine();

    // --- asf_parser.cpp, asf_bonedata.cpp, asf_hierarchy.cpp ---
    // Each handler parses one part of an ASF file. The caller has already moved past the keyword
    // with which the part begins. The handler does not move past the keyword of the next part. A
    // negative result is a failure.
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
    // Parses three numbers into `vector`. `expected[i]` is the error message for the case that
    // number `i`, counted from 0, is missing.
    std::int32_t ParseVector(double* vector, const wchar_t* const* expected);
    std::int32_t ParseAxisOrder(const char*& order, const wchar_t* unknown);
    std::int32_t ParseRootOrder(MOCAPMODEL& root);
    std::int32_t ParseDof(MOCAPMODEL& bone);
    // Parses the channel names up to the end of the line. Stores their types in the node's slots,
    // beginning with slot 0.
    std::int32_t ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens);
    // Converts `angles` to the x, y and z angles of the same rotation. `angles[i]` is about the
    // axis `order[i]`, and the rotation of the last letter acts first. In the result, the x
    // rotation acts first. There is one exception: if `order` is "xyz", the angles stay unchanged.
    // All angles have the unit of the file.
    void ConvertToXYZ(double* angles, const char* order) const;
    // Converts three angles from the file's unit to degrees.
    void ConvertToDegrees(double* angles) const;

    // --- amc_header.cpp, amc_parser.cpp ---
    std::int32_t ParseAngleUnit();
    std::int32_t ParseFrames();
    bool ParseFrameNumber(int& number);
    std::int32_t ParseFrame(Motion& motion);
    void NoteFrame(std::uint32_t number);

    // --- amc_row_parser.cpp ---
    class RowConverter;
    class RowPolls;
    // Parses the frames after the first ones, if they are rows. Stops before the first frame that
    // is not a row.
    std::int32_t ParseRows(Motion& motion);
    // Makes room for so many rows, and sets where their values are stored. Returns false when
    // memory runs out.
    static bool AllocateRows(Motion& motion, std::size_t rows, const RowConverter& converter,
                             AmcRowReader& reader);
    // Moves the reader into the row that begins at the byte offset `start`, after its first
    // `values` values.
    void MoveInRow(const Motion& motion, std::uint32_t start, std::size_t values);

    // --- amc_parser.cpp ---
    // Adds the bone with that name to `motion.slots`. If there is no such bone, reports a warning
    // and lowers `motion.animatedNodes` by one.
    std::int32_t ResolveBone(Motion& motion, const char* name);
    std::int32_t ParseBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys);
    double ConvertValue(const CHANNELS& channel, double value) const;
    std::int32_t AttachKeys(Motion& motion);
    // Reports the warning if its characters fit into the allowance `warnings`. If they do not fit,
    // only counts the warning.
    void Warn(const std::wstring& message);
    // If Warn has only counted some warnings, reports their number in one more warning.
    void WarnOfOthers() const;

    // Limits the number of characters in all warnings about one file. A limit is needed because a
    // line of two bytes can cause a warning of sixty characters.
    FileAllowance warnings{std::uint64_t{4} << 20, 2, 1};
    std::uint64_t warningsLeftOut = 0;
    AcclaimFacts facts;
    bool applyLimits = false;
    bool overrideLengthMultiplier = false;
    bool hasSeparators;

    NodeNames names;
    std::size_t namedNodes = 0;    // the number of nodes that FindModelByName has looked at
    std::size_t settledNodes = 0;  // the number of nodes that EndLeaves has looked at
    // A byte offset in the last line of the file. While no such offset is known, this is the
    // highest 32-bit number.
    std::uint32_t lastLinePosition;
};
