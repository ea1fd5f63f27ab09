#include "link/connect_form.h"

#include <QApplication>
#include <QShortcut>

#include "line/line_kinds.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/shell.h"

std::function<int()> ErrorsOfProject;

namespace {

/// The character if it is a digit, one of `others` or backspace; else 0, which refuses the key.
char16_t KeepKey(char16_t key, QStringView others) {
  constexpr char16_t backspace = 8;
  const bool digit = key >= u'0' && key <= u'9';
  return digit || others.contains(QChar(key)) || key == backspace ? key : u'\0';
}

QLabel* WrappedLine(const char* name) {
  auto* line = new QLabel;
  line->setObjectName(QString::fromLatin1(name));
  line->setWordWrap(true);
  line->setTextFormat(Qt::PlainText);
  line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return line;
}

}  // namespace

frmT3Connect::frmT3Connect() : ChildForm(Screen::Connect, QStringLiteral("Connect")) {}

/// One that was unloaded goes when its successor may have the link already.
frmT3Connect::~frmT3Connect() {
  if (!linked) return;
  Link = {};
  Line.Stage = nullptr;
}

void frmT3Connect::Form_Load() {
  auto* row = AddRow();
  row->setSpacing(16);
  row->setAlignment(Qt::AlignTop);
  row->addWidget(BuildSettings(), 2);

  auto* onLine = new QWidget;
  auto* column = new QVBoxLayout(onLine);
  column->setContentsMargins(0, 0, 0, 0);
  lblOffLine = WrappedLine("lblOffLine");
  lblOffLine->setForegroundRole(QPalette::PlaceholderText);
  lblOffLine->setText(
      QStringLiteral("While a panel is connected, its clock and hardware show here, and its "
                     "settings can be downloaded and uploaded."));
  column->addWidget(lblOffLine);
  fraOnLineFunctions =
      Add<QGroupBox>(column, "fraOnLineFunctions", QStringLiteral("On Line Functions"));
  BuildOnLineFunctions(fraOnLineFunctions);
  fraOnLineFunctions->setVisible(false);
  column->addStretch(1);
  row->addWidget(onLine, 3);

  Timer1 = new Timer(this, "Timer1", 250);
  Timer1->Tick = [this] { Timer1_Timer(); };
  linked = true;
  Line.Stage = [this](LineStage stage) { ShowStage(stage); };
  Link.DisconnectQZ = [this] { DisconnectQZ(); };
  Link.PutsOffClose = [this] { return PutsOffClose(); };
  Link.MayLeave = [this] { return MayLeave(); };
  Link.ShowNetworkDiagnostics = [this](bool show) { cmdNetworkDiagnostics->setVisible(show); };
  UpdateStatusBar();
}

QWidget* frmT3Connect::BuildSettings() {
  auto* settings = new QWidget;
  auto* column = new QVBoxLayout(settings);
  column->setContentsMargins(0, 0, 0, 0);
  auto* frame = Add<QGroupBox>(column, "fraConnection", QStringLiteral("Connection"));
  auto* lines = new QVBoxLayout(frame);

  auto* types = new QHBoxLayout;
  for (const LineKind& kind : LineKinds) {
    auto* box = new CheckBox(QString::fromLatin1(kind.Caption));
    types->addWidget(box);
    const int index = chkConnectionType.Count();
    box->Click = [this, index] { chkConnectionType_MouseUp(index); };
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
  optComPort.OnEach(&OptionButton::Click, this, &frmT3Connect::optComPort_Click);
  lines->addWidget(comPorts);

  lblPhoneNumber = AddLabel(lines, "lblPhoneNumber", QStringLiteral("Telephone Number"));
  txtPhoneNumber = Add<TextBox>(lines, "txtPhoneNumber");
  txtPhoneNumber->setAccessibleName(lblPhoneNumber->Caption());
  txtPhoneNumber->Change = [this] { txtPhoneNumber_Change(); };
  txtPhoneNumber->KeyPress = [](char16_t key) { return KeepKey(key, u" -,"); };
  lblTCPIP = AddLabel(lines, "lblTCPIP", QStringLiteral("TCP/IP Address"));
  txtTCPIP = Add<TextBox>(lines, "txtTCPIP");
  txtTCPIP->setAccessibleName(lblTCPIP->Caption());
  txtTCPIP->Change = [this] { txtTCPIP_Change(); };
  txtTCPIP->KeyPress = [](char16_t key) { return KeepKey(key, u"."); };

  cmdConnect = Add<Button>(column, "cmdConnect", QStringLiteral("Connect To Tamberloom 3"));
  cmdConnect->Click = [this] { cmdConnect_Click(); };
  for (TextBox* box : {txtPhoneNumber, txtTCPIP}) {
    connect(box, &QLineEdit::returnPressed, cmdConnect, &QPushButton::click);
  }
  lblModem = AddLabel(column, "lblModem", {});
  lblModem->SetAlignment(Qt::AlignCenter);
  lblModem->setVisible(false);
  lblTrouble = WrappedLine("lblTrouble");
  column->addWidget(lblTrouble, 1);
  return settings;
}

void frmT3Connect::BuildOnLineFunctions(QGroupBox* frame) {
  auto* lines = new QVBoxLayout(frame);
  display = new DescribedWidget(QAccessible::StaticText);
  lines->addWidget(display, 0, Qt::AlignHCenter);
  LoadRevLabels();

  auto* facts = new QGridLayout;
  facts->setColumnStretch(1, 1);
  facts->setColumnStretch(3, 1);
  const auto addFact = [&](int at, const char* name, const QString& title) {
    auto* heading = new Label;
    heading->SetLook(Label::Look::Quiet);
    heading->SetCaption(title);
    heading->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    facts->addWidget(heading, at / 2, at % 2 * 2);
    auto* fact = Add<Label>(nullptr, name);
    fact->setAccessibleName(title);
    facts->addWidget(fact, at / 2, at % 2 * 2 + 1);
    return fact;
  };
  lblPanelTime = addFact(0, "lblPanelTime", QStringLiteral("Time"));
  lblIOInstalled = addFact(1, "lblIOInstalled", QStringLiteral("Installed"));
  lblPanelDate = addFact(2, "lblPanelDate", QStringLiteral("Date"));
  lblAddOnCardTypeRev = addFact(3, "lblAddOnCardTypeRev", QStringLiteral("Add-On Card"));
  lines->addLayout(facts);

  const auto addButton = [&](QHBoxLayout* row, const char* name, const char* caption,
                             void (frmT3Connect::*click)()) {
    auto* button = Add<Button>(row, name, QString::fromLatin1(caption));
    button->Click = [this, click] { (this->*click)(); };
    return button;
  };
  auto* reading = new QHBoxLayout;
  reading->setAlignment(Qt::AlignLeft);
  lines->addLayout(reading);
  auto* small = new QHBoxLayout;
  cmdRefresh = addButton(reading, "cmdRefresh", "Refresh", &frmT3Connect::cmdRefresh_Click);
  lblReadAt = AddLabel(reading, "lblReadAt", {});
  lblReadAt->SetLook(Label::Look::Quiet);
  lblReadAt->setToolTip(QStringLiteral("The panel's time and date stand as they were read then."));
  cmdSetQZClock = addButton(small, "cmdSetQZClock", "Set Tamberloom 3 Clock",
                            &frmT3Connect::cmdSetQZClock_Click);
  cmdVirtualKeypad =
      addButton(small, "cmdVirtualKeypad", "Virtual Keypad", &frmT3Connect::cmdVirtualKeypad_Click);
  lines->addLayout(small);
  auto* diagnostics = new QHBoxLayout;
  cmdNetworkDiagnostics = addButton(diagnostics, "cmdNetworkDiagnostics", "Network Diagnostics",
                                    &frmT3Connect::cmdNetworkDiagnostics_Click);
  lines->addLayout(diagnostics);
  auto* transfers = new QVBoxLayout;
  const auto addTransfer = [&](const char* name, const char* caption,
                               void (frmT3Connect::*click)()) {
    auto* row = new QHBoxLayout;
    transfers->addLayout(row);
    return addButton(row, name, caption, click);
  };
  cmdDownLoadToT2 = addTransfer("cmdDownLoadToT2", "Download Settings To Tamberloom 3",
                                &frmT3Connect::cmdDownLoadToT2_Click);
  lblErrors = AddLabel(transfers, "lblErrors", {});
  lblErrors->SetLook(Label::Look::Quiet);
  cmdUpLoadFromT2 = addTransfer("cmdUpLoadFromT2", "Upload Settings From Tamberloom 3",
                                &frmT3Connect::cmdUpLoadFromT2_Click);
  lines->addLayout(transfers);

  fraPassWord = Add<QGroupBox>(lines, "fraPassWord", QStringLiteral("Password"));
  BuildPassWord(fraPassWord);
  fraPassWord->setVisible(false);

  lblActivityProgress = AddLabel(lines, "lblActivityProgress", QStringLiteral("Activity Progress"));
  constexpr int announceMs = 2000;
  lblActivityProgress->SetAnnounceMs(announceMs);
  pbActivityProgress = Add<QProgressBar>(lines, "pbActivityProgress");
  pbActivityProgress->setRange(0, ImageBlockCount);
  pbActivityProgress->setTextVisible(false);
  auto* cancel = new QHBoxLayout;
  lblTimeLeft = AddLabel(cancel, "lblTimeLeft", {});
  lblTimeLeft->SetLook(Label::Look::Quiet);
  cancel->addStretch(1);
  cmdCancelUpDownLoad =
      addButton(cancel, "cmdCancelUpDownLoad", "Cancel", &frmT3Connect::cmdCancelUpDownLoad_Click);
  lines->addLayout(cancel);
  lblActivityProgress->setVisible(false);
  pbActivityProgress->setVisible(false);
  lblTimeLeft->setVisible(false);
  cmdCancelUpDownLoad->setVisible(false);
}

void frmT3Connect::BuildPassWord(QGroupBox* frame) {
  auto* grid = new QGridLayout(frame);
  const auto addRow = [&](int at, const char* name, const QString& caption,
                          ControlArray<TextBox>& boxes, const char* box, const QString& which) {
    auto* label = Add<Label>(nullptr, name);
    label->SetCaption(caption);
    grid->addWidget(label, at, 0);
    auto* digits = new QHBoxLayout;
    AddDigits(boxes, box, which, digits);
    grid->addLayout(digits, at, 1);
    return label;
  };
  addRow(0, "lblPassWord", QStringLiteral("Enter Current Password"), txtPassWord, "txtPassWord",
         QStringLiteral("Current password"));
  chkChangePanelPassWord =
      Add<CheckBox>(nullptr, "chkChangePanelPassWord", QStringLiteral("Change Panel Password"));
  chkChangePanelPassWord->Click = [this] { chkChangePanelPassWord_Click(); };
  grid->addWidget(chkChangePanelPassWord, 1, 0);
  lblNewPassWord = addRow(2, "lblNewPassWord", QStringLiteral("Enter New Password"), txtNewPassWord,
                          "txtNewPassWord", QStringLiteral("New password"));
  auto* buttons = new QHBoxLayout;
  buttons->setAlignment(Qt::AlignRight);
  cmdPassWordContinue = Add<Button>(buttons, "cmdPassWordContinue", QStringLiteral("Continue"));
  cmdPassWordContinue->Click = [this] { cmdPassWordContinue_Click(); };
  cmdPassWordCancel = Add<Button>(buttons, "cmdPassWordCancel", QStringLiteral("Cancel"));
  cmdPassWordCancel->Click = [this] { cmdPassWordCancel_Click(); };
  grid->addLayout(buttons, 3, 0, 1, 2);
  for (const ControlArray<TextBox>* boxes : {&txtPassWord, &txtNewPassWord}) {
    for (int i = 0; i < boxes->Count(); ++i) {
      connect(&(*boxes)(i), &QLineEdit::returnPressed, cmdPassWordContinue, &QPushButton::click);
    }
  }
  auto* escape = new QShortcut(Qt::Key_Escape, frame);
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, cmdPassWordCancel, &QPushButton::click);
  chkChangePanelPassWord_Click();
}

void frmT3Connect::AddDigits(ControlArray<TextBox>& boxes, const char* name, const QString& which,
                             QHBoxLayout* row) {
  row->setAlignment(Qt::AlignLeft);
  constexpr int digits = 6;
  for (int i = 0; i < digits; ++i) {
    auto* box = new TextBox;
    box->setText(QStringLiteral("0"));
    // Only the key handler writes: a box always holds one digit.
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignCenter);
    box->setFixedWidth(box->fontMetrics().averageCharWidth() * 4);
    box->setAccessibleName(QStringLiteral("%1, digit %2").arg(which).arg(i + 1));
    box->KeyPress = [&boxes, i](char16_t key) {
      if (key >= u'0' && key <= u'9') {
        boxes(i).SetText(QString(QChar(key)));
        boxes((i + 1) % digits).setFocus();
      }
      return u'\0';
    };
    row->addWidget(box);
    boxes.Add(box, QString::fromLatin1(name));
  }
}

void frmT3Connect::Form_Activate() {
  FindComPorts();
  SelectComPort();
  ShowConnectionType();
  txtPhoneNumber->SetText(ToUnicode(PhoneNumber()));
  txtTCPIP->SetText(ToUnicode(TcpAddress()));
  ShowErrorsOfProject();
  if (Connected != 0) Timer1->SetEnabled(true);
}

void frmT3Connect::ShowErrorsOfProject() {
  const int errors = ErrorsOfProject ? ErrorsOfProject() : 0;
  lblErrors->setVisible(errors > 0);
  lblErrors->SetCaption(
      errors == 1 ? QStringLiteral("The check finds 1 error; see Document.")
                  : QStringLiteral("The check finds %1 errors; see Document.").arg(errors));
}

void frmT3Connect::Form_Hide() {
  // A transfer among them would have put the on-line functions back at its end.
  if (ForgetRequests()) ReturnOnLine();
  Timer1->SetEnabled(false);
}

void frmT3Connect::Form_Unload() {
  Form_Hide();
  Link = {};
  Line.Stage = nullptr;
  linked = false;
}

void frmT3Connect::FindComPorts() {
  if (Connected != 0) return;
  for (int i = 0; i < ComPortCount; ++i) {
    PortPresent(i) = 0;
    try {
      comQZ().Open({.Port = ComPortName(i + 1)});
      comQZ().Close();
      PortPresent(i) = -1;
    } catch (const TransportFailure&) {
      // The port is not offered.
    }
    optComPort(i).setEnabled(PortPresent(i) != 0);
    optComPort(i).setToolTip(PortDescription(ComPortName(i + 1)));
  }
}

/// A damaged document's port is none of the sixteen.
void frmT3Connect::SelectComPort() {
  const int index = PanelRecord.ComPort - 1;
  for (int i = 0; i < ComPortCount; ++i) {
    optComPort(i).setAutoExclusive(false);
    if (i != index) optComPort(i).ShowValue(false);
  }
  if (index >= 0 && index < ComPortCount) optComPort(index).Select();
  for (int i = 0; i < ComPortCount; ++i) optComPort(i).setAutoExclusive(true);
}

void frmT3Connect::ShowConnectionType() {
  const int type = ConnectionType();
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).ShowValue(i == type);
  // A code beyond the table has none of the boxes on, and shows no address.
  const int fields = type >= 0 && type < chkConnectionType.Count()
                         ? LineKindOf(ConnectionType()).Fields
                         : LineKind::Port;
  for (QWidget* control :
       {static_cast<QWidget*>(lblPhoneNumber), static_cast<QWidget*>(txtPhoneNumber)}) {
    control->setVisible((fields & LineKind::PhoneNumber) != 0);
  }
  for (QWidget* control : {static_cast<QWidget*>(lblTCPIP), static_cast<QWidget*>(txtTCPIP)}) {
    control->setVisible((fields & LineKind::Host) != 0);
  }
  comPorts->setVisible((fields & LineKind::Port) != 0);
}

void frmT3Connect::ShowSettingsEnabled(bool enabled) {
  for (int i = 0; i < ComPortCount; ++i) {
    optComPort(i).setEnabled(enabled && PortPresent(i) != 0);
  }
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).setEnabled(enabled);
  txtPhoneNumber->setEnabled(enabled);
  txtTCPIP->setEnabled(enabled);
  // Where the panel is stays readable while it is connected.
  for (TextBox* box : {txtPhoneNumber, txtTCPIP}) {
    QPalette palette = QApplication::palette(box);
    palette.setColor(QPalette::Disabled, QPalette::Text, palette.color(QPalette::PlaceholderText));
    box->setPalette(palette);
  }
}

void frmT3Connect::chkConnectionType_MouseUp(int index) {
  ConnectionType() = static_cast<Int16>(index);
  ShowConnectionType();
}

void frmT3Connect::optComPort_Click(int index) {
  PanelRecord.ComPort = static_cast<Int16>(index + 1);
  UpdateStatusBar();
  DataChanged = -1;
}

void frmT3Connect::txtPhoneNumber_Change() {
  PhoneNumber() = FromUnicode(txtPhoneNumber->Text());
  DataChanged = -1;
}

void frmT3Connect::txtTCPIP_Change() {
  TcpAddress() = FromUnicode(txtTCPIP->Text());
  DataChanged = -1;
}
