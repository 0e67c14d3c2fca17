// The arguments of the current command, as the host passed them. This record is all that the
// plug-in keeps between two calls. A command writes its own fields and leaves the others unchanged.
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
    double dLengthMultiplier = 0.0;  // used only if bOverrideLength is true
};

// Exported. Its strings are constructed when the library is loaded and destroyed, last first, when
// it is unloaded.
extern __attribute__((visibility("default"))) USERINPUT g_UserInput;
