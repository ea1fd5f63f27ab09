#pragma once

#include <QStringList>

#include "project/command_line.h"

struct FoundFiles {
  QStringList Files;
  bool AllRead = true;  ///< What could not be looked into has been told.
};

/// What is to be worked on, one by one: of a folder the projects in it, and the names in the list
/// that the command line tells of. Throws RunTimeFailure for a list that cannot be read.
FoundFiles FindFiles(const CommandLine& line);
