#pragma once

#include <QStringList>

#include "project/command_line.h"
#include "project/output.h"

constexpr int AnyNumber = -1;

/// One of the program's commands; the command line's table of them.
struct Command {
  const char* Name;
  const char* Files;  ///< As the help shows them.
  const char* Summary;
  int LeastFiles;
  int MostFiles;        ///< Or AnyNumber.
  QStringList Columns;  ///< The header of a command that prints rows.
  /// Works on files and prints to standard output. Throws RunTimeFailure.
  ExitStatus (*Run)(const CommandLine& line, const QStringList& files);
  QStringList Options = {};  ///< Beside --json, which all take that print rows.
  bool EachFile = false;     ///< Runs for every file apart.
};

const std::vector<Command>& Commands();

/// Runs what is asked for and prints rows with their header. Gives the exit status; throws
/// RunTimeFailure.
int RunCommand(const CommandLine& line);
