#pragma once

#include <QString>

// What people add to a project without its being part of the panel's settings is kept beside its
// file, under the file's name and an ending of its own.

/// Findings that are accepted.
inline const QString AcceptedEnding = QStringLiteral(".accepted");
/// What the cover of a report says.
inline const QString ReportEnding = QStringLiteral(".report");

/// Saved as another file, a project takes along what is kept beside it. What stands there already
/// is replaced; what this one has not stays. Throws RunTimeFailure, which names the file and the
/// reason.
void CopyBeside(const QString& project, const QString& other);
