#pragma once

#include <QDateTime>
#include <functional>

#include "simulator/window/panel_view.h"

class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QPushButton;

namespace simulator {

class TimeField;

/// The panel's clock: what it shows, how fast it runs, where it is to go.
class ClockView : public PanelView {
 public:
  explicit ClockView(Panel& panel);
  void ShowSettings(const Configuration&) override { ToldSecond = -1; }
  void ShowStates() override;

  void SetSpeed(int factor);
  void NextEvent();
  void SetPower(bool on);
  void FollowSun(bool follows);
  /// Puts the focus into the time to go to.
  void AskTime();

  /// Goes to a time of the panel's clock.
  std::function<void(const QDateTime&)> GoTo;
  std::function<void(const QString&)> Tell;

 private:
  QPushButton* AddButton(QBoxLayout& row, const char* caption, const char* name,
                         std::function<void()> press);
  void AddSpeeds(QBoxLayout& row);
  void AddWanted(QBoxLayout& row);

  QLabel* Time;
  QLabel* Hours;
  QButtonGroup* Speeds;
  TimeField* Wanted;
  QPushButton* Cut;
  QPushButton* Restore;
  QCheckBox* Daylight;
  std::int64_t ToldSecond = -1;
};

/// Multiples of real time that the clock can run at, with their captions; 0 stands still.
struct ClockSpeed {
  int Factor;
  const char* Caption;
  const char* Short;
};
inline constexpr std::array ClockSpeeds{
    ClockSpeed{0, "Stand Still", "Still"}, ClockSpeed{1, "Real Time", "1 x"},
    ClockSpeed{60, "60 Times", "60 x"}, ClockSpeed{600, "600 Times", "600 x"},
    ClockSpeed{3600, "3600 Times", "3600 x"}};

/// As in "sunrise 06:52, sunset 19:10, open 08:00, no close".
QString HoursText(const SunAndHours& hours, const Calendar& days);

}  // namespace simulator
