#include <malloc.h>

#include <cstring>
#include <map>

#include "bench_program.h"
#include "panel/defaults.h"
#include "panel/setting.h"
#include "ratio.h"
#include "shell/controls/controls.h"
#include "shell/window/history.h"

// The way back: what a step costs beside the edit itself, and how long it takes to go back.

namespace {

/// A handler that makes an edit, and the step that comes of it.
template <typename Edit>
void Step(Edit edit) {
  RunHandler(edit);
}

/// The number of the run, so that each edit changes something.
int NextRun() {
  static int run = 0;
  return ++run;
}

void NameRelays(int count) {
  const std::string name = "NAME " + std::to_string(NextRun());
  for (int i = 0; i < count; ++i) PanelRecord.RelayName(i) = name;
}

void MeasureSteps(RatioReport& report) {
  constexpr double limitMilliseconds = 0.2;
  const auto measure = [&](const char* topic, auto edit) {
    report.Within(topic, BestMicroseconds([&] { Step(edit); }) / 1000, limitMilliseconds);
  };
  measure("a handler without a step", [] {});
  measure("a step, a relay's option",
          [] { PanelRecord.RelayTimerType(2) = static_cast<Int16>(NextRun() % 7); });
  measure("a step, a relay's name", [] { NameRelays(1); });
  measure("a step, all relays' names", [] { NameRelays(ItemCount); });
  measure("a step, a timer", [] { PanelRecord.TimerTime(3) = static_cast<Int16>(NextRun()); });
  measure("a step, a dimmer", [] { DimSetMin(1, 2, static_cast<Int16>(NextRun() % 50)); });
}

/// All that the program holds for a step.
double BytesOfStep() {
  constexpr int steps = 1000;
  const auto inUse = [] { return mallinfo2().uordblks; };
  const std::size_t before = inUse();
  for (int i = 0; i < steps; ++i) Step([] { NameRelays(1); });
  return static_cast<double>(inUse() - before) / steps;
}

/// Of each screen a setting that is edited there.
std::map<Screen, Setting> SettingOfEachScreen() {
  std::map<Screen, Setting> settings;
  ForEachSetting([&](const Setting& setting) {
    if (!setting.Whole) settings.try_emplace(EditorOf(setting).On, setting);
  });
  settings.erase(Screen::None);
  return settings;
}

SettingValue OtherValue(const Setting& setting) {
  const SettingValue value = ValueOf(LiveProject, setting);
  if (std::holds_alternative<std::string>(value)) return "OTHER";
  const SettingValue one = NumberOfMeaning(setting, 1);
  return value == one ? NumberOfMeaning(setting, 0) : one;
}

/// Milliseconds from the key until the change is painted, from another screen.
double Undo(frmT3MasterMDI& window) {
  constexpr int runs = 7;
  const auto undo = [&] {
    RunHandler([&] { window.Steps().Undo(); });
    QApplication::processEvents();
    window.repaint();
  };
  double best = 1e12;
  for (int run = 0; run < runs; ++run) {
    window.UnloadAllForms();
    window.ShowForm(Screen::About);
    QApplication::processEvents();
    best = std::min(best, BestMicroseconds(undo, 1) / 1000);
    RunHandler([&] { window.Steps().Redo(); });
  }
  return best;
}

void MeasureUndo(frmT3MasterMDI& window, RatioReport& report) {
  constexpr double limitMilliseconds = 20;
  for (const auto& [screen, setting] : SettingOfEachScreen()) {
    Step([&of = setting] { PutValue(LiveProject, of, OtherValue(of)); });
    const std::string topic = std::string("undo, ") + (ScreenName(screen) + std::strlen("frmT3"));
    report.Within(topic.c_str(), Undo(window), limitMilliseconds);
  }
  Step([] { LoadDefaults(); });
  report.Within("undo, all of a panel", Undo(window), limitMilliseconds);
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::No);
  RatioReport report;
  UseWholePanel();
  MeasureSteps(report);
  report.Line("memory of a step", BytesOfStep(), "allowed", 1000, 1, "B");
  MeasureUndo(program.Window, report);
  return report.ExitCode();
}
