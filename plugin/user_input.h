// The arguments of the current command, as the host's argument list gave them. The record is the
// only thing that outlives a call; a command writes its own fields and leaves the others as they
// were.
#pragma once

#include "host/string.h"

struct USERINPUT {
    Zelk::CString strASFFile;
    Zelk::CString strAMCFile;  // empty: import the skeleton alone
    Zelk::CString strBVHFile;
    bool bAddClip = false;
    bool bUseNulls = false;  // false: bone chains
    bool bChainFromParentJoint = false;
    bool bEffectorToLastBone = false;
    bool bCreateGroup = false;
    bool bApplyLimits = false;
    bool bOverrideLength = false;
    double dLengthMultiplier = 0.0;  // in force when bOverrideLength is set
};

// Exported. Its strings are constructed when the library is loaded and destroyed, last first, when
// it is unloaded.
extern __attribute__((visibility("default"))) USERINPUT g_UserInput;
