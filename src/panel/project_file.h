#pragma once

#include <QByteArray>

#include "panel/project_document.h"
#include "panel/replace_file.h"

/// Far above the longest file that a panel with the longest names can have, in bytes.
constexpr qint64 LargestProjectFile = qint64{64} * 1024 * 1024;

/// Loads CurrentFileName into PanelRecord, FennlinkRecords and DimmerBlock, then calls
/// CheckLoadedData. Throws RunTimeFailure, which names the file and the reason, with the document
/// in memory untouched.
void ReadProjectFile();

/// Whether CurrentFileName, when it was opened here, ended before the project does.
bool FileEndsEarly();

/// A project file in a memory of its own; what is missing in it is as in a new panel. Throws
/// RunTimeFailure, which names the file and the reason.
ProjectDocument ReadOtherProject(const QString& name);

/// Saves the document to CurrentFileName. At any instant the disk holds the old file or the new
/// one; where the old file was longer its tail stays behind the new end. Throws as
/// ReplaceFile does.
void WriteProjectFile(Saving saving = Saving::Aside);

/// Whether the file is there and somebody else has changed it since it was opened or saved here.
bool ChangedByOthers();

/// What the file held when it was opened or saved here, to be kept and told again; empty when that
/// is unknown.
QByteArray KnownContent();
void SetKnownContent(const QByteArray& known);

/// Called at the end of a load and after an upload. Loaded values are taken as they are, so there
/// is nothing to do.
void CheckLoadedData();
