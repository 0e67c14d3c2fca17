#pragma once

// Marks the classes and functions that the host library exports. The plug-in uses no other symbols
// of the host.
#define ZELK_API __attribute__((visibility("default")))
