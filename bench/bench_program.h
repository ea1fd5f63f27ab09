#pragma once

#include <QTemporaryDir>
#include <memory>

#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "screen_table.h"
#include "shell/window/application.h"
#include "shell/window/main_window.h"

/// The program with a data folder of its own; its questions are answered with `answer`.
class BenchProgram {
 public:
  BenchProgram(int& argc, char** argv, MsgAnswer answer)
      : home_(OwnHome()), application_(argc, argv) {
    MsgBoxSeam = [answer](const Message&) { return answer; };
    Window.MDIForm_Load();
  }

 private:
  static std::unique_ptr<QTemporaryDir> OwnHome() {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    auto home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", home->path().toLocal8Bit());
    return home;
  }

  std::unique_ptr<QTemporaryDir> home_;
  Application application_;

 public:
  frmT3MasterMDI Window{AllScreens()};
};

/// All points installed, all tables in use, and a bus device of each type.
inline void UseWholePanel() {
  auto& panel = PanelRecord;
  for (int node = 0; node < NodeCount; ++node) panel.IOCount(node) = 1;
  for (ItemTable* table :
       {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
        &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.TimerPresetControl,
        &panel.PresetRelayControl}) {
    table->elements.fill(1);
  }
  for (int i = 0; i < ItemCount; ++i) {
    panel.InputType(i) = static_cast<Int16>(i % 13);
    panel.TimerTimeType(i) = static_cast<Int16>(i % 6);
    panel.DMXChannel(i) = static_cast<Int16>(i + 1);
  }
  for (int d = 1; d <= DeviceCount; ++d) {
    FennlinkRecords(d).DeviceType = static_cast<Int16>(1 + d % 9);
  }
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) DimSetEnabled(dev, 1);
}
