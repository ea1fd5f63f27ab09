#pragma once

#include <sys/types.h>

#include <QElapsedTimer>
#include <QMainWindow>
#include <vector>

#include "simulator/program/simulator.h"
#include "simulator/window/files.h"
#include "simulator/window/narrator.h"

class QAction;
class QKeySequence;
class QLabel;
class QMenu;
class QSplitter;
class QTabWidget;

namespace simulator {

class ClockView;
class DayView;
class LogView;
class PanelView;

/// A panel on the desk: its front, its clock, relays, switches, what it will do and has done. The
/// simulator must outlive it.
class PanelWindow : public QMainWindow {
 public:
  explicit PanelWindow(Simulator& simulator);
  ~PanelWindow() override;

  /// Brings everything on show up to the panel's present.
  void Refresh();
  /// Where paths for files come from, by a dialog unless somebody else answers.
  Files& TheFiles() { return OwnFiles; }

  static constexpr int FoldedWidth = 520;
  /// Shows clock, coming events and lamps alone, no wider than this, or everything.
  void Fold(bool folded);
  /// Called when the user has folded or unfolded the window.
  std::function<void(bool)> Folded;

  /// Asks whether the window is to end, too, when this program has ended.
  void EndWith(pid_t program);

 private:
  void BuildViews();
  QWidget* BuildEvents();
  void BuildMenus();
  void BuildClockMenu();
  void BuildLineMenu();
  QAction* AddEntry(QMenu* menu, const QString& caption, const QKeySequence& key,
                    std::function<void()> action);
  void TellFailure(const QString& words);
  void ShowTitle();
  void GoTo(const QDateTime& time);
  void ShowLine();

  Simulator& Source;
  Narrator Story;
  Files OwnFiles;
  ClockView* Clock = nullptr;
  DayView* Days = nullptr;
  LogView* Log = nullptr;
  std::vector<PanelView*> Views;
  QTabWidget* Pages = nullptr;
  QSplitter* Parts = nullptr;
  QAction* Folding = nullptr;
  std::vector<QWidget*> LeftOutFolded;
  QLabel* Line = nullptr;
  QLabel* Why = nullptr;
  QTimer Ticks;
  std::uint64_t SeenRevision = 0;  // of the memory
  std::uint64_t ShownRevision = 0;
  QElapsedTimer MemoryRests;
};

}  // namespace simulator
