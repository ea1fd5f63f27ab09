#pragma once

#include <QDateTime>
#include <functional>

#include "simulator/window/panel_view.h"

class QButtonGroup;
class QDateTimeEdit;
class QLabel;

namespace simulator {

/// The panel's clock: what it shows, how fast it runs, where it is to go.
class ClockView : public PanelView {
 public:
  explicit ClockView(Panel& panel);
  void ShowSettings(const Configuration&) override { ToldSecond = -1; }
  void ShowStates() override;

  void SetSpeed(int factor);
  void NextEvent();
  /// Puts the focus into the time to go to.
  void AskTime();

  /// Goes to a time of the panel's clock.
  std::function<void(const QDateTime&)> GoTo;
  std::function<void(const QString&)> Tell;

 private:
  QLabel* Time;
  QLabel* Hours;
  QButtonGroup* Speeds;
  QDateTimeEdit* Wanted;
  std::int64_t ToldSecond = -1;
};

/// Multiples of real time that the clock can run at, with their captions; 0 stands still.
struct ClockSpeed {
  int Factor;
  const char* Caption;
};
inline constexpr std::array ClockSpeeds{ClockSpeed{0, "Stand Still"}, ClockSpeed{1, "Real Time"},
                                        ClockSpeed{60, "60 Times"}, ClockSpeed{600, "600 Times"},
                                        ClockSpeed{3600, "3600 Times"}};

/// As in "sunrise 06:52, sunset 19:10, open 08:00, no close".
QString HoursText(const SunAndHours& hours, const Calendar& days);

}  // namespace simulator
