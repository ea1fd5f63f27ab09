#include <algorithm>

#include "line/panel_commands.h"
#include "link/connect_form.h"
#include "link/panel_display.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "shell/shell.h"

void frmT3Connect::LoadRevLabels() {
  constexpr int rows = 2;
  fraOnLineFunctions->lblT2FirmwareRevision =
      AddDisplayCells(fraOnLineFunctions->display, rows, "lblT2FirmwareRevision", 1.1);
}

void frmT3Connect::ShowRevLabels() {
  const ControlArray<Label>& cells = fraOnLineFunctions->lblT2FirmwareRevision;
  for (int i = 0; i < cells.Count(); ++i) {
    const auto at = static_cast<std::size_t>(i);
    cells(i).SetCaption(
        ToUnicode(at < PanelFirmwareText.size() ? PanelFirmwareText.substr(at, 1) : " "));
  }
  fraOnLineFunctions->display->TellChange();
}

void frmT3Connect::Timer1_Timer() {
  if (ConnectionType() < ConnectionTCP && !PanelBusy()) AskPanel([this] { ReadQZStatus(); });
}

void frmT3Connect::cmdRefresh_Click() {
  fraOnLineFunctions->TellClockAnew();
  AskPanel([this] { ReadQZStatus(); });
}

void frmT3Connect::ReadQZStatus() {
  if (Connected == 0) return;
  const std::optional<PanelStatus> status = ReadPanelStatus();
  if (!status) {
    PanelConnectionLost();
    return;
  }
  fraOnLineFunctions->ShowStatus(*status);
  if (HardwareChecked != 0) return;
  HardwareChecked = -1;
  CheckHardware(static_cast<Int16>(status->CardType));
}

/// Offers to adopt the panel's hardware where the document has another.
void frmT3Connect::CheckHardware(Int16 cardType) {
  const std::optional<PointCounts> counts = ReadPointCounts();
  if (!counts) {
    PanelConnectionLost();
    return;
  }
  // The project has one element more, which is no node's.
  const auto own = std::begin(PanelRecord.IOCount.elements);
  if (cardType == PanelRecord.AddOnModuleType && std::equal(counts->begin(), counts->end(), own)) {
    return;
  }
  if (MsgBox(QStringLiteral("Host I/O Configuration Does Not Match Panel Hardware.\n"
                            "Change Host Configuration To Match Panel?"),
             MsgIcon::Question, ProgramTitle, MsgButtons::YesNo) != MsgAnswer::Yes) {
    return;
  }
  std::copy(counts->begin(), counts->end(), own);
  PanelRecord.AddOnModuleType = cardType;
  DataChanged = -1;
}

void frmT3Connect::cmdSetQZClock_Click() {
  AskPanel([this] {
    Timer1->SetEnabled(false);
    fraOnLineFunctions->BeginSettingClock();
    const bool answered = SetPanelClock(Now());
    fraOnLineFunctions->TellClockSet(answered, ConnectionType() < ConnectionTCP);
    if (Connected != 0) Timer1->SetEnabled(true);
  });
}

void frmT3Connect::cmdVirtualKeypad_Click() {
  UnloadAllForms();
  ShowForm(Screen::VirtualKeypad);
}

void frmT3Connect::cmdNetworkDiagnostics_Click() {
  UnloadAllForms();
  ShowForm(Screen::SystemDiagnostic);
}
