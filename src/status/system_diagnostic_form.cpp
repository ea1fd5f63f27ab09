#include "status/system_diagnostic_form.h"

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/live_project.h"
#include "shell/shell.h"

namespace {

constexpr Int16 LastCycle = 10'000;
constexpr Int16 LargestShownCount = 99;

/// As fast as the link allows, with a turn for the screen between two cycles.
constexpr int CycleIntervalMs = 1;

}  // namespace

frmT3SystemDiagnostic::frmT3SystemDiagnostic()
    : ChildForm(Screen::SystemDiagnostic, QStringLiteral("Network Diagnostics")) {}

void frmT3SystemDiagnostic::Form_Load() {
  auto* row = AddRow();
  const auto addButton = [&](const char* name, const char* caption,
                             void (frmT3SystemDiagnostic::*click)()) {
    auto* button = Add<Button>(row, name, QString::fromLatin1(caption));
    button->Click = [this, click] { (this->*click)(); };
    return button;
  };
  cmdStop = addButton("cmdStop", "Stop", &frmT3SystemDiagnostic::cmdStop_Click);
  cmdClearTotals =
      addButton("cmdClearTotals", "Clear Totals", &frmT3SystemDiagnostic::cmdClearTotals_Click);
  addButton("cmdClearFLChanges", "Clear Changes", &frmT3SystemDiagnostic::cmdClearFLChanges_Click);
  row->addSpacing(16);
  lblCycleCount = AddLabel(row, "lblCycleCount", QStringLiteral("Cycle: "));

  auto* grid = new RowGrid(DeviceCount, QStringLiteral("Device "));
  lblFLNode = grid->Add<Label>(
      "lblFLNode", {.Chars = 6, .Header = "lblNode", .HeaderText = QStringLiteral("Node")});
  lblFLNode.OnEach(&Label::Click, this, &frmT3SystemDiagnostic::lblFLNode_Click);
  lblFLComError = grid->Add<Label>(
      "lblFLComError",
      {.Chars = 6, .Header = "lblComErrorHeader", .HeaderText = QStringLiteral("Errors")});
  for (int cell = 0; cell < DeviceCount; ++cell) {
    lblFLNode(cell).SetCaption(TwoDigits(cell + 1));
    lblFLNode(cell).SetAlignment(Qt::AlignCenter);
    lblFLNode(cell).setToolTip(ToUnicode(FennlinkRecords(cell + 1).DeviceName));
    lblFLComError(cell).SetCaption(QStringLiteral("0"));
    lblFLComError(cell).SetAlignment(Qt::AlignCenter);
    ShowWatched(cell);
  }
  AddWidget(grid);
  AddHint(
      QStringLiteral("White devices are watched; blue: its inputs have changed. While the test is "
                     "stopped, a click on a device watches it or leaves it out."));
  Timer1 = new Timer(this, "Timer1", CycleIntervalMs);
  Timer1->Tick = [this] { Timer1_Timer(); };
}

void frmT3SystemDiagnostic::Form_Activate() {
  SetRunning(true);
  Timer1->SetEnabled(false);
  // Once the screen is there to be seen: the panel may take its time.
  QTimer::singleShot(0, this, [this] { AskPanel([this] { FindDevices(); }); });
}

void frmT3SystemDiagnostic::Form_Unload() {
  ForgetRequests();
  if (Running) SetRunning(false);
}

void frmT3SystemDiagnostic::FindDevices() {
  const std::optional<DeviceBytes> present = ReadDevicesPresent();
  if (!present) {
    PanelConnectionLost();
    return;
  }
  for (int cell = 0; cell < DeviceCount; ++cell) {
    Watched(cell) = (*present)(cell + 1) != 0;
    ShowWatched(cell);
  }
  Timer1->SetEnabled(Running);
}

/// The timer rests while a cycle runs, as a tick may come in the middle of a TCP wait.
void frmT3SystemDiagnostic::Timer1_Timer() {
  if (PanelBusy()) return;
  Timer1->SetEnabled(false);
  if (CycleCount >= LastCycle) {
    lblCycleCount->SetCaption(QStringLiteral("Test Stopped"));
    return;
  }
  ++CycleCount;
  lblCycleCount->SetCaption(QStringLiteral("Cycle: %1").arg(CycleCount));
  AskPanel([this] { RunCycle(); });
  Timer1->SetEnabled(Running);
}

void frmT3SystemDiagnostic::RunCycle() {
  const std::optional<DeviceBytes> present = ReadDevicesPresent();
  if (present) CountErrors(*present);
  const std::optional<DeviceBytes> inputs = present ? ReadDeviceInputs() : std::nullopt;
  if (!inputs) {
    PanelConnectionLost();
    return;
  }
  NoteChanges(*inputs);
}

void frmT3SystemDiagnostic::CountErrors(const DeviceBytes& present) {
  for (int cell = 0; cell < DeviceCount; ++cell) {
    if (!Watched(cell)) continue;
    Label& errors = lblFLComError(cell);
    Int16& count = ErrorCount(cell);
    if (present(cell + 1) != 0) {
      errors.SetBackColor(count == 0 ? Colors::Green : Colors::Yellow);
      continue;
    }
    ++count;
    errors.SetBackColor(Colors::Red);
    errors.SetCaption(count > LargestShownCount ? QStringLiteral(">%1").arg(LargestShownCount)
                                                : QString::number(count));
  }
}

void frmT3SystemDiagnostic::NoteChanges(const DeviceBytes& inputs) {
  for (int cell = 0; cell < DeviceCount; ++cell) {
    const Int16 now = inputs(cell + 1);
    if (!Watched(cell) || now == LastInputs(cell)) continue;
    LastInputs(cell) = now;
    lblFLNode(cell).SetBackColor(Colors::Blue);
    lblFLNode(cell).SetState(QStringLiteral("Watched, an input has changed"));
  }
}

void frmT3SystemDiagnostic::SetRunning(bool running) {
  Running = running;
  Timer1->SetEnabled(running);
  cmdStop->SetCaption(running ? QStringLiteral("Stop") : QStringLiteral("Start"));
  cmdClearTotals->setEnabled(!running);
  running ? DisableMainMenus() : EnableMainMenus();
}

void frmT3SystemDiagnostic::ShowWatched(int cell) {
  lblFLNode(cell).SetBackColor(Watched(cell) ? Colors::White : Colors::LightGrey);
  lblFLNode(cell).SetState(Watched(cell) ? QStringLiteral("Watched")
                                         : QStringLiteral("Not watched"));
}

void frmT3SystemDiagnostic::cmdStop_Click() {
  SetRunning(!Running);
}

void frmT3SystemDiagnostic::cmdClearTotals_Click() {
  CycleCount = 0;
  lblCycleCount->SetCaption(QStringLiteral("Cycle: "));
  for (int cell = 0; cell < DeviceCount; ++cell) {
    ErrorCount(cell) = 0;
    lblFLComError(cell).SetCaption(QStringLiteral("0"));
    lblFLComError(cell).SetBackColor(std::nullopt);
  }
}

void frmT3SystemDiagnostic::cmdClearFLChanges_Click() {
  for (int cell = 0; cell < DeviceCount; ++cell) ShowWatched(cell);
}

void frmT3SystemDiagnostic::lblFLNode_Click(int index) {
  // Over TCP a click can come in the middle of a cycle, while the timer rests.
  if (Timer1->Enabled() || PanelBusy()) return;
  Watched(index) = !Watched(index);
  ShowWatched(index);
}
