#pragma once

#include <QPointer>
#include <memory>

#include "link/download.h"
#include "link/line_frame.h"
#include "link/on_line_frame.h"
#include "shell/controls/child_form.h"

/// The connection screen: brings the link up and down, and reaches everything that needs a live
/// panel. It stays loaded, with the session, when another screen comes to the front.
class frmT3Connect : public ChildForm {
 public:
  frmT3Connect();
  ~frmT3Connect() override;
  bool StaysLoaded() const override { return true; }

  void Form_Load() override;
  void Form_Activate() override;
  QWidget* FirstFocus() override;
  void Form_Hide() override;
  void Form_Unload() override;

  /// Tries which of the sixteen ports can be opened, unless a link is up.
  void FindComPorts();
  /// The menus go off and the cancel button comes while the project is in transit.
  void MasterMDIMenuDisable();
  void MasterMDIMenuEnable();
  void LoadRevLabels();
  void ShowRevLabels();
  /// Ends the session, if there is one.
  void DisconnectQZ();
  /// Start a session, or end the one that is up.
  void ConnectSerial();
  void ConnectTCP();
  void DownLoadSettings();
  void UpLoadSettings();
  void ReadQZStatus();

  void chkConnectionType_MouseUp(int index);
  void optComPort_Click(int index);
  void txtPhoneNumber_Change();
  void txtTCPIP_Change();
  void cmdConnect_Click();
  void cmdSaveLog_Click();
  void cmdRefresh_Click();
  void cmdNetworkDiagnostics_Click();
  void cmdVirtualKeypad_Click();
  void cmdSetQZClock_Click();
  void cmdDownLoadToT2_Click();
  void cmdSendChanges_Click();
  void cmdUpLoadFromT2_Click();
  void cmdCancelUpDownLoad_Click();
  void chkChangePanelPassWord_Click();
  void cmdPassWordContinue_Click();
  void cmdPassWordCancel_Click();
  void Timer1_Timer();

 private:
  /// The hooks of the line and the link are no longer this screen's.
  void LetGo();
  void ConnectOrDisconnect();
  void ConnectFailed(const QString& trouble);
  void CheckHardware(Int16 cardType);

  void LeaveOnLine();
  void ReturnOnLine();
  TransferOutcome Transfer(const char* action, const Download::Run& run);
  void UploadAnswered();

  std::string PanelFirmwareText;
  Int16 CancelRequested = 0;
  FixedArray<Int16, ComPortCount + 1> PortPresent;
  Int16 HardwareChecked = 0;
  Timer* Timer1 = nullptr;

  LineFrame* line = nullptr;
  QLabel* lblOffLine = nullptr;
  OnLineFrame* fraOnLineFunctions = nullptr;
  QPointer<QWidget> leftFrom;  ///< The function that the password or a transfer belongs to.
  std::unique_ptr<Download> download;
  bool linked = false;  ///< The hooks of the link are this screen's.
};
