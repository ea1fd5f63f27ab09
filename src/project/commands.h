#pragma once

#include <QStringList>

#include "project/command_line.h"

enum ExitStatus { StatusGood = 0, StatusFound = 1, StatusFailed = 2 };

/// One of the program's commands; the command line's table of them.
struct Command {
  const char* Name;
  const char* Files;  ///< As the help shows them.
  const char* Summary;
  int LeastFiles;
  int MostFiles;        ///< 0: as many as there are.
  QStringList Columns;  ///< The header of a command that prints rows.
  /// Works on files and prints to standard output. Throws RunTimeFailure.
  ExitStatus (*Run)(const CommandLine& line, const QStringList& files);
  bool EachFile = false;  ///< Runs for every file apart.
};

const std::vector<Command>& Commands();

/// Runs what is asked for, prints rows with their header, and tells failures on standard error.
ExitStatus RunCommand(const CommandLine& line);
