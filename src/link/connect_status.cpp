#include <algorithm>
#include <tuple>

#include "line/panel_commands.h"
#include "link/connect_form.h"
#include "link/panel_display.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "panel/words.h"
#include "shell/controls/row_grid.h"
#include "shell/shell.h"

namespace {

/// By the card type that the panel reports.
constexpr std::array AddOnCards = {"None",       "DMX",    "MODBUS", "N2",
                                   "Voice/DTMF", "BACnet", "Modem",  "Ethernet"};

QString AddOnCardText(int type, int revision) {
  if (type >= static_cast<int>(AddOnCards.size())) return QStringLiteral("Unknown Type");
  const QString card = QString::fromLatin1(AddOnCards[static_cast<std::size_t>(type)]);
  return type == 0 ? card : card + QStringLiteral("  Rev %1").arg(revision);
}

/// "01:05:09 PM".
QString ClockText(int hour, int minute, int second) {
  constexpr int half = 12;
  const bool afternoon = hour >= half;
  if (afternoon) hour -= half;
  return TwoDigits(hour == 0 ? half : hour) + u':' + TwoDigits(minute) + u':' + TwoDigits(second) +
         (afternoon ? QStringLiteral(" PM") : QStringLiteral(" AM"));
}

}  // namespace

void frmT3Connect::LoadRevLabels() {
  constexpr int rows = 2;
  lblT2FirmwareRevision = AddDisplayCells(display, rows, "lblT2FirmwareRevision", 1.1);
}

void frmT3Connect::ShowRevLabels() {
  for (int i = 0; i < lblT2FirmwareRevision.Count(); ++i) {
    const auto at = static_cast<std::size_t>(i);
    lblT2FirmwareRevision(i).SetCaption(
        ToUnicode(at < PanelFirmwareText.size() ? PanelFirmwareText.substr(at, 1) : " "));
  }
  display->TellChange();
}

void frmT3Connect::Timer1_Timer() {
  if (ConnectionType() < ConnectionTCP && !PanelBusy()) AskPanel([this] { ReadQZStatus(); });
}

void frmT3Connect::cmdRefresh_Click() {
  AskPanel([this] { ReadQZStatus(); });
}

void frmT3Connect::ReadQZStatus() {
  if (Connected == 0) return;
  const std::optional<PanelStatus> status = ReadPanelStatus();
  if (!status) {
    PanelConnectionLost();
    return;
  }
  lblReadAt->SetCaption(Now().toString(QStringLiteral("'Read at' hh:mm:ss")));
  lblPanelTime->SetCaption(ClockText(status->Hour, status->Minute, status->Second));
  const std::string_view day = Word(WeekdayNames, status->Weekday);
  if (!day.empty()) weekday = ToUnicode(ShortName(day)) + u' ';
  lblPanelDate->SetCaption(weekday + TwoDigits(status->Month) + u'/' + TwoDigits(status->Day) +
                           u'/' + TwoDigits(status->Year));
  lblIOInstalled->SetCaption(TwoDigits(status->Points) + QStringLiteral(" Inputs/Relays"));
  lblAddOnCardTypeRev->SetCaption(AddOnCardText(status->CardType, status->CardRevision));
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
    std::ignore = SetPanelClock(Now());
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
