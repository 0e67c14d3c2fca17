#pragma once

// Marks what the host library exports. The plug-in sees the host through these symbols alone.
#define ZELK_API __attribute__((visibility("default")))
