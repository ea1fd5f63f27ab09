#pragma once

#include <QString>
#include <functional>
#include <string>

#include "simulator/engine/panel.h"

class QMenu;

namespace simulator {

/// What the window reads from files and writes to them.
class Files {
 public:
  explicit Files(Panel& panel) : Source(panel) { Record(); }
  ~Files() { Source.Touched = {}; }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;

  /// Where the contents come from that are saved.
  std::function<std::string()> Rows, Plan, BurnHours;

  /// Asks for a path, an empty one for none; by a dialog unless somebody else answers.
  std::function<QString(const QString& title, const QString& suffix, bool toSave)> AskPath;
  std::function<void(const QString&)> Tell;
  std::function<void(const QString&)> TellFailure;

  void AddEntries(QMenu& menu);

 private:
  void Record();
  void LoadPresses();
  void Save(const QString& title, const QString& suffix,
            const std::function<std::string()>& content);

  Panel& Source;
  std::string Presses;  // what a hand has done, a script
};

}  // namespace simulator
