#include "link/connect_form.h"
#include "link/panel_display.h"
#include "link/panel_queue.h"
#include "link/panel_transact.h"
#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/hex.h"
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

Int32 ReplyDigit(int position) {
  return ParseHexByte(ReplyMid(position, 1));
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
  if (PanelTransact("01", 34, 5) == 0) {
    PanelConnectionLost();
    return;
  }
  lblReadAt->SetCaption(Now().toString(QStringLiteral("'Read at' hh:mm:ss")));
  lblPanelTime->SetCaption(ClockText(ReplyByte(2), ReplyByte(4), ReplyByte(6)));
  const std::string_view day = Word(WeekdayNames, ReplyDigit(14));
  if (!day.empty()) weekday = ToUnicode(ShortName(day)) + u' ';
  lblPanelDate->SetCaption(weekday + TwoDigits(ReplyByte(8)) + u'/' + TwoDigits(ReplyByte(10)) +
                           u'/' + TwoDigits(ReplyByte(12)));
  lblIOInstalled->SetCaption(TwoDigits(ReplyByte(16)) + QStringLiteral(" Inputs/Relays"));
  const auto addOnType = static_cast<Int16>(ReplyDigit(19));
  lblAddOnCardTypeRev->SetCaption(AddOnCardText(addOnType, ReplyDigit(20)));
  if (HardwareChecked != 0) return;
  HardwareChecked = -1;
  CheckHardware(addOnType);
}

/// Offers to adopt the panel's hardware where the document has another.
void frmT3Connect::CheckHardware(Int16 addOnType) {
  if (PanelTransact("311FF00B", 28, 2) == 0) {
    PanelConnectionLost();
    return;
  }
  std::array<Int16, NodeCount> counts{};
  bool differs = addOnType != PanelRecord.AddOnModuleType;
  for (int node = 0; node < NodeCount; ++node) {
    const auto count = static_cast<Int16>(ReplyByte(2 + 2 * node));
    counts[static_cast<std::size_t>(node)] = count;
    differs = differs || count != PanelRecord.IOCount(node);
  }
  if (!differs || MsgBox(QStringLiteral("Host I/O Configuration Does Not Match Panel Hardware.\n"
                                        "Change Host Configuration To Match Panel?"),
                         MsgIcon::Question, ProgramTitle, MsgButtons::YesNo) != MsgAnswer::Yes) {
    return;
  }
  for (int node = 0; node < NodeCount; ++node) {
    PanelRecord.IOCount(node) = counts[static_cast<std::size_t>(node)];
  }
  PanelRecord.AddOnModuleType = addOnType;
  DataChanged = -1;
}

void frmT3Connect::cmdSetQZClock_Click() {
  AskPanel([this] {
    Timer1->SetEnabled(false);
    const QDateTime now = Now();
    const QTime time = now.time();
    const QDate date = now.date();
    constexpr int daysOfWeek = 7;  // Sunday is 7 in Qt and 0 on the wire.
    PanelTransact("00" + HexByte(time.hour()) + HexByte(time.minute()) + HexByte(date.month()) +
                      HexByte(date.day()) + HexByte(date.year() % 100) +
                      NumberText(date.dayOfWeek() % daysOfWeek),
                  4, 4);
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
