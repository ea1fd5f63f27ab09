#pragma once

#include <QStringList>
#include <QVariant>

#include "project/command_line.h"

inline const QString FileColumn = QStringLiteral("File");

/// Prints the names of the columns, above rows that are not objects. Throws RunTimeFailure.
void PrintHeader(const CommandLine& line, const QStringList& columns);

/// Prints one row, tab-separated or as an object with the columns as keys; numbers stay numbers
/// there. Throws RunTimeFailure where it cannot be written.
void PrintRow(const CommandLine& line, const QStringList& columns, const QVariantList& cells);

/// The like, which a reader of a pipe sees at once.
void PrintRowNow(const CommandLine& line, const QStringList& columns, const QVariantList& cells);
