#include "link/on_line_frame.h"

#include "link/named_control.h"
#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/stopwatch.h"
#include "panel/words.h"
#include "shell/controls/row_grid.h"

std::function<int()> ErrorsOfProject;

namespace {

/// By the card type that the panel reports.
constexpr std::array AddOnCards = {"None",       "DMX",    "MODBUS", "N2",
                                   "Voice/DTMF", "BACnet", "Modem",  "Ethernet"};

QString AddOnCardText(int type, int revision) {
  if (type >= static_cast<int>(AddOnCards.size())) return QStringLiteral("Unknown Type");
  const QString card = QString::fromLatin1(AddOnCards[static_cast<std::size_t>(type)]);
  return type == 0 ? card : card + QStringLiteral("  Rev %1").arg(revision);
}

constexpr qint64 OneMinute = 60;  // in seconds

/// "2 min 5 s behind", said of the panel.
QString ApartInWords(qint64 seconds) {
  constexpr qint64 hour = 60 * OneMinute;
  constexpr qint64 day = 24 * hour;
  const qint64 apart = std::abs(seconds);
  if (apart < 2) return QStringLiteral("on time");  // a reading takes its time, too
  const QString length =
      apart < OneMinute ? QStringLiteral("%1 s").arg(apart)
      : apart < hour ? QStringLiteral("%1 min %2 s").arg(apart / OneMinute).arg(apart % OneMinute)
      : apart < 2 * day
          ? QStringLiteral("%1 h %2 min").arg(apart / hour).arg(apart % hour / OneMinute)
          : QStringLiteral("%1 days").arg(apart / day);
  return length + QLatin1String(seconds < 0 ? " behind" : " ahead");
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

OnLineFrame::OnLineFrame() : QGroupBox(QStringLiteral("On Line Functions")) {
  setObjectName(QStringLiteral("fraOnLineFunctions"));
  auto* lines = new QVBoxLayout(this);
  display = new DescribedWidget(QAccessible::StaticText);
  lines->addWidget(display, 0, Qt::AlignHCenter);
  AddFacts(lines);
  AddFunctions(lines);
  fraPassWord = NamedControl<PassWordFrame>(lines, "fraPassWord");
  fraPassWord->setVisible(false);
  Progress = std::make_unique<TransferProgress>(lines);
}

void OnLineFrame::AddFacts(QBoxLayout* lines) {
  auto* facts = new QGridLayout;
  facts->setColumnStretch(1, 1);
  facts->setColumnStretch(3, 1);
  const auto addFact = [&](int at, const char* name, const QString& title) {
    auto* heading = new Label;
    heading->SetLook(Label::Look::Quiet);
    heading->SetCaption(title);
    heading->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    facts->addWidget(heading, at / 2, at % 2 * 2);
    auto* fact = NamedControl<Label>(nullptr, name);
    fact->setAccessibleName(title);
    facts->addWidget(fact, at / 2, at % 2 * 2 + 1);
    return fact;
  };
  lblPanelTime = addFact(0, "lblPanelTime", QStringLiteral("Time"));
  lblIOInstalled = addFact(1, "lblIOInstalled", QStringLiteral("Installed"));
  lblPanelDate = addFact(2, "lblPanelDate", QStringLiteral("Date"));
  lblAddOnCardTypeRev = addFact(3, "lblAddOnCardTypeRev", QStringLiteral("Add-On Card"));
  lines->addLayout(facts);
}

void OnLineFrame::AddFunctions(QBoxLayout* lines) {
  auto* reading = new QHBoxLayout;
  reading->setAlignment(Qt::AlignLeft);
  lines->addLayout(reading);
  cmdRefresh = NamedControl<Button>(reading, "cmdRefresh", QStringLiteral("Refresh"));
  lblReadAt = NamedLabel(reading, "lblReadAt");
  lblReadAt->SetLook(Label::Look::Quiet);
  lblReadAt->setToolTip(QStringLiteral("The panel's time and date stand as they were read then."));
  lblClock = NamedLabel(lines, "lblClock");
  lblClock->SetLook(Label::Look::Quiet);
  auto* small = new QHBoxLayout;
  cmdSetQZClock =
      NamedControl<Button>(small, "cmdSetQZClock", QStringLiteral("Set Tamberloom 3 Clock"));
  cmdVirtualKeypad =
      NamedControl<Button>(small, "cmdVirtualKeypad", QStringLiteral("Virtual Keypad"));
  lines->addLayout(small);
  auto* diagnostics = new QHBoxLayout;
  cmdNetworkDiagnostics = NamedControl<Button>(diagnostics, "cmdNetworkDiagnostics",
                                               QStringLiteral("Network Diagnostics"));
  lines->addLayout(diagnostics);
  auto* transfers = new QVBoxLayout;
  auto* down = new QHBoxLayout;
  transfers->addLayout(down);
  cmdDownLoadToT2 = NamedControl<Button>(down, "cmdDownLoadToT2",
                                         QStringLiteral("Download Settings To Tamberloom 3"));
  cmdSendChanges = NamedControl<Button>(down, "cmdSendChanges", QStringLiteral("Send Changes"));
  cmdSendChanges->setToolTip(
      QStringLiteral("Sends only what has changed since this panel's last download or upload."));
  down->setStretch(0, 2);
  down->setStretch(1, 1);
  lblErrors = NamedLabel(transfers, "lblErrors");
  lblErrors->SetLook(Label::Look::Quiet);
  auto* up = new QHBoxLayout;
  transfers->addLayout(up);
  cmdUpLoadFromT2 = NamedControl<Button>(up, "cmdUpLoadFromT2",
                                         QStringLiteral("Upload Settings From Tamberloom 3"));
  lines->addLayout(transfers);
}

void OnLineFrame::ShowStatus(const PanelStatus& status) {
  lblReadAt->SetCaption(Now().toString(QStringLiteral("'Read at' hh:mm:ss")));
  lblPanelTime->SetCaption(ClockText(status.Hour, status.Minute, status.Second));
  const std::string_view day = Word(WeekdayNames, status.Weekday);
  if (!day.empty()) weekday_ = ToUnicode(ShortName(day)) + u' ';
  lblPanelDate->SetCaption(weekday_ + TwoDigits(status.Month) + u'/' + TwoDigits(status.Day) +
                           u'/' + TwoDigits(status.Year));
  const QDateTime clock = status.Clock();
  if (clock.isValid()) {
    const qint64 apart = Now().secsTo(clock);
    // Two readings of equal clocks differ by one second as often as not.
    if (!apart_ || std::abs(apart - *apart_) > 1) apart_ = apart;
  }
  // Four readings a second would leave nobody the time to read it.
  constexpr qint64 toldMs = 10'000;
  if (clockSet_ && !setRead_) setRead_.emplace();
  if (clockSet_ && setRead_->ElapsedMs() > toldMs) clockSet_ = false;
  lblClock->SetCaption(
      !clock.isValid() ? QStringLiteral("The panel's clock shows no valid time")
      : clockSet_ && std::abs(*apart_) < OneMinute
          ? QStringLiteral("Set; the panel is %1, as only hours and minutes are sent")
                .arg(ApartInWords(*apart_))
          : QStringLiteral("The panel is ") + ApartInWords(*apart_));
  lblIOInstalled->SetCaption(TwoDigits(status.Points) + QStringLiteral(" Inputs/Relays"));
  lblAddOnCardTypeRev->SetCaption(AddOnCardText(status.CardType, status.CardRevision));
}

void OnLineFrame::BeginSettingClock() {
  clockSet_ = false;
  lblClock->SetCaption({});
}

void OnLineFrame::TellClockSet(bool answered, bool isReadByItself) {
  clockSet_ = answered;
  setRead_.reset();
  TellClockAnew();
  if (!answered) {
    lblClock->SetCaption(QStringLiteral("The clock may not be set: no answer came"));
  } else if (!isReadByItself) {
    lblClock->SetCaption(QStringLiteral("Sent; Refresh reads it"));
  }
}

void OnLineFrame::ShowErrorsOfProject() {
  const int errors = ErrorsOfProject ? ErrorsOfProject() : 0;
  lblErrors->setVisible(errors > 0);
  lblErrors->SetCaption(
      errors == 1 ? QStringLiteral("The check finds 1 error; see Document.")
                  : QStringLiteral("The check finds %1 errors; see Document.").arg(errors));
}

void OnLineFrame::EnableFunctions(bool enabled) {
  cmdUpLoadFromT2->setVisible(enabled);
  cmdDownLoadToT2->setVisible(enabled);
  cmdSendChanges->setVisible(enabled);
  enabled ? ShowErrorsOfProject() : lblErrors->setVisible(false);
  for (QWidget* control :
       std::initializer_list<QWidget*>{cmdRefresh, cmdSetQZClock, cmdVirtualKeypad,
                                       cmdNetworkDiagnostics, lblPanelTime, lblPanelDate}) {
    control->setEnabled(enabled);
  }
}
