#pragma once

#include "host/arrays.h"
#include "host/constants.h"
#include "host/export.h"
#include "host/scene_objects.h"
#include "host/status.h"
#include "host/string.h"
#include "host/value.h"

namespace Zelk {

class ZELK_API Application {
  public:
    // The root of the scene, which is above all objects. The result is empty if the host has no
    // scene root.
    Model GetActiveSceneRoot() const;
    // Runs a host command by name: "AddClip", "DeleteObj", "ApplyAction". A command with empty or
    // wrong arguments fails and changes nothing.
    CStatus ExecuteCommand(const CString& name, const CValueArray& arguments, CValue& result);
    void LogMessage(const CString& message, zkSeverityType severity);
};

}  // namespace Zelk
