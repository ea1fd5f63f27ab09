#include <QCoreApplication>
#include <QScopeGuard>
#include <algorithm>
#include <utility>

#include "line/panel_commands.h"
#include "link/connect_form.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/shell.h"

namespace {

const QString PanelHalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");
const QString DownloadCancelled = QStringLiteral("Manual Download Cancel.") + PanelHalfNew;

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

/// The words and the bar tell the block under way; they are painted as often as an eye can follow.
void frmT3Connect::ShowBlock(const char* action, int block) {
  lblActivityProgress->SetCaption(QStringLiteral("%1 Block %2 Of %3")
                                      .arg(QLatin1String(action))
                                      .arg(block)
                                      .arg(ImageBlockCount));
  pbActivityProgress->setValue(block);
  const bool end = block == 1 || block == ImageBlockCount;
  if (!pictureDue && !end) return;
  progressShown.Restart();
  lblTimeLeft->SetCaption(TimeLeft(transferTime.ElapsedMs(), block));
  lblActivityProgress->repaint();
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

PasswordDigits frmT3Connect::DigitsOf(const ControlArray<TextBox>& boxes) {
  PasswordDigits digits{};
  for (int i = 0; i < boxes.Count(); ++i) {
    digits[static_cast<std::size_t>(i)] = static_cast<Int16>(boxes(i).Text().toInt());
  }
  return digits;
}

/// Compares here: a panel tells its password to any caller.
bool frmT3Connect::PassWordAccepted() {
  const std::optional<PasswordDigits> panels = ReadPassWord();
  if (!panels) {
    PanelConnectionLost();
    return false;
  }
  if (*panels == DigitsOf(txtPassWord)) return true;
  MsgBox(QStringLiteral("Password Invalid.\nDownload Denied."), MsgIcon::Critical, ProgramTitle);
  return false;
}

bool frmT3Connect::ChangePassWord() {
  if (chkChangePanelPassWord->Value() == 0) return true;
  if (!WritePassWord(DigitsOf(txtNewPassWord))) {
    PanelConnectionLost();
    return false;
  }
  // The image takes the password from these boxes.
  for (int i = 0; i < txtPassWord.Count(); ++i) txtPassWord(i).SetText(txtNewPassWord(i).Text());
  return true;
}

/// Runs a transfer with the menus locked and its progress on show.
TransferOutcome frmT3Connect::Transfer(
    const char* action, const std::function<TransferOutcome(const TransferWatch&)>& run) {
  MasterMDIMenuDisable();
  const auto menus = qScopeGuard([this] {
    writing = Writing::Nothing;
    MasterMDIMenuEnable();
  });
  CancelRequested = 0;
  return run({.Cancelled = [this] { return CancelPressed(); },
              .Block = [this, action](int block) { ShowBlock(action, block); },
              .Sum =
                  [this] {
                    writing = Writing::Nothing;
                    lblActivityProgress->SetCaption(QStringLiteral("Verify Checksum"));
                    lblActivityProgress->repaint();
                  }});
}

void frmT3Connect::DownLoadSettings() {
  const TransferOutcome outcome = Transfer("Downloading", [this](TransferWatch watch) {
    // A user who closes the window is asked between two blocks.
    watch.Cancelled = [this, pressed = watch.Cancelled] {
      writing = Writing::TopOfBlock;
      CloseWindowIfAsked();
      const bool cancelled = pressed();
      writing = Writing::Block;
      return cancelled;
    };
    BuildPanelImage(DigitsOf(txtPassWord));
    return SendImage(PanelImage, watch);
  });
  if (outcome == TransferOutcome::Complete) {
    MsgBox(QStringLiteral("Download Complete"), MsgIcon::None, QStringLiteral("Download"));
  } else if (outcome == TransferOutcome::Cancelled) {
    MsgBox(DownloadCancelled, MsgIcon::Exclamation, QStringLiteral("Download"));
  } else {
    MsgBox(QStringLiteral("Download Error: %1").arg(static_cast<int>(outcome)) + PanelHalfNew,
           MsgIcon::Critical, QStringLiteral("Error"));
  }
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

/// The document is touched only once the sum agrees.
void frmT3Connect::UpLoadSettings() {
  const TransferOutcome outcome = Transfer("Uploading", [](const TransferWatch& watch) {
    const TransferOutcome fetched = FetchImage(PanelImage, watch);
    if (fetched == TransferOutcome::Complete) {
      ApplyPanelImage();
      DataChanged = -1;
    }
    return fetched;
  });
  if (outcome == TransferOutcome::Complete) {
    MsgBox(QStringLiteral("Upload Complete"), MsgIcon::None, QStringLiteral("Upload"));
    return;
  }
  const QString cleared = QStringLiteral("\nAll Host Data Cleared.");
  const bool cancelled = outcome == TransferOutcome::Cancelled;
  if (cancelled) {
    MsgBox(QStringLiteral("Manual Upload Cancel.") + cleared, MsgIcon::Exclamation,
           QStringLiteral("Upload"));
  } else {
    MsgBox(QStringLiteral("Upload Error: %1").arg(static_cast<int>(outcome)) + cleared,
           MsgIcon::Critical, QStringLiteral("Error"));
  }
  ClearHostData(cancelled);
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
