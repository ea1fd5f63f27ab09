#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <functional>

#include "simulator/window/log_lines.h"
#include "simulator/window/panel_view.h"

class QListWidget;
class QPlainTextEdit;

namespace simulator {

/// The next events in words, and a log of what happened and why.
class EventsView : public PanelView {
 public:
  explicit EventsView(Panel& panel);
  void ShowSettings(const Configuration& settings) override;
  void ShowStates() override;

  void Take(const Row& row);
  /// Called for an event of the list that is chosen.
  std::function<void(const QDateTime&)> GoTo;

 private:
  void ShowComing(const std::vector<LogLines::Line>& lines);

  QListWidget* Coming;
  QPlainTextEdit* Log;
  Calendar Days;
  LogLines Lines{LogLines::When::Past};
  std::int64_t LoggedDay = -1;
  bool Stale = true;  // something has happened since the list was made
  QElapsedTimer Made;
};

}  // namespace simulator
