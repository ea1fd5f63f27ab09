#pragma once

#include <QString>
#include <string>

#include "panel/fixed_array.h"
#include "panel/program_texts.h"

// The state of the running program that belongs to the project but not to its file.

extern Int16 Connected;          ///< Non-zero while a panel link is up.
extern QString CurrentFileName;  ///< Path of the open file, or NoFileName.
extern Int16 DataChanged;        ///< -1 when edits are unsaved.
/// What CurrentFileName holds is not what is in memory: Save asks for a name.
extern bool FileNotInMemory;
/// Whether what is in memory has a file, beside which more can be kept.
bool ProjectHasFile();
extern QString DocumentFileName;                  ///< Target of the text document.
extern FixedArray<Int16, 12> DocumentSectionOff;  ///< -1 for each section left out of the document.
extern QString HostSoftwareVersion;

/// The data folder stands in the home, be it told or not: where HOME is not set, it is the
/// account's.
void UseAccountHome();

/// The folder that holds the user's projects: "Orv Tamberloom 3" in the home folder, on Windows on
/// drive C.
QString DataFolder();

/// The path of `name` below the data folder.
QString DataPath(const QString& name);

/// The project path whose presence as the current file offers the network diagnostics.
QString DiagnosticsFileName();
