#pragma once

#include "document/rules/check/accepted.h"
#include "project/command_line.h"
#include "project/output.h"
#include "project/places.h"

// What tells of the check.

inline const QStringList CheckColumns = {"File", "Severity", "Rule", "Item", "Sentence"};
inline const QStringList RuleColumns = {"Rule", "Severity", "About"};

/// What `read` finds beside a project's file; panels, their memory and standard input have nothing
/// beside them. What is damaged is told and fails the status, and counts for nothing.
template <typename Found>
Found ReadBeside(Found (*read)(const QString& projectFile), const QString& place,
                 ExitStatus& status) {
  try {
    if (place != u"-" && !IsPanelMemory(place)) return read(place);
  } catch (const RunTimeFailure& failure) {
    TellFailure(failure.what());
    status = StatusFailed;
  }
  return {};
}

/// Prints the findings over a project that are asked for; StatusFound where one of them fails it.
ExitStatus Check(const CommandLine& line, const QStringList& files);

/// Prints the rules, in the order in which findings come.
ExitStatus ListRules(const CommandLine& line, const QStringList& files);
