#include "bench_program.h"
#include "panel/live_project.h"
#include "ratio.h"
#include "shell/controls/device_list.h"

namespace {

/// All points installed; devices of every type, with an action in each cell of the last row alone,
/// so that the automatic map looks at them all.
void FillPanel() {
  for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = 1;
  for (int d = 1; d <= DeviceCount; ++d) {
    FennlinkRecord& device = FennlinkRecords(d);
    device.DeviceType = static_cast<Int16>(1 + d % 9);
    for (int input = 0; input < DeviceInputCount; ++input) {
      device.DeviceInputType(input) = static_cast<Int16>((d + input) % 5);
      device.DeviceOffLevel(input) = static_cast<Int16>(d + input);
      device.DeviceGroupControl(input, ItemCount - 1) = 1;
    }
  }
}

/// The slowest device to choose, painted.
double ChooseMilliseconds(frmT3MasterMDI& window, Screen screen) {
  window.UnloadAllForms();
  window.ShowForm(screen);
  auto* devices = window.findChild<DeviceList*>();
  double slowest = 0;
  for (int d = 0; d <= DeviceCount; ++d) {
    double best = 1e12;
    for (int run = 0; run < 5; ++run) {
      devices->SetListIndex(d == 0 ? DeviceCount : 0);
      QApplication::processEvents();
      const auto choose = [&] {
        devices->SetListIndex(d);
        QApplication::processEvents();
        window.repaint();
      };
      best = std::min(best, BestMicroseconds(choose, 1));
    }
    slowest = std::max(slowest, best);
  }
  return slowest / 1000;
}

double AutoMapMilliseconds(frmT3MasterMDI& window) {
  window.UnloadAllForms();
  window.ShowForm(Screen::FennlinkPilots);
  window.findChild<DeviceList*>()->SetListIndex(1);
  auto* all = window.findChild<Button*>(QStringLiteral("cmdAutoMapAllFL"));
  double best = 1e12;
  for (int run = 0; run < 20; ++run) {
    for (FennlinkRecord& device : FennlinkRecords.elements) device.DevicePilot.elements.fill(0);
    const auto map = [&] {
      all->Click();
      QApplication::processEvents();
      window.repaint();
    };
    best = std::min(best, BestMicroseconds(map, 1));
  }
  return best / 1000;
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::Yes);
  frmT3MasterMDI& window = program.Window;
  FillPanel();

  RatioReport report;
  for (const Screen screen : {Screen::ConfigureFennlinkDevices, Screen::FennlinkInputToRelayControl,
                              Screen::FennlinkInputToGroupControl, Screen::FennlinkPilots}) {
    report.Within(ScreenName(screen), ChooseMilliseconds(window, screen), 10);
  }
  report.Within("pilots of all devices", AutoMapMilliseconds(window), 20);
  return report.ExitCode();
}
