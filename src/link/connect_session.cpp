#include <QEventLoop>
#include <QTimer>
#include <exception>

#include "line/session.h"
#include "link/connect_form.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/shell.h"

namespace {

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
  ConnectOrDisconnect();
}

void frmT3Connect::ConnectTCP() {
  cmdRefresh->setVisible(true);
  lblReadAt->setVisible(true);
  ConnectOrDisconnect();
}

/// The course of both.
void frmT3Connect::ConnectOrDisconnect() {
  ShowTrouble({});
  if (Connected != 0) {
    DisconnectQZ();
  } else {
    cmdConnect->setEnabled(false);
    try {
      PanelFirmwareText = ConnectPanel(ConnectionType(), {.Port = ComPortName(PanelRecord.ComPort),
                                                          .PhoneNumber = PhoneNumber(),
                                                          .Host = txtTCPIP->Text()});
      ShowRevLabels();
      if (ConnectionType() >= ConnectionTCP) ReadQZStatus();
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

void frmT3Connect::DisconnectQZ() {
  Timer1->SetEnabled(false);
  HardwareChecked = 0;
  ForgetRequests();
  DisconnectPanel();
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

void frmT3Connect::ShowStage(LineStage stage) {
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

void frmT3Connect::ShowModemBanner(const QString& text, QRgb color) {
  lblModem->SetCaption(text);
  lblModem->SetBackColor(color);
  lblModem->setVisible(true);
  LetWindowsSettle();
}

void frmT3Connect::ShowTrouble(const QString& text) {
  lblTrouble->setText(text);
}
