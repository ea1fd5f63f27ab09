#pragma once

#include <QDate>
#include <QElapsedTimer>
#include <functional>
#include <optional>

#include "simulator/rehearsal/plan.h"
#include "simulator/window/day_picture.h"
#include "simulator/window/panel_view.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QRadioButton;

namespace simulator {

/// A day or a week as a picture: what has happened, and what will if nobody touches anything;
/// beside other days or what the settings before would do, if that is asked for.
class DayView : public PanelView {
 public:
  explicit DayView(Panel& panel);
  void ShowSettings(const Configuration& settings) override;
  void ShowStates() override;

  void Take(const Row& row);
  void GoToToday();
  /// The days on show as a rehearsal's picture, and the hours that relays are on meanwhile.
  std::string PlanFile();
  std::string BurnHoursFile();
  /// Called for a moment that is chosen, by the wall clock.
  std::function<void(const QDateTime&)> GoTo;
  /// As that of the picture.
  decltype(DayPicture::Tell) Tell;

 private:
  enum class Compare { Nothing, OtherDay, SettingsBefore };
  /// The days on show.
  struct Range {
    std::int64_t First = 0;  // counted from 1970
    int Days = 1;
    Instant From = 0;
    Instant To = 0;
  };
  struct Found {
    std::vector<Bar> Bars;
    bool Fresh = false;  // rehearsed from power at the first midnight, being past or far away
  };

  void AddDates(QBoxLayout& row);
  void AddChoices(QBoxLayout& row);
  void AddLegend(QBoxLayout& row);
  QDateEdit* DateEdit(const char* words, const char* name);
  void Renew();
  Compare Compared() const;
  Range RangeFrom(std::int64_t first);
  Range Shown();
  DayPlan PlanOf(const Range& range);
  Found BarsOf(const Range& range);
  Found OtherBarsOf(const Range& range);
  DayPlan::Stretches StretchesOf(const std::vector<Bar>& bars, int row, const Range& range,
                                 std::int64_t shift) const;
  QString NoteOf(const Range& range, DayPlan& plan);

  QDateEdit* Day;
  QDateEdit* OtherDay;
  QRadioButton* Week;
  QCheckBox* Dimmers;
  QCheckBox* Pilots;
  QComboBox* Beside;
  QLabel* Note;
  DayPicture* Picture;
  BarKeeper History;
  Instant Since;  // the history begins
  Instant Seen;   // the last present
  QDate Today;    // of the panel
  PanelMemory Current;
  std::optional<PanelMemory> Before;  // the settings before
  bool Stale = true;
  QElapsedTimer Made;
};

}  // namespace simulator
