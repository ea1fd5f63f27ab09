#include "link/line_frame.h"

#include <QApplication>
#include <QEventLoop>
#include <QGridLayout>
#include <QGroupBox>
#include <QTimer>

#include "line/line_kinds.h"
#include "link/named_control.h"
#include "link/recent_list.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "shell/controls/dialogs.h"

namespace {

/// The character if it is a digit, one of `others` or backspace; else 0, which refuses the key.
char16_t KeepKey(char16_t key, QStringView others) {
  constexpr char16_t backspace = 8;
  const bool digit = key >= u'0' && key <= u'9';
  return digit || others.contains(QChar(key)) || key == backspace ? key : u'\0';
}

/// The modem's waits deliver no events. Before them an answered box must go and what it has covered
/// show again, which takes the window system some moments.
void LetWindowsSettle() {
  constexpr std::chrono::milliseconds moments(100);
  QEventLoop loop;
  QTimer::singleShot(moments, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

QLabel* WrappedLine(const char* name) {
  auto* line = new QLabel;
  line->setObjectName(QString::fromLatin1(name));
  line->setWordWrap(true);
  line->setTextFormat(Qt::PlainText);
  line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return line;
}

LineFrame::LineFrame() {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* frame = NamedControl<QGroupBox>(column, "fraConnection", QStringLiteral("Connection"));
  auto* lines = new QVBoxLayout(frame);

  auto* types = new QHBoxLayout;
  for (const LineKind& kind : LineKinds) {
    auto* box = new CheckBox(QString::fromLatin1(kind.Caption));
    types->addWidget(box);
    chkConnectionType.Add(box, QStringLiteral("chkConnectionType"));
  }
  lines->addLayout(types);

  comPorts = new QWidget;
  auto* grid = new QGridLayout(comPorts);
  grid->setContentsMargins(0, 0, 0, 0);
  constexpr int rows = 8;
  for (int i = 0; i < ComPortCount; ++i) {
    auto* option = new OptionButton(ComPortName(i + 1));
    grid->addWidget(option, i % rows, i / rows);
    optComPort.Add(option, QStringLiteral("optComPort"));
  }
  lines->addWidget(comPorts);
  lblForbidden = WrappedLine("lblForbidden");
  lblForbidden->setForegroundRole(QPalette::PlaceholderText);
  lblForbidden->setVisible(false);
  lines->addWidget(lblForbidden);

  lblPhoneNumber = NamedLabel(lines, "lblPhoneNumber", QStringLiteral("Telephone Number"));
  txtPhoneNumber = NamedControl<TextBox>(lines, "txtPhoneNumber");
  txtPhoneNumber->setAccessibleName(lblPhoneNumber->Caption());
  txtPhoneNumber->KeyPress = [](char16_t key) { return KeepKey(key, u" -,"); };
  lastNumbers = new RecentList(txtPhoneNumber, Typed::PhoneNumber, "lblLastNumber");
  lines->addWidget(lastNumbers);
  lblTCPIP = NamedLabel(lines, "lblTCPIP", QStringLiteral("TCP/IP Address"));
  txtTCPIP = NamedControl<TextBox>(lines, "txtTCPIP");
  txtTCPIP->setAccessibleName(lblTCPIP->Caption());
  txtTCPIP->KeyPress = [](char16_t key) { return KeepKey(key, u"."); };
  lastAddresses = new RecentList(txtTCPIP, Typed::TcpAddress, "lblLastAddress");
  lines->addWidget(lastAddresses);

  cmdConnect =
      NamedControl<Button>(column, "cmdConnect", QStringLiteral("Connect To Tamberloom 3"));
  for (TextBox* box : {txtPhoneNumber, txtTCPIP}) {
    connect(box, &QLineEdit::returnPressed, cmdConnect, &QPushButton::click);
  }
  lblModem = NamedLabel(column, "lblModem");
  lblModem->SetAlignment(Qt::AlignCenter);
  lblModem->setVisible(false);
  lblTrouble = WrappedLine("lblTrouble");
  column->addWidget(lblTrouble, 1);
  lblLeft = WrappedLine("lblLeft");
  lblLeft->setVisible(false);
  column->addWidget(lblLeft);
  cmdSaveLog = NamedControl<Button>(nullptr, "cmdSaveLog", QStringLiteral("Save Log..."));
  cmdSaveLog->setToolTip(QStringLiteral(
      "What has been said on the line since it was connected, without the password"));
  column->addWidget(cmdSaveLog, 0, Qt::AlignLeft);
  cmdSaveLog->setVisible(false);
}

void LineFrame::ShowConnectionType() {
  const int type = ConnectionType();
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).ShowValue(i == type);
  // A damaged project's code has no box and shows the ports.
  const bool known = type >= 0 && type < chkConnectionType.Count();
  const int fields = known ? LineKindOf(ConnectionType()).Fields : LineKind::Port;
  lblPhoneNumber->setVisible((fields & LineKind::PhoneNumber) != 0);
  txtPhoneNumber->setVisible((fields & LineKind::PhoneNumber) != 0);
  lblTCPIP->setVisible((fields & LineKind::Host) != 0);
  txtTCPIP->setVisible((fields & LineKind::Host) != 0);
  comPorts->setVisible((fields & LineKind::Port) != 0);
  ShowRecent();
}

/// Not while a panel is connected: then there is nothing to choose.
void LineFrame::ShowRecent() {
  lastNumbers->ShowFor(Connected == 0 && txtPhoneNumber->isVisibleTo(this));
  lastAddresses->ShowFor(Connected == 0 && txtTCPIP->isVisibleTo(this));
}

void LineFrame::RememberWhere() {
  const int fields = LineKindOf(ConnectionType()).Fields;
  if (fields & LineKind::PhoneNumber) RememberTyped(Typed::PhoneNumber, txtPhoneNumber->Text());
  if (fields & LineKind::Host) RememberTyped(Typed::TcpAddress, txtTCPIP->Text());
}

void LineFrame::SelectComPort() {
  const int index = PanelRecord.ComPort - 1;
  for (int i = 0; i < ComPortCount; ++i) {
    optComPort(i).setAutoExclusive(false);
    if (i != index) optComPort(i).ShowValue(false);
  }
  if (index >= 0 && index < ComPortCount) optComPort(index).Select();
  for (int i = 0; i < ComPortCount; ++i) optComPort(i).setAutoExclusive(true);
}

void LineFrame::ShowAddresses() {
  txtPhoneNumber->SetText(ToUnicode(PhoneNumber()));
  txtTCPIP->SetText(ToUnicode(TcpAddress()));
}

void LineFrame::ShowDefaults(bool showPorts) {
  SelectComPort();
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).ShowValue(i == 0);
  if (showPorts) {
    comPorts->setVisible(true);
  } else {
    lblTrouble->setText(QStringLiteral("Choose the connection again before you connect."));
  }
  ShowAddresses();
}

void LineFrame::ShowEnabled(bool enabled, const FixedArray<Int16, ComPortCount + 1>& present) {
  for (int i = 0; i < ComPortCount; ++i) optComPort(i).setEnabled(enabled && present(i) != 0);
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).setEnabled(enabled);
  // Where the panel is stays readable while it is connected.
  for (TextBox* box : {txtPhoneNumber, txtTCPIP}) {
    box->setEnabled(enabled);
    QPalette palette = QApplication::palette(box);
    palette.setColor(QPalette::Disabled, QPalette::Text, palette.color(QPalette::PlaceholderText));
    box->setPalette(palette);
  }
  ShowRecent();
}

void LineFrame::ShowStage(LineStage stage) {
  switch (stage) {
    case LineStage::ResetModem:
      return ShowModemBanner(QStringLiteral("Reset Modem....."), Colors::Yellow);
    case LineStage::DialModem:
      return ShowModemBanner(QStringLiteral("Modem Connecting......."), Colors::Yellow);
    case LineStage::HangUpModem:
      return ShowModemBanner(QStringLiteral("Disconnecting Modem"), Colors::Red);
    case LineStage::ModemConnected:
      lblModem->setVisible(false);
      MsgBox(QStringLiteral("Modem Connected"), MsgIcon::None, ProgramTitle);
      return LetWindowsSettle();
    case LineStage::CallSettled:
    case LineStage::HungUp:
      return lblModem->setVisible(false);
  }
}

void LineFrame::ShowModemBanner(const QString& text, QRgb color) {
  lblModem->SetCaption(text);
  lblModem->SetBackColor(color);
  lblModem->setVisible(true);
  LetWindowsSettle();
}
