#pragma once

#include "project/command_line.h"
#include "project/output.h"

// What tells of the check.

inline const QStringList CheckColumns = {"File", "Severity", "Rule", "Item", "Sentence"};
inline const QStringList RuleColumns = {"Rule", "Severity", "About"};

/// Prints the findings over a project that are asked for; StatusFound where one of them fails it.
ExitStatus Check(const CommandLine& line, const QStringList& files);

/// Prints the rules, in the order in which findings come.
ExitStatus ListRules(const CommandLine& line, const QStringList& files);
