// What both commands share: making the model's name from the file's name, and logging the outcome.
#pragma once

#include "host/string.h"
#include "mocap/mocap_import_base.h"

// The file name without directory and without the last extension, at most 256 characters.
Zelk::CString BaseName(const Zelk::CString& path);

// Logs "File name not specified", with the severity of an error.
void LogMissingFileName();

// Logs a line with the severity of information.
void LogResult(const Zelk::CString& message);

// Logs "ERROR (LINE %u): %s" or, if no file was being parsed, "ERROR: %s". Lines count from 1.
void LogFailure(const CMocapImportBase& importer);
