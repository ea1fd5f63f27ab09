#pragma once

#include <QString>
#include <string>

#include "panel/fixed_array.h"

// The state of the running program that belongs to the document but not to the file.

extern Int16 Connected;          ///< Non-zero while a panel link is up.
extern QString CurrentFileName;  ///< Path of the open file, or NoFileName.
extern Int16 DataChanged;        ///< -1 when edits are unsaved.
/// What CurrentFileName holds is not what is in memory: Save asks for a name.
extern bool FileNotInMemory;
extern QString DocumentFileName;                  ///< Target of the text document.
extern FixedArray<Int16, 12> DocumentSectionOff;  ///< -1 for each section left out of the document.
extern QString HostSoftwareVersion;
/// Of the file dialogs that choose a project.
inline const QString ProjectFileFilter =
    QStringLiteral("Tamberloom 3 Data Files (*.T3)|*.T3|All Files (*.*)|*.*");
/// What it is once the program has started.
inline QString VersionText() {
  return QStringLiteral("Version 1.02");
}

inline const QString ProgramTitle = QStringLiteral("Orv Tamberloom 3");
inline const QString NoFileName = QStringLiteral("None");
/// How moments are told: "2026-11-25 14:05".
inline const QString TimeFormat = QStringLiteral("yyyy-MM-dd HH:mm");

/// The folder that holds the user's projects: "Orv Tamberloom 3" in the home folder, on Windows on
/// drive C.
QString DataFolder();

/// The path of `name` below the data folder.
QString DataPath(const QString& name);

/// The project path whose presence as the current file offers the network diagnostics.
QString DiagnosticsFileName();
