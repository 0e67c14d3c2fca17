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

// Logs the last error of the importer. If the error was found while a file was parsed, the log line
// is "ERROR (LINE %u): %s". The line number in it is counted from 1. For all other errors, the log
// line is "ERROR: %s".
void LogFailure(const CMocapImportBase& importer);
