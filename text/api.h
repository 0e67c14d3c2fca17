#pragma once

// Marks the classes and functions that the library for programs (libzkmocap) exports.
#define ZKMOCAP_API __attribute__((visibility("default")))
