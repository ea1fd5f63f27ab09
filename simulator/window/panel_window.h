#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <vector>

#include "simulator/program/simulator.h"

class QLabel;
class QTabWidget;

namespace simulator {

class ClockView;
class DayView;
class EventsView;
class PanelView;

/// A panel on the desk: its front, its clock, relays, switches, what it will do and has done. The
/// simulator must outlive it.
class PanelWindow : public QMainWindow {
 public:
  explicit PanelWindow(Simulator& simulator);
  ~PanelWindow() override;

  /// Brings everything on show up to the panel's present.
  void Refresh();

 private:
  void BuildViews();
  void BuildMenus();
  void GoTo(const QDateTime& time);
  void ShowLine();

  Simulator& Source;
  ClockView* Clock = nullptr;
  DayView* Days = nullptr;
  EventsView* Events = nullptr;
  std::vector<PanelView*> Views;
  QTabWidget* Pages = nullptr;
  QLabel* Line = nullptr;
  QTimer Ticks;
  std::uint64_t SeenRevision = 0;  // of the memory
  std::uint64_t ShownRevision = 0;
  QElapsedTimer MemoryRests;
};

}  // namespace simulator
