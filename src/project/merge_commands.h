#pragma once

#include "project/command_line.h"
#include "project/output.h"

// The commands that change a project file by others.

inline const QStringList CompareColumns = {"Area", "Item", "Field", "A", "B"};
inline const QStringList MergeColumns = {"Area", "Item", "Field", "Base", "Ours", "Theirs"};

/// Takes the rows of a comparison over into a file; all of them or none.
ExitStatus ApplyRows(const CommandLine& line, const QStringList& files);

/// Writes a merge of three files and prints a row for each setting that both sides changed.
ExitStatus MergeFiles(const CommandLine& line, const QStringList& files);
