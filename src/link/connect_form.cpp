#include "link/connect_form.h"

#include <utility>

#include "line/com_port.h"
#include "line/frame_log.h"
#include "line/transport.h"
#include "link/named_control.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/shell.h"

frmT3Connect::frmT3Connect() : ChildForm(Screen::Connect, QStringLiteral("Connect")) {}

/// One that was unloaded goes when its successor may have the link already.
frmT3Connect::~frmT3Connect() {
  if (linked) LetGo();
}

void frmT3Connect::Form_Load() {
  const auto onClick = [this](Button* button, void (frmT3Connect::*click)()) {
    button->Click = [this, click] { (this->*click)(); };
  };
  auto* row = AddRow();
  row->setSpacing(16);
  row->setAlignment(Qt::AlignTop);
  line = new LineFrame;
  line->chkConnectionType.OnEach(&CheckBox::Click, this, &frmT3Connect::chkConnectionType_MouseUp);
  line->optComPort.OnEach(&OptionButton::Click, this, &frmT3Connect::optComPort_Click);
  line->txtPhoneNumber->Change = [this] { txtPhoneNumber_Change(); };
  line->txtTCPIP->Change = [this] { txtTCPIP_Change(); };
  onClick(line->cmdConnect, &frmT3Connect::cmdConnect_Click);
  onClick(line->cmdSaveLog, &frmT3Connect::cmdSaveLog_Click);
  row->addWidget(line, 2);

  auto* onLine = new QWidget;
  auto* column = new QVBoxLayout(onLine);
  column->setContentsMargins(0, 0, 0, 0);
  lblOffLine = WrappedLine("lblOffLine");
  lblOffLine->setForegroundRole(QPalette::PlaceholderText);
  lblOffLine->setText(
      QStringLiteral("While a panel is connected, its clock and hardware show here, and its "
                     "settings can be downloaded and uploaded."));
  column->addWidget(lblOffLine);
  fraOnLineFunctions = new OnLineFrame;
  column->addWidget(fraOnLineFunctions);
  LoadRevLabels();
  onClick(fraOnLineFunctions->cmdRefresh, &frmT3Connect::cmdRefresh_Click);
  onClick(fraOnLineFunctions->cmdSetQZClock, &frmT3Connect::cmdSetQZClock_Click);
  onClick(fraOnLineFunctions->cmdVirtualKeypad, &frmT3Connect::cmdVirtualKeypad_Click);
  onClick(fraOnLineFunctions->cmdNetworkDiagnostics, &frmT3Connect::cmdNetworkDiagnostics_Click);
  onClick(fraOnLineFunctions->cmdDownLoadToT2, &frmT3Connect::cmdDownLoadToT2_Click);
  onClick(fraOnLineFunctions->cmdSendChanges, &frmT3Connect::cmdSendChanges_Click);
  onClick(fraOnLineFunctions->cmdUpLoadFromT2, &frmT3Connect::cmdUpLoadFromT2_Click);
  PassWordFrame* passWord = fraOnLineFunctions->fraPassWord;
  passWord->chkChangePanelPassWord->Click = [this] { chkChangePanelPassWord_Click(); };
  onClick(passWord->cmdPassWordContinue, &frmT3Connect::cmdPassWordContinue_Click);
  onClick(passWord->cmdPassWordCancel, &frmT3Connect::cmdPassWordCancel_Click);
  onClick(fraOnLineFunctions->Progress->cmdCancelUpDownLoad,
          &frmT3Connect::cmdCancelUpDownLoad_Click);
  chkChangePanelPassWord_Click();
  download = std::make_unique<Download>(
      passWord, [this](const Download::Run& run) { return Transfer("Downloading", run); });
  fraOnLineFunctions->setVisible(false);
  column->addStretch(1);
  row->addWidget(onLine, 3);

  Timer1 = new Timer(this, "Timer1", 250);
  Timer1->Tick = [this] { Timer1_Timer(); };
  linked = true;
  Line.Stage = [this](LineStage stage) { line->ShowStage(stage); };
  Link.DisconnectQZ = [this] { DisconnectQZ(); };
  Link.PutsOffClose = [this] { return download->PutsOffClose(); };
  Link.MayLeave = [this] { return download->MayLeave(); };
  Link.ShowNetworkDiagnostics = [this](bool show) {
    fraOnLineFunctions->cmdNetworkDiagnostics->setVisible(show);
  };
  UpdateStatusBar();
}

void frmT3Connect::Form_Activate() {
  FindComPorts();
  line->SelectComPort();
  line->ShowConnectionType();
  line->ShowAddresses();
  fraOnLineFunctions->ShowErrorsOfProject();
  line->cmdSaveLog->setVisible(!FrameLogEmpty());
  if (Connected != 0) Timer1->SetEnabled(true);
}

void frmT3Connect::Form_Hide() {
  // A transfer among them would have put the on-line functions back at its end.
  if (ForgetRequests()) ReturnOnLine();
  Timer1->SetEnabled(false);
}

void frmT3Connect::Form_Unload() {
  Form_Hide();
  LetGo();
}

void frmT3Connect::LetGo() {
  Link = {};
  Line.Stage = nullptr;
  linked = false;
}

void frmT3Connect::FindComPorts() {
  if (Connected != 0) return;
  QString forbidden;  // of several the first: one remedy serves them all
  for (int i = 0; i < ComPortCount; ++i) {
    const QString port = ComPortName(i + 1);
    QString tip = PortDescription(port);
    PortPresent(i) = 0;
    try {
      comQZ().Open({.Port = port});
      comQZ().Close();
      PortPresent(i) = -1;
    } catch (const TransportFailure& failure) {
      // The port is not offered.
      if (PortExists(port)) tip = QString::fromUtf8(failure.what());
      if (forbidden.isEmpty() && PortForbidden(port)) forbidden = tip;
    }
    line->optComPort(i).setEnabled(PortPresent(i) != 0);
    line->optComPort(i).setToolTip(tip);
  }
  line->lblForbidden->setText(forbidden);
  line->lblForbidden->setVisible(!forbidden.isEmpty());
}

/// Connecting, or where the work goes on: the first of the functions that a panel offers.
QWidget* frmT3Connect::FirstFocus() {
  if (Connected == 0) return line->cmdConnect;
  return fraOnLineFunctions->cmdRefresh->isHidden() ? fraOnLineFunctions->cmdSetQZClock
                                                    : fraOnLineFunctions->cmdRefresh;
}

void frmT3Connect::chkConnectionType_MouseUp(int index) {
  ConnectionType() = static_cast<Int16>(index);
  line->lblTrouble->setText({});
  line->ShowConnectionType();
}

void frmT3Connect::optComPort_Click(int index) {
  line->lblTrouble->setText({});
  PanelRecord.ComPort = static_cast<Int16>(index + 1);
  UpdateStatusBar();
  DataChanged = -1;
}

void frmT3Connect::txtPhoneNumber_Change() {
  PhoneNumber() = FromUnicode(line->txtPhoneNumber->Text());
  DataChanged = -1;
}

void frmT3Connect::txtTCPIP_Change() {
  TcpAddress() = FromUnicode(line->txtTCPIP->Text());
  DataChanged = -1;
}
