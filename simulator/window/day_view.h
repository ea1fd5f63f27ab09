#pragma once

#include <QDate>
#include <QElapsedTimer>
#include <functional>
#include <optional>

#include "simulator/window/day_picture.h"
#include "simulator/window/panel_view.h"

class QDateEdit;
class QLabel;
class QRadioButton;

namespace simulator {

/// A day or a week as a picture: what has happened, and what will if nobody touches anything.
class DayView : public PanelView {
 public:
  explicit DayView(Panel& panel);
  void ShowSettings(const Configuration& settings) override;
  void ShowStates() override;

  void Take(const Row& row);
  void GoToToday();
  /// Called for a moment that is chosen, by the wall clock.
  std::function<void(const QDateTime&)> GoTo;

 private:
  DayPlan PlanOf(std::int64_t first, int days);
  /// `fresh`: the days are rehearsed from power at their first midnight, being past or far away.
  std::vector<Bar> BarsOf(Instant from, Instant to, bool& fresh);

  QDateEdit* Day;
  QRadioButton* Week;
  QLabel* Note;
  QLabel* AtMark;
  DayPicture* Picture;
  std::array<QString, Items> Names;
  BarKeeper History;
  Instant Since;     // the history begins
  Instant Seen = 0;  // the last present
  QDate Today;       // of the panel
  bool Stale = true;
  QElapsedTimer Made;
};

}  // namespace simulator
