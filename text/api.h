#pragma once

// Marks what the library for programs exports.
#define ZKMOCAP_API __attribute__((visibility("default")))
