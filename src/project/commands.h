#pragma once

#include <QStringList>

#include "project/command_line.h"
#include "project/output.h"

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

/// Runs what is asked for and prints rows with their header. Gives the exit status; throws
/// RunTimeFailure.
int RunCommand(const CommandLine& line);
