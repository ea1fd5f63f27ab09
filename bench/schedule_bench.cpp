#include <QKeyEvent>

#include "bench_program.h"
#include "panel/live_project.h"
#include "ratio.h"

// The walk through the timers of the timer editor by arrow key: each step shows its timer, painted,
// before the next key of a held-down arrow comes.

namespace {

constexpr double KeyLimitMs = 5;

/// Neighbours differ in the kind of time and of days, so that each step changes all that it can.
void FillTimers() {
  constexpr std::array<Int16, 3> types = {5, 91, 250};
  for (int i = 0; i < ItemCount; ++i) {
    PanelRecord.TimerTimeType(i) = types[static_cast<std::size_t>(i) % types.size()];
    PanelRecord.TimerTime(i) = static_cast<Int16>(i);
    PanelRecord.TimerDays(i) = static_cast<Int16>(i * 5);
    PanelRecord.TimerHolidayMonth(i) = static_cast<Int16>(i % 2 == 0 ? 0 : i % 12 + 1);
  }
}

/// The slowest step of a walk through a timer editor just opened, in microseconds.
double SlowestStep(frmT3MasterMDI& window) {
  window.UnloadAllForms();
  ChildForm* form = window.ShowForm(Screen::TimersConfigure);
  QApplication::processEvents();
  auto* timers = form->findChild<ComboBox*>(QStringLiteral("cboTimerNumber"));
  double slowest = 0;
  for (int i = 1; i < ItemCount; ++i) {
    const double start = ProcessorMicroseconds();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(timers, &down);
    window.repaint();
    slowest = std::max(slowest, ProcessorMicroseconds() - start);
  }
  return slowest;
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::No);
  frmT3MasterMDI& window = program.Window;
  FillTimers();

  double best = SlowestStep(window);
  for (int walk = 0; walk < 9; ++walk) best = std::min(best, SlowestStep(window));
  RatioReport report;
  report.Within("next timer by arrow key", best / 1000, KeyLimitMs);
  return report.ExitCode();
}
