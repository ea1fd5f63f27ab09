#pragma once

#include <QString>

// What the program is called, and the texts that many of its parts use.

inline const QString ProgramTitle = QStringLiteral("Orv Tamberloom 3");
/// CurrentFileName of a project without a file.
inline const QString NoFileName = QStringLiteral("None");
/// Of the file dialogs that choose a project.
inline const QString ProjectFileFilter =
    QStringLiteral("Tamberloom 3 Data Files (*.T3)|*.T3|All Files (*.*)|*.*");
/// How moments are told: "2026-11-25 14:05".
inline const QString TimeFormat = QStringLiteral("yyyy-MM-dd HH:mm");
/// What HostSoftwareVersion is once the program has started.
inline QString VersionText() {
  return QStringLiteral("Version " TAMBERLOOM_VERSION);
}
