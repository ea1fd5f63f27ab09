#pragma once

#include <QLabel>
#include <QPointer>
#include <QProgressBar>

#include "line/com_port.h"
#include "line/line_hooks.h"
#include "line/panel_replies.h"
#include "line/transfer.h"
#include "line/transport.h"
#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "panel/stopwatch.h"
#include "shell/controls/accessible_controls.h"
#include "shell/controls/child_form.h"

/// How many errors the check finds in the project, told before a download and forbidding nothing.
/// Empty where no check is known.
extern std::function<int()> ErrorsOfProject;

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
  void cmdRefresh_Click();
  void cmdNetworkDiagnostics_Click();
  void cmdVirtualKeypad_Click();
  void cmdSetQZClock_Click();
  void cmdDownLoadToT2_Click();
  void cmdUpLoadFromT2_Click();
  void cmdCancelUpDownLoad_Click();
  void chkChangePanelPassWord_Click();
  void cmdPassWordContinue_Click();
  void cmdPassWordCancel_Click();
  void Timer1_Timer();

 private:
  QWidget* BuildSettings();
  void BuildOnLineFunctions(QGroupBox* frame);
  void BuildPassWord(QGroupBox* frame);
  void AddDigits(ControlArray<TextBox>& boxes, const char* name, const QString& which,
                 QHBoxLayout* row);
  void ShowConnectionType();
  void SelectComPort();
  void ShowSettingsEnabled(bool enabled);

  void ConnectOrDisconnect();
  void ConnectFailed(const QString& trouble);
  void ShowStage(LineStage stage);
  void ShowModemBanner(const QString& text, QRgb color);
  void ShowTrouble(const QString& text);

  void LeaveOnLine();
  void ReturnOnLine();
  void ShowErrorsOfProject();
  void ShowActivity(const QString& text);
  void ShowBlock(const char* action, int block);
  bool CancelPressed();
  bool PutsOffClose();
  bool MayLeave();
  void CloseWindowIfAsked();
  static PasswordDigits DigitsOf(const ControlArray<TextBox>& boxes);
  bool PassWordAccepted();
  bool ChangePassWord();
  TransferOutcome Transfer(const char* action,
                           const std::function<TransferOutcome(const TransferWatch&)>& run);
  void UploadAnswered();
  void ClearHostData(bool showPorts);
  void CheckHardware(Int16 cardType);

  std::string PanelFirmwareText;
  Int16 CancelRequested = 0;
  enum class Writing { Nothing, TopOfBlock, Block } writing = Writing::Nothing;
  bool linked = false;      ///< The hooks of the link are this screen's.
  bool closeAsked = false;  ///< While a block was under way.
  Stopwatch progressShown;
  bool pictureDue = false;
  QPointer<QWidget> leftFrom;  ///< The function that the password or a transfer belongs to.
  FixedArray<Int16, ComPortCount + 1> PortPresent;
  Int16 HardwareChecked = 0;

  ControlArray<CheckBox> chkConnectionType;
  ControlArray<OptionButton> optComPort;
  QWidget* comPorts = nullptr;
  Label* lblPhoneNumber = nullptr;
  TextBox* txtPhoneNumber = nullptr;
  Label* lblTCPIP = nullptr;
  TextBox* txtTCPIP = nullptr;
  Button* cmdConnect = nullptr;
  Label* lblModem = nullptr;
  QLabel* lblTrouble = nullptr;
  Timer* Timer1 = nullptr;

  QLabel* lblOffLine = nullptr;
  QGroupBox* fraOnLineFunctions = nullptr;
  DescribedWidget* display = nullptr;
  ControlArray<Label> lblT2FirmwareRevision;
  Label* lblPanelTime = nullptr;
  Label* lblPanelDate = nullptr;
  QString weekday;  ///< In front of the panel's date; a weekday that is none leaves it.
  Label* lblIOInstalled = nullptr;
  Label* lblAddOnCardTypeRev = nullptr;
  Button* cmdRefresh = nullptr;
  Label* lblReadAt = nullptr;
  Button* cmdNetworkDiagnostics = nullptr;
  Button* cmdVirtualKeypad = nullptr;
  Button* cmdSetQZClock = nullptr;
  Button* cmdDownLoadToT2 = nullptr;
  Button* cmdUpLoadFromT2 = nullptr;
  Button* cmdCancelUpDownLoad = nullptr;
  Label* lblActivityProgress = nullptr;
  QProgressBar* pbActivityProgress = nullptr;
  Label* lblErrors = nullptr;
  Label* lblTimeLeft = nullptr;
  Stopwatch transferTime;

  QGroupBox* fraPassWord = nullptr;
  ControlArray<TextBox> txtPassWord;
  ControlArray<TextBox> txtNewPassWord;
  Label* lblNewPassWord = nullptr;
  CheckBox* chkChangePanelPassWord = nullptr;
  Button* cmdPassWordContinue = nullptr;
  Button* cmdPassWordCancel = nullptr;
};
