#pragma once

#include <QStringList>
#include <functional>
#include <vector>

// What people add to a project without its being part of the panel's settings is kept beside its
// file, under the file's name and an ending of its own.

/// Findings that are accepted.
inline const QString AcceptedEnding = QStringLiteral(".accepted");
/// What the cover of a report says.
inline const QString ReportEnding = QStringLiteral(".report");
/// What has been tried at the panel.
inline const QString TestedEnding = QStringLiteral(".tested");

/// Saved as another file, a project takes along what is kept beside it. What stands there already
/// is replaced; what this one has not stays. Throws RunTimeFailure, which names the file and the
/// reason.
void CopyBeside(const QString& project, const QString& other);

/// A table that people can read, one row to a line, its cells parted by tabs.
struct TableBeside {
  QString Ending;
  QString Header;
  QString What;         ///< "list of accepted findings".
  QString Consequence;  ///< What holds while it cannot be read.
};

/// Hands each row to `take`, which says whether its cells, as many as the header's, mean something.
/// Nothing where there is no such file. Throws RunTimeFailure, which names the file and the line.
void ReadTableBeside(const TableBeside& table, const QString& project,
                     const std::function<bool(const QStringList& cells)>& take);

/// Sorted, so that two versions differ by what was changed alone; without rows there is no file.
/// Line ends and tabs of the cells become blanks. Throws RunTimeFailure where it cannot be written.
void WriteTableBeside(const TableBeside& table, const QString& project,
                      const std::vector<QStringList>& rows);
