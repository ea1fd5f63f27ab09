#pragma once

#include "document/rules/check/accepted.h"
#include "project/command_line.h"
#include "project/output.h"

// What tells of the check.

inline const QStringList CheckColumns = {"File", "Severity", "Rule", "Item", "Sentence"};
inline const QStringList RuleColumns = {"Rule", "Severity", "About"};

/// What is accepted beside a project's file; panels, their memory and standard input have nothing
/// beside them. A damaged list is told and fails the status, and counts for nothing.
std::vector<Acceptance> AcceptedAt(const QString& place, ExitStatus& status);

/// Prints the findings over a project that are asked for; StatusFound where one of them fails it.
ExitStatus Check(const CommandLine& line, const QStringList& files);

/// Prints the rules, in the order in which findings come.
ExitStatus ListRules(const CommandLine& line, const QStringList& files);
