#include <exception>

#include "line/frame_log.h"
#include "line/session.h"
#include "link/connect_form.h"
#include "link/panel_queue.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/replace_file.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

void frmT3Connect::cmdConnect_Click() {
  const auto connectOrDisconnect = [this] {
    ConnectionType() >= ConnectionTCP ? ConnectTCP() : ConnectSerial();
  };
  // To end a session does not wait for a request that is under way.
  Connected != 0 ? connectOrDisconnect() : AskPanel(connectOrDisconnect);
}

void frmT3Connect::ConnectSerial() {
  fraOnLineFunctions->cmdRefresh->setVisible(false);
  fraOnLineFunctions->lblReadAt->setVisible(false);
  constexpr std::size_t shortestNumber = 7;
  if (Connected == 0 && ConnectionType() == ConnectionModem &&
      PhoneNumber().size() < shortestNumber) {
    MsgBox(QStringLiteral("A Valid Phone Number Must Entered"), MsgIcon::Information, ProgramTitle);
    return;
  }
  ConnectOrDisconnect();
}

void frmT3Connect::ConnectTCP() {
  fraOnLineFunctions->cmdRefresh->setVisible(true);
  fraOnLineFunctions->lblReadAt->setVisible(true);
  ConnectOrDisconnect();
}

/// The course of both.
void frmT3Connect::ConnectOrDisconnect() {
  line->lblTrouble->setText({});
  if (Connected != 0) {
    DisconnectQZ();
  } else {
    line->cmdConnect->clearFocus();  // else it would go on to a button that undoes
    line->cmdConnect->setEnabled(false);
    try {
      PanelFirmwareText = ConnectPanel(ConnectionType(), {.Port = ComPortName(PanelRecord.ComPort),
                                                          .PhoneNumber = PhoneNumber(),
                                                          .Host = line->txtTCPIP->Text()});
      ShowRevLabels();
      fraOnLineFunctions->ForgetClockSet();
      if (ConnectionType() >= ConnectionTCP) ReadQZStatus();
    } catch (const std::exception& failure) {
      ConnectFailed(QString::fromUtf8(failure.what()));
      return;
    }
    if (Connected != 0) {
      line->RememberWhere();
      if (ConnectionType() < ConnectionTCP) Timer1->SetEnabled(true);
      line->cmdConnect->SetCaption(QStringLiteral("Disconnect From Tamberloom 3"));
      line->ShowEnabled(false, PortPresent);
      line->SelectComPort();
      lblOffLine->setVisible(false);
      fraOnLineFunctions->setVisible(true);
    }
  }
  UpdateStatusBar();
  line->cmdSaveLog->setVisible(!FrameLogEmpty());
  line->cmdConnect->setEnabled(true);
  FirstFocus()->setFocus();
}

void frmT3Connect::cmdSaveLog_Click() {
  const QString name =
      FileDialog({FileRequest::Kind::Save, QStringLiteral("Text (*.TXT)|*.TXT|All Files (*.*)|*.*"),
                  DataPath(QStringLiteral("Documentation/*.TXT")), QStringLiteral("txt"),
                  QStringLiteral("Save Log")});
  if (name.isEmpty()) return;
  ReplaceFile(name, FrameLogText().toStdString(), Saving::Aside, Readers::OwnerAlone);
  TellNews(QStringLiteral("The log is written."));
}

void frmT3Connect::ConnectFailed(const QString& trouble) {
  DisconnectQZ();
  line->cmdSaveLog->setVisible(!FrameLogEmpty());
  line->lblTrouble->setText(trouble);
  MsgBox(QStringLiteral("Connection Failed."), MsgIcon::Exclamation, ProgramTitle);
  CloseTransports();
  Connected = 0;
  line->cmdConnect->setEnabled(true);
  line->lblModem->setVisible(false);
  line->cmdConnect->setFocus();
}

void frmT3Connect::DisconnectQZ() {
  Timer1->SetEnabled(false);
  // What was told of the panel's state holds until a session has come and gone.
  if (!fraOnLineFunctions->isHidden()) line->lblLeft->setVisible(false);
  HardwareChecked = 0;
  ForgetRequests();
  DisconnectPanel();
  line->cmdConnect->SetCaption(QStringLiteral("Connect To Tamberloom 3"));
  line->ShowEnabled(true, PortPresent);
  fraOnLineFunctions->setVisible(false);
  lblOffLine->setVisible(true);
  ReturnOnLine();
  fraOnLineFunctions->fraPassWord->Clear();
  UpdateStatusBar();
}
