#pragma once

#include <QByteArray>
#include <QString>

#include "panel/project.h"
#include "panel/replace_file.h"

/// Far above the longest file that a panel with the longest names can have, in bytes.
constexpr qint64 LargestProjectFile = qint64{64} * 1024 * 1024;

/// What a project file holds.
struct ProjectRead {
  Project Content;
  bool Whole;              ///< Whether the file did not end early.
  QByteArray Fingerprint;  ///< Of all its bytes.
};

/// Reads a project file; what is missing in it is as in `over`. Throws RunTimeFailure, which names
/// the file and the reason.
ProjectRead ReadProject(const QString& name, Project over);

/// Saves a project. At any instant the disk holds the old file or the new one; where the old file
/// was longer its tail stays behind the new end. Gives the fingerprint of the file. Throws as
/// ReplaceFile does.
QByteArray WriteProject(const QString& name, const Project& project, Saving saving = Saving::Aside);

// The program's own file.

/// Loads CurrentFileName over the live project, then calls CheckLoadedData. Throws RunTimeFailure,
/// which names the file and the reason, with the project in memory untouched.
void ReadProjectFile();

/// Saves the live project to CurrentFileName.
void WriteProjectFile(Saving saving = Saving::Aside);

/// Whether CurrentFileName, when it was opened here, ended before the project does.
bool FileEndsEarly();

/// Whether the file is there and somebody else has changed it since it was opened or saved here.
bool ChangedByOthers();

/// What the file held when it was opened or saved here, to be kept and told again; empty when that
/// is unknown.
QByteArray KnownContent();
void SetKnownContent(const QByteArray& known);

/// Called at the end of a load and after an upload. Loaded values are taken as they are, so there
/// is nothing to do.
void CheckLoadedData();
