// What both commands do alike: the model's name from the file's, and the lines about the outcome.
#pragma once

#include "host/string.h"
#include "mocap/mocap_import_base.h"

// The file name without directory and without the last extension, at most 256 characters.
Zelk::CString BaseName(const Zelk::CString& path);

// "File name not specified", with its severity.
void LogMissingFileName();

// A line of information.
void LogResult(const Zelk::CString& message);

// "ERROR (LINE %u): %s" or, where no file was being parsed, "ERROR: %s"; lines count from 1.
void LogFailure(const CMocapImportBase& importer);
