#pragma once

#include <QStringList>
#include <array>
#include <string>

#include "simulator/program/simulator.h"
#include "simulator/rehearsal/rehearsal.h"

namespace simulator {

/// What the command line asks for.
struct CommandLine {
  Options Wanted;
  std::optional<RehearsalOptions> Rehearsal;  // in place of serving lines
  bool Window = false;                        // to be shown in one
  std::optional<std::array<int, 4>> Beside;   // x, y, width, height of a window on the screen
  int Until = 0;                              // the process with which it ends; 0: none
  std::vector<std::string>
      Notes;  // for standard error; nothing that keeps the program from running
  std::optional<std::string> Say;  // to print in place of running, for --help and --version
};

/// Throws std::invalid_argument with a text for the user. `arguments` begins with the program's
/// name.
CommandLine ParseCommandLine(const QStringList& arguments);

}  // namespace simulator
