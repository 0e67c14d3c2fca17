// Functions that the two import commands use. They make the model's name from the file's name, and
// log the outcome.
#pragma once

#include "host/string.h"
#include "mocap/mocap_import_base.h"

// Returns the name of the file without its folder and its last extension. Returns at most 256
// characters.
Zelk::CString BaseName(const Zelk::CString& path);

// Logs "File name not specified", with zkErrorSeverity.
void LogMissingFileName();

// Logs a line with zkInfoSeverity.
void LogResult(const Zelk::CString& message);

// Logs the last error of the importer. The log line is "ERROR (LINE %u): %s" if the error was found
// while a file was parsed, and otherwise "ERROR: %s". The line number is counted from 1.
void LogFailure(const CMocapImportBase& importer);
