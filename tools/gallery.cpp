#include <QAbstractItemView>
#include <QDeadlineTimer>
#include <QDir>
#include <QStyle>
#include <QTemporaryDir>
#include <cstdio>

#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "screen_table.h"
#include "shell/controls/device_list.h"
#include "shell/shell.h"
#include "shell/window/application.h"
#include "shell/window/main_window.h"
#include "simulator/program/panel_thread.h"

// tamberloom3-gallery FOLDER [SCREEN...]: writes light-SCREEN.png and dark-SCREEN.png of the
// screens named, or of all, on a panel with 48 points, and SCREEN-connected.png of those that show
// a panel. With TAMBERLOOM_GALLERY_MAXIMISED set the window is maximised, which
// needs a window manager.

namespace {

QPalette DarkPalette() {
  const QColor window(0x2d, 0x2d, 0x30);
  QPalette palette(Qt::white, window, QColor(0x45, 0x45, 0x48), QColor(0x1b, 0x1b, 0x1c),
                   QColor(0x60, 0x60, 0x64), QColor(0xe6, 0xe6, 0xe6), Qt::white,
                   QColor(0x1e, 0x1e, 0x1f), window);
  palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
  palette.setColor(QPalette::Midlight, QColor(0x3a, 0x3a, 0x3d));
  palette.setColor(QPalette::PlaceholderText, QColor(0xe6, 0xe6, 0xe6, 0xa0));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x84));
  }
  return palette;
}

void FillDocument() {
  for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 8 : 1;
  PanelRecord.AddOnModuleType = 1;
  for (int i = 0; i < ItemCount; ++i) {
    PanelRecord.RelayTimerType(i) = static_cast<Int16>(i % 7);
    PanelRecord.RelayPowerOnType(i) = static_cast<Int16>(i % 4);
    PanelRecord.InputType(i) = static_cast<Int16>(i % 13);
    PanelRecord.DMXChannel(i) = static_cast<Int16>(i + 1);
    PanelRecord.OffHoursSweepRelay(i) = i % 3 == 0 ? -1 : 0;
    for (int j = 0; j < ItemCount; ++j) {
      PanelRecord.GroupRelayInclude(i, j) = (i + j) % 3 == 0 ? -1 : 0;
      PanelRecord.PresetRelayControl(i, j) = static_cast<Int16>((i + j) % 3);
      PanelRecord.TimerRelayControl(i, j) = static_cast<Int16>((i + j) % 3);
    }
  }
  for (int d = 1; d <= DeviceCount; ++d) {
    FennlinkRecord& device = FennlinkRecords(d);
    device.DeviceType = static_cast<Int16>(d % 10);
    for (int input = 0; input < DeviceInputCount; ++input) {
      device.DeviceInputType(input) = static_cast<Int16>(input);
      device.DevicePilot(input) = static_cast<Int16>(input % 4 * 64 + input);
      device.DeviceOffLevel(input) = static_cast<Int16>(255 - input * 30);
      device.DeviceOnLevel(input) = static_cast<Int16>(input * 30);
      for (int row = 0; row < ItemCount; ++row) {
        device.DeviceRelayControl(input, row) = static_cast<Int16>(row % 4);
        device.DeviceGroupControl(input, row) = static_cast<Int16>(row % 3);
      }
    }
  }
  for (Int16 dev = 0; dev < 3; ++dev) DimSetEnabled(dev, 1);
  DimSetTrackMode(0, 0, 1);
  DimSetAIn(0, 0, 40);
  DimSetCIn(0, 0, 200);
  DimSetCOut(0, 0, 20);
  for (Int16 slot = 0; slot < ControlSlotCount; ++slot) {
    DimSetCtlType(0, 0, slot, static_cast<Int16>((slot + 1) % 5));
    DimSetCtlDevice(0, 0, slot, slot % 3 == 0 ? 0x40 : 0);
    DimSetCtlInstant(0, 0, slot, slot % 2);
    DimSetCtlAction(0, 0, slot, slot % 2 == 0 ? 0 : 103);
    DimSetCtlRevert(0, 0, slot, slot == 2 ? 121 : 0);
  }
  for (Int16 relay = 0; relay < ItemCount; relay += 3) DimSetRelay(0, 0, relay, -1);
}

bool Save(frmT3MasterMDI& window, const QString& path) {
  QApplication::processEvents();
  return window.grab().save(path + QStringLiteral(".png"));
}

/// A picture of each family of devices, and of the open list of devices.
bool SaveDevices(frmT3MasterMDI& window, const QString& path) {
  auto* devices = window.findChild<DeviceList*>();
  if (!devices) return true;
  for (const int d : {3, 6, 7, 8, 9}) {
    devices->SetListIndex(d);
    if (!Save(window, QStringLiteral("%1-%2").arg(path).arg(d))) return false;
  }
  devices->showPopup();
  QApplication::processEvents();
  const bool saved = devices->view()->window()->grab().save(path + QStringLiteral("-list.png"));
  devices->hidePopup();
  return saved;
}

bool SaveScreen(frmT3MasterMDI& window, Screen screen, const QString& path) {
  window.UnloadAllForms();
  window.ShowForm(screen);
  return Save(window, path) && SaveDevices(window, path);
}

/// A panel on which something of everything is on.
void FillPanel(simulator::Panel& panel) {
  for (int i = 0; i < simulator::Items; i += 3) panel.SetRelay(i, true);
  for (int i = 0; i < simulator::Items; ++i) {
    panel.SetContact(i, simulator::Contact::On, i % 4 == 1 || i % 4 == 3);
    panel.SetContact(i, simulator::Contact::Off, i % 4 > 1);
  }
  for (int d = 1; d <= simulator::Devices; ++d) {
    if (d != 7) panel.SetPresence(d, simulator::Panel::Presence::Present);
    panel.SetDeviceInput(d, d % simulator::DeviceInputs, true);
    panel.SetDeviceLevel(d, d * 3);
  }
}

/// The screens that show a panel, while one is connected.
bool SaveConnected(frmT3MasterMDI& window, const QStringList& names, const QString& before) {
  simulator::Options options;
  options.Host = QStringLiteral("127.9.9.9");
  options.TcpPort = 10001;
  simulator::PanelThread panel(options);
  panel.With(FillPanel);
  ConnectionType() = 2;
  TcpAddress() = options.Host.toStdString();
  window.UnloadAllForms();
  window.ShowForm(Screen::Connect)->findChild<Button*>(QStringLiteral("cmdConnect"))->click();
  bool saved = Connected != 0;
  for (const Screen screen :
       {Screen::Connect, Screen::RelayStatus, Screen::RelayGroupStatus, Screen::InputStatus,
        Screen::FennlinkStatus, Screen::CapturePresets, Screen::ForceTimers, Screen::VirtualKeypad,
        Screen::SystemDiagnostic, Screen::DimmerOutput}) {
    const QString name = QString::fromLatin1(ScreenName(screen));
    if (!names.isEmpty() && !names.contains(name)) continue;
    saved = saved && SaveScreen(window, screen, before + name + QStringLiteral("-connected"));
  }
  window.UnloadAllForms();
  Link.DisconnectQZ();
  return saved;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::puts("usage: tamberloom3-gallery FOLDER [SCREEN...]");
    return 2;
  }
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  Application application(argc, argv);
  MsgBoxSeam = [](const Message&) { return MsgAnswer::No; };
  frmT3MasterMDI window(AllScreens());
  window.MDIForm_Load();
  if (qEnvironmentVariableIsSet("TAMBERLOOM_GALLERY_MAXIMISED")) {
    window.showMaximized();
    const QDeadlineTimer soon(2000);
    while (!soon.hasExpired()) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  }
  FillDocument();
  const QStringList names = application.arguments().mid(2);
  const QPalette light = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? DarkPalette() : light);
    const QString before = application.arguments().at(1) + (dark ? "/dark-" : "/light-");
    for (const ScreenEntry& entry : ScreenTable()) {
      if (!entry.Create ||
          (!names.isEmpty() && !names.contains(QLatin1String(ScreenName(entry.Name))))) {
        continue;
      }
      if (!SaveScreen(window, entry.Name, before + QLatin1String(ScreenName(entry.Name)))) return 1;
    }
    if (!SaveConnected(window, names, before)) return 1;
  }
  return 0;
}
