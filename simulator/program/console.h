#pragma once

#include <QStringList>
#include <functional>
#include <optional>
#include <string>

#include "simulator/program/simulator.h"

namespace simulator {

/// The typed commands of the simulated panel. Things are numbered from 1, as on the panel.
class Console {
 public:
  Console(Simulator& simulator, std::function<void()> quit);

  /// All commands with their usage, a line each.
  static std::string CommandHelp();
  /// Runs one line and returns the text to show: a result, or what was wrong with the line.
  std::string Execute(const QString& line);

 private:
  struct Command {
    const char* Name;
    const char* Usage;
    const char* Help;
    std::string (Console::*Handler)(const QStringList&);
  };
  static const Command Commands[];

  std::string Help(const QStringList& words);
  std::string Press(const QStringList& words);
  std::string Release(const QStringList& words);
  std::string Tap(const QStringList& words);
  std::string Device(const QStringList& words);
  std::string DeviceInput(const QStringList& words);
  std::string Photocell(const QStringList& words);
  std::string Relay(const QStringList& words);
  std::string Group(const QStringList& words);
  std::string Preset(const QStringList& words);
  std::string Timer(const QStringList& words);
  std::string Power(const QStringList& words);
  std::string Key(const QStringList& words);
  std::string Show(const QStringList& words);
  std::string Time(const QStringList& words);
  std::string Firmware(const QStringList& words);
  std::string IO(const QStringList& words);
  std::string Card(const QStringList& words);
  std::string Password(const QStringList& words);
  std::string SetFault(const QStringList& words);
  std::string Save(const QStringList& words);
  std::string Log(const QStringList& words);
  std::string Quit(const QStringList& words);

  Panel& ThePanel() { return Host.ThePanel(); }

  Simulator& Host;
  std::function<void()> EndProgram;
};

/// What the parts of a panel look like now, as lines of text. `what` is one of relays, groups,
/// inputs, presets, devices, dimmers, display, time; nothing for anything else.
[[nodiscard]] std::optional<std::string> Describe(Panel& panel, const QString& what);

}  // namespace simulator
