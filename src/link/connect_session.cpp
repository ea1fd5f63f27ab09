#include <QEventLoop>
#include <QTimer>
#include <exception>

#include "link/connect_form.h"
#include "link/panel_queue.h"
#include "link/panel_transact.h"
#include "link/transport.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "shell/shell.h"

namespace {

constexpr quint16 PanelTcpPort = 10001;
constexpr int ModemResetMs = 1000;
constexpr int FirmwareLength = 40;

/// The modem's waits deliver no events. Before them an answered box must go and what it has covered
/// show again, which takes the window system some moments.
void LetWindowsSettle() {
  constexpr std::chrono::milliseconds moments(100);
  QEventLoop loop;
  QTimer::singleShot(moments, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

void frmT3Connect::cmdConnect_Click() {
  const auto connectOrDisconnect = [this] {
    ConnectionType() >= ConnectionTCP ? ConnectTCP() : ConnectSerial();
  };
  // To end a session does not wait for a request that is under way.
  Connected != 0 ? connectOrDisconnect() : AskPanel(connectOrDisconnect);
}

void frmT3Connect::ConnectSerial() {
  cmdRefresh->setVisible(false);
  lblReadAt->setVisible(false);
  constexpr std::size_t shortestNumber = 7;
  if (Connected == 0 && ConnectionType() == ConnectionModem &&
      PhoneNumber().size() < shortestNumber) {
    MsgBox(QStringLiteral("A Valid Phone Number Must Entered"), MsgIcon::Information, ProgramTitle);
    return;
  }
  ConnectWith(ConnectionType() == ConnectionUSB ? &frmT3Connect::OpenSerial
                                                : &frmT3Connect::OpenModem);
}

void frmT3Connect::ConnectTCP() {
  cmdRefresh->setVisible(true);
  lblReadAt->setVisible(true);
  ConnectWith(&frmT3Connect::OpenSocket);
}

/// The course of both: `open` brings the transport up and throws when it cannot.
void frmT3Connect::ConnectWith(void (frmT3Connect::*open)()) {
  ShowTrouble({});
  if (Connected != 0) {
    DisconnectQZ();
  } else {
    // The transactions refuse to run without it.
    Connected = -1;
    cmdConnect->setEnabled(false);
    try {
      (this->*open)();
    } catch (const std::exception& failure) {
      ConnectFailed(QString::fromUtf8(failure.what()));
      return;
    }
    if (Connected != 0) {
      if (ConnectionType() < ConnectionTCP) Timer1->SetEnabled(true);
      cmdConnect->SetCaption(QStringLiteral("Disconnect From Tamberloom 3"));
      ShowSettingsEnabled(false);
      SelectComPort();
      lblOffLine->setVisible(false);
      fraOnLineFunctions->setVisible(true);
    }
  }
  UpdateStatusBar();
  cmdConnect->setEnabled(true);
  FirstFocus()->setFocus();
}

/// Connecting, or where the work goes on: the first of the functions that a panel offers.
QWidget* frmT3Connect::FirstFocus() {
  if (Connected == 0) return cmdConnect;
  return cmdRefresh->isHidden() ? cmdSetQZClock : cmdRefresh;
}

void frmT3Connect::ConnectFailed(const QString& trouble) {
  DisconnectQZ();
  ShowTrouble(trouble);
  MsgBox(QStringLiteral("Connection Failed."), MsgIcon::Exclamation, ProgramTitle);
  CloseTransports();
  Connected = 0;
  cmdConnect->setEnabled(true);
  lblModem->setVisible(false);
  cmdConnect->setFocus();
}

void frmT3Connect::OpenSerial() {
  comQZ().SetCommPort(PanelRecord.ComPort);
  comQZ().SetSettings("115200,n,8,1");
  comQZ().SetPortOpen(true);
  comQZ().SetRTSEnable(true);
  comQZ().SetDTREnable(true);
  ReadFirmware(QStringLiteral("No panel answers at COM%1 (%2). Check the cable, the panel's power "
                              "and the number of the port.")
                   .arg(PanelRecord.ComPort)
                   .arg(ComPortDevice(PanelRecord.ComPort)));
}

void frmT3Connect::OpenModem() {
  ShowModemBanner(QStringLiteral("Reset Modem....."), Colors::Yellow);
  comQZ().SetCommPort(PanelRecord.ComPort);
  comQZ().SetSettings("9600,n,8,1");
  comQZ().SetPortOpen(true);
  comQZ().SetRTSEnable(true);
  comQZ().SetDTREnable(false);
  Pause(ModemResetMs);
  comQZ().SetDTREnable(true);
  // Longer than the echo and "OK", so that the time-out is the modem's time to settle.
  ModemTransact("ATZ\r", 20, 5);
  ShowModemBanner(QStringLiteral("Modem Connecting......."), Colors::Yellow);
  if (!ModemTransact("ATDT " + PhoneNumber() + "\r", 30, 40)) {
    throw TransportFailure(
        QStringLiteral("The modem at COM%1 (%2) reached nobody. Check the telephone number, the "
                       "modem and the line.")
            .arg(PanelRecord.ComPort)
            .arg(ComPortDevice(PanelRecord.ComPort)));
  }
  lblModem->setVisible(false);
  MsgBox(QStringLiteral("Modem Connected"), MsgIcon::None, ProgramTitle);
  ModemHangUpRequired = -1;
  LetWindowsSettle();
  constexpr int callSettlesMs = 3000;
  Pause(callSettlesMs);
  lblModem->setVisible(false);
  ReadFirmware(QStringLiteral("The call is answered, but not by a panel."));
}

void frmT3Connect::OpenSocket() {
  constexpr int openTimeoutMs = 5000;
  const QString host = txtTCPIP->Text();
  const Stopwatch stopwatch;
  WinSockQZ().SetLocalPort(0);
  WinSockQZ().SetRemoteHost(host);
  WinSockQZ().SetRemotePort(PanelTcpPort);
  WinSockQZ().Connect();
  const auto underWay = [] {
    const int state = WinSockQZ().State();
    return state == SocketControl::Resolving || state == SocketControl::Connecting;
  };
  qint64 left = openTimeoutMs;
  for (; left > 0 && underWay(); left = openTimeoutMs - stopwatch.ElapsedMs()) {
    WinSockQZ().Wait(1, left);
  }
  if (left <= 0 || WinSockQZ().State() != SocketControl::Up) {
    throw TransportFailure(
        host.isEmpty()
            ? QStringLiteral("Enter the panel's TCP/IP address.")
            : QStringLiteral("Nobody answers at %1, port %2. Check the address, the network and "
                             "the panel's power.")
                  .arg(host)
                  .arg(PanelTcpPort));
  }
  ReadFirmware(QStringLiteral("%1 takes the call, but does not answer like a panel.").arg(host));
  ReadQZStatus();
}

void frmT3Connect::ReadFirmware(const QString& trouble) {
  if (PanelTransact("05", 44, 3) == 0) throw TransportFailure(trouble);
  PanelFirmwareText = ReplyMid(2, FirmwareLength);
  ShowRevLabels();
}

void frmT3Connect::DisconnectQZ() {
  Timer1->SetEnabled(false);
  HardwareChecked = 0;
  ForgetRequests();
  if (ConnectionType() == ConnectionModem || ModemHangUpRequired == -1) HangUp();
  CloseTransports();
  Connected = 0;
  cmdConnect->SetCaption(QStringLiteral("Connect To Tamberloom 3"));
  ShowSettingsEnabled(true);
  fraOnLineFunctions->setVisible(false);
  lblOffLine->setVisible(true);
  ReturnOnLine();
  for (int i = 0; i < txtPassWord.Count(); ++i) {
    txtPassWord(i).SetText(QStringLiteral("0"));
    txtNewPassWord(i).SetText(QStringLiteral("0"));
  }
  UpdateStatusBar();
}

void frmT3Connect::HangUp() {
  // Without a line there is nothing to hang up.
  if (Connected != 0 || comQZ().PortOpen()) {
    ShowModemBanner(QStringLiteral("Disconnecting Modem"), Colors::Red);
    ModemTransact("[%%%%%", 50, 3);
    ModemTransact("ATZ", 50, 3);
    comQZ().SetDTREnable(false);
    Pause(ModemResetMs);
    comQZ().SetDTREnable(true);
  }
  ModemHangUpRequired = 0;
  lblModem->setVisible(false);
}

void frmT3Connect::CloseTransports() {
  comQZ().SetRTSEnable(false);
  if (comQZ().PortOpen()) comQZ().SetPortOpen(false);
  CloseSocket();
}

void frmT3Connect::ShowModemBanner(const QString& text, QRgb color) {
  lblModem->SetCaption(text);
  lblModem->SetBackColor(color);
  lblModem->setVisible(true);
  LetWindowsSettle();
}

void frmT3Connect::ShowTrouble(const QString& text) {
  lblTrouble->setText(text);
}
