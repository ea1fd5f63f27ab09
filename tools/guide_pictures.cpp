#include <QDir>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "link/connect_form.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "screen_table.h"
#include "shell/shell.h"
#include "shell/window/application.h"
#include "shell/window/guide_window.h"
#include "shell/window/history.h"
#include "shell/window/main_window.h"
#include "simulator/program/panel_thread.h"
#include "simulator/window/panel_window.h"
#include "town_hall.h"

// tamberloom3-guide-pictures FOLDER: the pictures of the guide's pages about screens, on the
// project of a small building; those of screens that show a panel beside a simulated one; and the
// simulated panel's own window.

namespace {

/// What is chosen on a screen before its picture is taken.
struct Choice {
  Screen On;
  const char* List;
  int Index;
};

constexpr auto Choices = std::to_array<Choice>({
    {Screen::ConfigureFennlinkDevices, "cboFLinkDevice", 1},
    {Screen::ConfigureFennlinkDevices, "cboFennlinkDevice", 1},
    {Screen::FennlinkInputToRelayControl, "cboFennlinkDevice", 2},
    {Screen::FennlinkInputToGroupControl, "cboFennlinkDevice", 2},
    {Screen::FennlinkInputToGroupControl, "cboInput", 2},
    {Screen::FennlinkPilots, "cboFennlinkDevice", 1},
    {Screen::InputToGroupControl, "cboInput", 4},
    {Screen::TimerToGroupControl, "cboTimer", 1},
    {Screen::TimerToRelayControl, "cboTimer", 4},
    {Screen::TimerToPresetControl, "cboTimer", 2},
    {Screen::EditPresets, "cboPresetNumber", 1},
    {Screen::DimmerRelayControl, "cboDOut", 1},
    {Screen::FennlinkStatus, "cboFennlinkDevice", 1},
    {Screen::FennlinkStatus, "cboFLinkDevice", 1},
});

/// Those that show a panel.
constexpr auto Connected24 = std::to_array<Screen>(
    {Screen::Connect, Screen::RelayStatus, Screen::RelayGroupStatus, Screen::InputStatus,
     Screen::FennlinkStatus, Screen::CapturePresets, Screen::ForceTimers, Screen::VirtualKeypad,
     Screen::SystemDiagnostic, Screen::DimmerOutput});

struct CopyDialog {
  const char* Button;
  Screen Is;
};
constexpr auto CopyDialogs = std::to_array<CopyDialog>(
    {{"cmdCopyConfig", Screen::DimCopyCnf}, {"cmdCopyControl", Screen::DimCopyCnt}});

QString PathOf(const QString& folder, Screen screen) {
  return folder + u'/' + QFileInfo(GuidePage(screen)).completeBaseName() + QStringLiteral(".png");
}

bool Save(QWidget& window, const QString& path) {
  // What a timer of the first round shows is laid out in the second.
  for (int round = 0; round < 2; ++round) QApplication::processEvents();
  return window.grab().save(path);
}

bool SaveScreen(frmT3MasterMDI& window, Screen screen, const QString& folder) {
  window.UnloadAllForms();
  const ChildForm* form = window.ShowForm(screen);
  for (const Choice& choice : Choices) {
    auto* list = form->findChild<ComboBox*>(QLatin1String(choice.List));
    if (choice.On == screen && list) list->SetListIndex(choice.Index);
  }
  if (auto* check = form->findChild<Button*>(QStringLiteral("cmdCheck"))) check->click();
  return Save(window, PathOf(folder, screen));
}

bool SaveCopyDialogs(frmT3MasterMDI& window, const QString& folder) {
  bool saved = true;
  window.UnloadAllForms();
  const ChildForm* form = window.ShowForm(Screen::DimmerOutput);
  for (const auto& [button, screen] : CopyDialogs) {
    QTimer::singleShot(0, [&, path = PathOf(folder, screen)] {
      QWidget* dialog = QApplication::activeModalWidget();
      saved = saved && dialog && Save(*dialog, path);
      if (dialog) dialog->close();
    });
    form->findChild<Button*>(QLatin1String(button))->click();
  }
  return saved;
}

/// Something of everything is on.
void FillPanel(simulator::Panel& panel) {
  panel.AddOnType = 1;
  panel.AddOnRevision = 2;
  constexpr int points = 24;
  for (const int relay : {0, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17}) panel.SetRelay(relay, true);
  for (int i = 0; i < points; ++i) {
    panel.SetContact(i, simulator::Contact::On, i % 4 == 1);
    panel.SetContact(i, simulator::Contact::Off, i % 4 == 2);
  }
  for (const int device : {1, 2, 9}) {
    panel.SetPresence(device, simulator::Panel::Presence::Present);
    panel.SetDeviceInput(device, device % simulator::DeviceInputs, true);
    panel.SetDeviceLevel(device, 90);
  }
}

bool SaveConnected(frmT3MasterMDI& window, const QString& folder) {
  simulator::Options options;
  options.Host = QStringLiteral("127.9.9.9");
  options.TcpPort = 10001;
  options.Now = NowSeam;
  simulator::PanelThread panel(options);
  ConnectionType() = 2;
  TcpAddress() = options.Host.toStdString();
  window.Recovery().Settle(LiveProject);
  window.UnloadAllForms();
  auto* form = dynamic_cast<frmT3Connect*>(window.ShowForm(Screen::Connect));
  form->cmdConnect_Click();
  if (Connected == 0) return false;
  form->DownLoadSettings();
  panel.With(FillPanel);
  form->findChild<Button*>(QStringLiteral("cmdRefresh"))->click();
  bool saved = true;
  for (const Screen screen : Connected24) saved = saved && SaveScreen(window, screen, folder);
  ChildForm* walk = window.ShowForm(Screen::WalkTest);
  walk->findChild<Button*>(QStringLiteral("cmdWalk"))->click();
  panel.With([](simulator::Panel& p) { p.SetContact(6, simulator::Contact::On, true); });
  walk->findChild<Timer*>(QStringLiteral("Timer1"))->Tick();
  saved = saved && Save(window, PathOf(folder, Screen::WalkTest));
  window.UnloadAllForms();
  Link.DisconnectQZ();
  return saved;
}

/// The panel's window on the small installation that it begins with.
bool SavePanelWindow(const QString& folder) {
  simulator::Options options;
  options.Now = [] { return QDateTime(QDate(2026, 2, 3), QTime(12, 0)); };
  simulator::Simulator source(options);
  constexpr int stairs = 2;
  source.ThePanel().SetContact(stairs, simulator::Contact::On, true);
  simulator::PanelWindow window(source);
  window.show();
  // It has been maximized where the screen is smaller than it would like.
  QApplication::processEvents();
  window.setWindowState(Qt::WindowNoState);
  window.resize(1120, 600);
  return Save(window, folder + QStringLiteral("/simulated_panel.png"));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::puts("usage: tamberloom3-guide-pictures FOLDER");
    return 2;
  }
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  Application application(argc, argv);
  MsgBoxSeam = [](const Message&) { return MsgAnswer::No; };
  NowSeam = [] { return QDateTime(QDate(2026, 11, 26), QTime(13, 55, 46)); };
  frmT3MasterMDI window(AllScreens());
  window.MDIForm_Load();
  OpenTownHall();
  window.Steps().Begin();
  CurrentFileName = QStringLiteral("/home/kim/Orv Tamberloom 3/Town Hall.T3");
  DocumentFileName = QStringLiteral("/home/kim/Orv Tamberloom 3/Documentation/Town Hall.txt");
  UpdateStatusBar();
  window.Recovery().Settle(LiveProject);
  window.findChild<Timer*>(QStringLiteral("tmrFindings"))->Tick();
  const QString folder = application.arguments().at(1);
  for (const ScreenEntry& entry : ScreenTable()) {
    if (entry.Create && !SaveScreen(window, entry.Name, folder)) return 1;
  }
  return SaveCopyDialogs(window, folder) && SaveConnected(window, folder) && SavePanelWindow(folder)
             ? 0
             : 1;
}
