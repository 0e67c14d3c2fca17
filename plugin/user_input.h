// The arguments of the current command, as the host passed them. The plug-in keeps no other data
// between two calls. A command sets the fields of its own arguments, and does not change the other
// fields.
#pragma once

#include "host/string.h"

struct USERINPUT {
    Zelk::CString strASFFile;
    Zelk::CString strAMCFile;  // empty: only the skeleton is imported
    Zelk::CString strBVHFile;
    bool bAddClip = false;   // true: a clip of the motion is created after the import
    bool bUseNulls = false;  // true: the skeleton consists of nulls; false: of bone chains
    // true: the first bone of a chain starts at the parent joint of the chain's first node; false:
    // the first bone starts at the first node. If the first node is detached and has a bone child,
    // the first bone always starts at the first node.
    bool bChainFromParentJoint = false;
    bool bEffectorToLastBone = false;  // true: a chain's effector becomes a child of its last bone
    bool bCreateGroup = false;         // true: the animated objects are put into a group
    bool bApplyLimits = false;  // true: values of a motion are clamped to the skeleton's limits
    // true: dLengthMultiplier replaces the length factor of the ASF file
    bool bOverrideLength = false;
    double dLengthMultiplier = 0.0;  // used only if bOverrideLength is true
};

// The plug-in exports this record. Its strings are constructed when the library is loaded. They are
// destroyed when the library is unloaded, the last member first.
extern __attribute__((visibility("default"))) USERINPUT g_UserInput;
