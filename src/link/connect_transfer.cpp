#include <QCoreApplication>
#include <QScopeGuard>
#include <algorithm>
#include <utility>

#include "link/connect_form.h"
#include "link/panel_memory.h"
#include "link/panel_queue.h"
#include "link/panel_transact.h"
#include "link/transport.h"
#include "panel/code_page.h"
#include "panel/defaults.h"
#include "panel/hex.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/shell.h"

namespace {

// What comes of a transfer: these, or the number of an error that the user is told.
constexpr Int16 Complete = 0;
constexpr Int16 Cancelled = -1;
constexpr Int16 BlockNotWritten = 1;
constexpr Int16 SumDiffers = 2;
constexpr Int16 NoSum = 3;
constexpr Int16 BlockNotRead = 19;

const QString PanelHalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");
const QString DownloadCancelled = QStringLiteral("Manual Download Cancel.") + PanelHalfNew;

/// A block of zeros costs ten characters in place of 128.
std::string WriteCommand(int block) {
  const int address = block * ImageBlockSize;
  const auto* first = &PanelImage(address);
  if (std::all_of(first, first + ImageBlockSize, [](Int16 element) { return element == 0; })) {
    return "36" + HexWord(address) + HexWord(address + ImageBlockSize - 1);
  }
  std::string command = "30" + HexWord(address) + HexByte(ImageBlockSize - 1);
  for (int i = 0; i < ImageBlockSize; ++i) command += HexByte(PanelImage(address + i));
  return command;
}

/// What is left at the pace so far; nothing until there is a pace.
QString TimeLeft(qint64 elapsedMs, int block) {
  constexpr qint64 settledMs = 1000;
  if (elapsedMs < settledMs) return {};
  const auto seconds =
      static_cast<int>(elapsedMs * (ImageBlockCount - block) / std::max(block, 1) / 1000 + 1);
  return seconds < 60 ? QStringLiteral("About %1 s left").arg(seconds)
                      : QStringLiteral("About %1 min left").arg((seconds + 59) / 60);
}

}  // namespace

void frmT3Connect::MasterMDIMenuDisable() {
  DisableMainMenus();
  cmdCancelUpDownLoad->setVisible(true);
  transferTime.Restart();
  lblTimeLeft->SetCaption({});
  lblTimeLeft->setVisible(true);
  QCoreApplication::processEvents();
}

void frmT3Connect::MasterMDIMenuEnable() {
  EnableMainMenus();
  cmdCancelUpDownLoad->setVisible(false);
  lblTimeLeft->setVisible(false);
}

/// The other functions go off while the password or a transfer is under way.
void frmT3Connect::LeaveOnLine() {
  Timer1->SetEnabled(false);
  leftFrom = focusWidget();
  cmdUpLoadFromT2->setVisible(false);
  cmdDownLoadToT2->setVisible(false);
  lblErrors->setVisible(false);
  for (QWidget* control :
       {static_cast<QWidget*>(cmdConnect), static_cast<QWidget*>(cmdRefresh),
        static_cast<QWidget*>(cmdSetQZClock), static_cast<QWidget*>(cmdVirtualKeypad),
        static_cast<QWidget*>(cmdNetworkDiagnostics), static_cast<QWidget*>(lblPanelTime),
        static_cast<QWidget*>(lblPanelDate)}) {
    control->setEnabled(false);
  }
}

void frmT3Connect::ReturnOnLine() {
  fraPassWord->setVisible(false);
  lblActivityProgress->setVisible(false);
  pbActivityProgress->setVisible(false);
  cmdUpLoadFromT2->setVisible(true);
  cmdDownLoadToT2->setVisible(true);
  ShowErrorsOfProject();
  for (QWidget* control :
       {static_cast<QWidget*>(cmdConnect), static_cast<QWidget*>(cmdRefresh),
        static_cast<QWidget*>(cmdSetQZClock), static_cast<QWidget*>(cmdVirtualKeypad),
        static_cast<QWidget*>(cmdNetworkDiagnostics), static_cast<QWidget*>(lblPanelTime),
        static_cast<QWidget*>(lblPanelDate)}) {
    control->setEnabled(true);
  }
  if (Connected != 0) Timer1->SetEnabled(true);
  if (leftFrom && Connected != 0) leftFrom->setFocus();
  leftFrom = nullptr;
}

void frmT3Connect::ShowActivity(const QString& text) {
  lblActivityProgress->SetCaption(text);
  lblActivityProgress->setVisible(true);
  pbActivityProgress->setValue(0);
  pbActivityProgress->setVisible(true);
}

/// What stands there is right whenever a block has to wait for its reply; of those that pass at
/// once as many as an eye can follow.
void frmT3Connect::ShowProgress(const char* action, int block) {
  BeforeLongWait = [this, action, block] { ShowBlock(action, block); };
  const bool end = block == 1 || block == ImageBlockCount;
  if (!pictureDue && !end) return;
  progressShown.Restart();
  ShowBlock(action, block);
  lblActivityProgress->repaint();
}

void frmT3Connect::ShowBlock(const char* action, int block) {
  lblActivityProgress->SetCaption(QStringLiteral("%1 Block %2 Of %3")
                                      .arg(QLatin1String(action))
                                      .arg(block)
                                      .arg(ImageBlockCount));
  pbActivityProgress->setValue(block);
  lblTimeLeft->SetCaption(TimeLeft(transferTime.ElapsedMs(), block));
}

/// A user who closes the window while a block is under way is asked at the top of the next one.
bool frmT3Connect::PutsOffClose() {
  if (writing != Writing::Block) return false;
  closeAsked = true;
  return true;
}

void frmT3Connect::CloseWindowIfAsked() {
  if (std::exchange(closeAsked, false)) MainWindow()->close();
}

bool frmT3Connect::MayLeave() {
  return writing == Writing::Nothing ||
         MsgBox(DownloadCancelled + QStringLiteral("\nClose The Program?"), MsgIcon::Exclamation,
                QStringLiteral("Download"), MsgButtons::YesNo) == MsgAnswer::Yes;
}

void frmT3Connect::cmdCancelUpDownLoad_Click() {
  CancelRequested = -1;
}

/// Lets the click on Cancel arrive. Events and pictures come as often as an eye can follow: at
/// every block they would take as long as a network takes to carry it.
bool frmT3Connect::CancelPressed() {
  constexpr qint64 pictureMs = 10;
  pictureDue = progressShown.ElapsedMs() >= pictureMs;
  if (pictureDue) QCoreApplication::processEvents();
  return CancelRequested != 0;
}

void frmT3Connect::cmdDownLoadToT2_Click() {
  LeaveOnLine();
  chkChangePanelPassWord->SetValue(0);
  fraPassWord->setVisible(true);
  txtPassWord(0).setFocus();
}

void frmT3Connect::chkChangePanelPassWord_Click() {
  const bool change = chkChangePanelPassWord->Value() != 0;
  lblNewPassWord->setVisible(change);
  for (int i = 0; i < txtNewPassWord.Count(); ++i) txtNewPassWord(i).setVisible(change);
  if (change) txtNewPassWord(0).setFocus();
}

void frmT3Connect::cmdPassWordCancel_Click() {
  ReturnOnLine();
}

void frmT3Connect::cmdPassWordContinue_Click() {
  fraPassWord->setVisible(false);
  ShowActivity(QStringLiteral("Downloading Settings To Tamberloom 3"));
  AskPanel([this] {
    const auto end = qScopeGuard([this] {
      ReturnOnLine();
      CloseWindowIfAsked();
    });
    if (PassWordAccepted() && ChangePassWord()) DownLoadSettings();
  });
}

PasswordDigits frmT3Connect::PassWord() const {
  PasswordDigits digits{};
  for (int i = 0; i < txtPassWord.Count(); ++i) {
    digits[static_cast<std::size_t>(i)] = static_cast<Int16>(txtPassWord(i).Text().toInt());
  }
  return digits;
}

/// Compares here: a panel tells its password to any caller.
bool frmT3Connect::PassWordAccepted() {
  if (PanelTransact("311F7A05", 16, 4) == 0) {
    PanelConnectionLost();
    return false;
  }
  const PasswordDigits typed = PassWord();
  for (int i = 0; i < txtPassWord.Count(); ++i) {
    if (ReplyByte(2 + 2 * i) == typed[static_cast<std::size_t>(i)]) continue;
    MsgBox(QStringLiteral("Password Invalid.\nDownload Denied."), MsgIcon::Critical, ProgramTitle);
    return false;
  }
  return true;
}

bool frmT3Connect::ChangePassWord() {
  if (chkChangePanelPassWord->Value() == 0) return true;
  std::string command = "301F7A05";
  for (int i = 0; i < txtNewPassWord.Count(); ++i) {
    command += HexByte(txtNewPassWord(i).Text().toInt());
  }
  if (PanelTransact(command, 4, 4) == 0) {
    PanelConnectionLost();
    return false;
  }
  // The image takes the password from these boxes.
  for (int i = 0; i < txtPassWord.Count(); ++i) txtPassWord(i).SetText(txtNewPassWord(i).Text());
  return true;
}

void frmT3Connect::DownLoadSettings() {
  const Int16 outcome = SendImage();
  if (outcome == Complete) {
    MsgBox(QStringLiteral("Download Complete"), MsgIcon::None, QStringLiteral("Download"));
  } else if (outcome == Cancelled) {
    MsgBox(DownloadCancelled, MsgIcon::Exclamation, QStringLiteral("Download"));
  } else {
    MsgBox(QStringLiteral("Download Error: %1").arg(outcome) + PanelHalfNew, MsgIcon::Critical,
           QStringLiteral("Error"));
  }
}

Int16 frmT3Connect::SendImage() {
  MasterMDIMenuDisable();
  const auto menus = qScopeGuard([this] {
    BeforeLongWait = nullptr;
    writing = Writing::Nothing;
    MasterMDIMenuEnable();
  });
  CancelRequested = 0;
  BuildPanelImage(PassWord());
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    writing = Writing::TopOfBlock;
    CloseWindowIfAsked();
    if (CancelPressed()) return Cancelled;
    writing = Writing::Block;
    for (int i = 0; i < ImageBlockSize; ++i) sum.Add(PanelImage(block * ImageBlockSize + i));
    ShowProgress("Downloading", block + 1);
    if (PanelTransact(WriteCommand(block), 4, 4) == 0) return BlockNotWritten;
  }
  writing = Writing::Nothing;
  return CompareSums(sum.Value());
}

Int16 frmT3Connect::CompareSums(Int32 sum) {
  BeforeLongWait = nullptr;
  lblActivityProgress->SetCaption(QStringLiteral("Verify Checksum"));
  lblActivityProgress->repaint();
  const std::optional<Int32> panelSum = PanelMemorySum();
  if (!panelSum) return NoSum;
  return *panelSum == sum ? Complete : SumDiffers;
}

void frmT3Connect::cmdUpLoadFromT2_Click() {
  LeaveOnLine();
  ShowActivity(QStringLiteral("Uploading Settings From Tamberloom 3"));
  AskPanel([this] {
    const auto end = qScopeGuard([this] { ReturnOnLine(); });
    UploadAnswered();
  });
}

/// Asks what to do with the document in memory and with the names, then uploads.
void frmT3Connect::UploadAnswered() {
  const auto cancelled = [] {
    MsgBox(QStringLiteral("Upload Cancelled"), MsgIcon::None, ProgramTitle);
  };
  if (MsgBox(QStringLiteral("Discard All Host Changes?"), MsgIcon::Question, ProgramTitle,
             MsgButtons::YesNo) != MsgAnswer::Yes) {
    cancelled();
    return;
  }
  const Int16 changed = std::exchange(DataChanged, Int16{0});
  const MsgAnswer names =
      MsgBox(QStringLiteral(
                 "Names Stored In The Tamberloom 3 Panel Are Limited To Ten Characters.\n"
                 "By Uploading The Names From The Tamberloom 3, Any Longer Names Will Be Lost.\n"
                 "Do You Want To Include Tamberloom 3 Names In This Upload?"),
             MsgIcon::Question, ProgramTitle, MsgButtons::YesNoCancel);
  if (names == MsgAnswer::Cancel) {
    cancelled();
    return;
  }
  IncludeNamesInUpload = names == MsgAnswer::Yes ? -1 : 0;
  try {
    UpLoadSettings();
  } catch (const RunTimeFailure& failure) {
    DataChanged = changed;
    throw RunTimeFailure(std::string("The upload could not be taken over; the host's settings are "
                                     "as they were.\n") +
                         failure.what());
  }
  CheckLoadedData();
}

void frmT3Connect::UpLoadSettings() {
  const Int16 outcome = FetchImage();
  if (outcome == Complete) {
    MsgBox(QStringLiteral("Upload Complete"), MsgIcon::None, QStringLiteral("Upload"));
    return;
  }
  const QString cleared = QStringLiteral("\nAll Host Data Cleared.");
  if (outcome == Cancelled) {
    MsgBox(QStringLiteral("Manual Upload Cancel.") + cleared, MsgIcon::Exclamation,
           QStringLiteral("Upload"));
  } else {
    MsgBox(QStringLiteral("Upload Error: %1").arg(outcome) + cleared, MsgIcon::Critical,
           QStringLiteral("Error"));
  }
  ClearHostData(outcome == Cancelled);
}

/// The document is touched only once the sum agrees.
Int16 frmT3Connect::FetchImage() {
  MasterMDIMenuDisable();
  const auto menus = qScopeGuard([this] {
    BeforeLongWait = nullptr;
    MasterMDIMenuEnable();
  });
  CancelRequested = 0;
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    if (CancelPressed()) return Cancelled;
    if (!ReadPanelBlock(block, PanelImage, sum)) return BlockNotRead;
    ShowProgress("Uploading", block + 1);
  }
  const Int16 outcome = CompareSums(sum.Value());
  if (outcome == Complete) {
    ApplyPanelImage();
    DataChanged = -1;
  }
  return outcome;
}

/// New-panel defaults, and the connection's settings shown as they are then.
void frmT3Connect::ClearHostData(bool showPorts) {
  DisconnectQZ();
  LoadDefaults();
  FileNotInMemory = true;
  ForgetUnsavedWork();
  SelectComPort();
  for (int i = 0; i < chkConnectionType.Count(); ++i) chkConnectionType(i).ShowValue(i == 0);
  if (showPorts) {
    comPorts->setVisible(true);
  } else {
    ShowTrouble(QStringLiteral("Choose the connection again before you connect."));
  }
  txtPhoneNumber->SetText(ToUnicode(PhoneNumber()));
  txtTCPIP->SetText(ToUnicode(TcpAddress()));
}
