#include <QCoreApplication>
#include <QScopeGuard>
#include <utility>

#include "line/known_memory.h"
#include "line/panel_commands.h"
#include "line/session.h"
#include "link/connect_form.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/shell.h"

namespace {

const QString PanelHalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");
const QString DownloadCancelled = QStringLiteral("Manual Download Cancel.") + PanelHalfNew;

}  // namespace

void frmT3Connect::MasterMDIMenuDisable() {
  DisableMainMenus();
  fraOnLineFunctions->Progress->Begin();
  QCoreApplication::processEvents();
}

void frmT3Connect::MasterMDIMenuEnable() {
  EnableMainMenus();
  fraOnLineFunctions->Progress->End();
}

/// The other functions go off while the password or a transfer is under way.
void frmT3Connect::LeaveOnLine() {
  Timer1->SetEnabled(false);
  leftFrom = focusWidget();
  fraOnLineFunctions->EnableFunctions(false);
  line->cmdConnect->setEnabled(false);
}

void frmT3Connect::ReturnOnLine() {
  fraOnLineFunctions->fraPassWord->setVisible(false);
  fraOnLineFunctions->Progress->Hide();
  fraOnLineFunctions->EnableFunctions(true);
  line->cmdConnect->setEnabled(true);
  if (Connected != 0) Timer1->SetEnabled(true);
  if (leftFrom && Connected != 0) leftFrom->setFocus();
  leftFrom = nullptr;
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

void frmT3Connect::cmdDownLoadToT2_Click() {
  AskPassWord(false);
}

void frmT3Connect::cmdSendChanges_Click() {
  AskPassWord(true);
}

void frmT3Connect::AskPassWord(bool forChangesAlone) {
  changesAlone = forChangesAlone;
  LeaveOnLine();
  PassWordFrame* passWord = fraOnLineFunctions->fraPassWord;
  passWord->chkChangePanelPassWord->SetValue(0);
  passWord->setVisible(true);
  passWord->txtPassWord(0).setFocus();
}

void frmT3Connect::chkChangePanelPassWord_Click() {
  PassWordFrame* passWord = fraOnLineFunctions->fraPassWord;
  passWord->ShowNewPassWord(passWord->chkChangePanelPassWord->Value() != 0);
}

void frmT3Connect::cmdPassWordCancel_Click() {
  ReturnOnLine();
}

void frmT3Connect::cmdPassWordContinue_Click() {
  fraOnLineFunctions->fraPassWord->setVisible(false);
  fraOnLineFunctions->Progress->Show(QStringLiteral("Downloading Settings To Tamberloom 3"));
  AskPanel([this] {
    const auto end = qScopeGuard([this] {
      ReturnOnLine();
      CloseWindowIfAsked();
      if (!std::exchange(goesToDocument, false)) return;
      UnloadAllForms();
      ShowForm(Screen::Document);
    });
    if (!PassWordAccepted()) return;
    if (changesAlone) {
      SendChangedSettings();
    } else if (ChangePassWord()) {
      DownLoadSettings();
    }
  });
}

/// Compares here: a panel tells its password to any caller.
bool frmT3Connect::PassWordAccepted() {
  const std::optional<PasswordDigits> panels = ReadPassWord();
  if (!panels) {
    PanelConnectionLost();
    return false;
  }
  if (*panels == fraOnLineFunctions->fraPassWord->Current()) return true;
  MsgBox(QStringLiteral("Password Invalid.\nDownload Denied."), MsgIcon::Critical, ProgramTitle);
  return false;
}

bool frmT3Connect::ChangePassWord() {
  PassWordFrame* passWord = fraOnLineFunctions->fraPassWord;
  if (passWord->chkChangePanelPassWord->Value() == 0) return true;
  if (!WritePassWord(passWord->New())) {
    PanelConnectionLost();
    return false;
  }
  // The image takes the password from these boxes.
  passWord->AdoptNew();
  return true;
}

/// Runs a transfer with the menus locked.
TransferOutcome frmT3Connect::Transfer(const std::function<TransferOutcome()>& run) {
  MasterMDIMenuDisable();
  const auto end = qScopeGuard([this] {
    writing = Writing::Nothing;
    MasterMDIMenuEnable();
  });
  CancelRequested = 0;
  return run();
}

/// A user who closes the window is asked between two blocks.
TransferWatch frmT3Connect::DownloadWatch() {
  TransferWatch watch = fraOnLineFunctions->Progress->Watch("Downloading", CancelRequested);
  watch.Cancelled = [this, shown = watch.Cancelled] {
    writing = Writing::TopOfBlock;
    CloseWindowIfAsked();
    const bool cancelled = shown();
    writing = Writing::Block;
    return cancelled;
  };
  watch.Sum = [this, shown = watch.Sum] {
    writing = Writing::Nothing;
    shown();
  };
  return watch;
}

void frmT3Connect::DownLoadSettings() {
  const TransferOutcome outcome = Transfer([this] {
    BuildPanelImage(fraOnLineFunctions->fraPassWord->Current());
    return SendImage(PanelImage, DownloadWatch());
  });
  ShowDownloaded(outcome);
}

void frmT3Connect::ShowDownloaded(TransferOutcome outcome) {
  if (outcome == TransferOutcome::Complete) {
    MsgBox(QStringLiteral("Download Complete"), MsgIcon::None, QStringLiteral("Download"));
  } else if (outcome == TransferOutcome::Cancelled) {
    MsgBox(DownloadCancelled, MsgIcon::Exclamation, QStringLiteral("Download"));
  } else {
    MsgBox(QStringLiteral("Download Error: %1").arg(static_cast<int>(outcome)) + PanelHalfNew,
           MsgIcon::Critical, QStringLiteral("Error"));
  }
}

/// A new password is written once the panel has told that it holds what is known of it.
void frmT3Connect::SendChangedSettings() {
  const auto known = KnownMemory(OpenedPanel());
  if (!known) {
    AskInsteadOfChanges(
        QStringLiteral("What This Panel Holds Is Not Known: It Has Not Been Downloaded To Or "
                       "Uploaded From Here."));
    return;
  }
  PassWordFrame* passWord = fraOnLineFunctions->fraPassWord;
  const PasswordDigits current = passWord->Current();
  const bool newPassWord = passWord->chkChangePanelPassWord->Value() != 0;
  const TransferOutcome outcome = Transfer([&] {
    BuildPanelImage(newPassWord ? passWord->New() : current);
    return SendChanges(*known, current, PanelImage, DownloadWatch());
  });
  switch (outcome) {
    case TransferOutcome::HoldsSomethingElse:
      AskInsteadOfChanges(QStringLiteral(
          "The Panel Holds Something Else Than Was Last Downloaded Or Uploaded Here."));
      return;
    case TransferOutcome::NothingChanged:
      MsgBox(QStringLiteral("Nothing Has Changed Since The Last Download Or Upload."),
             MsgIcon::None, QStringLiteral("Download"));
      return;
    case TransferOutcome::NotAnswered:
      PanelConnectionLost();
      return;
    default:
      if (newPassWord) passWord->AdoptNew();
      ShowDownloaded(outcome);
  }
}

/// Nothing has been written.
void frmT3Connect::AskInsteadOfChanges(const QString& why) {
  const MsgAnswer answer =
      MsgBox(why + QStringLiteral("\nNothing Was Written.\n\nDownload All Settings?\n\nNo goes to "
                                  "Document, where Compare With Panel tells what differs."),
             MsgIcon::Question, QStringLiteral("Download"), MsgButtons::YesNoCancel);
  if (answer == MsgAnswer::No) goesToDocument = true;
  if (answer == MsgAnswer::Yes && ChangePassWord()) DownLoadSettings();
}

void frmT3Connect::cmdUpLoadFromT2_Click() {
  LeaveOnLine();
  fraOnLineFunctions->Progress->Show(QStringLiteral("Uploading Settings From Tamberloom 3"));
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
  const TransferOutcome outcome = Transfer([this] {
    const TransferOutcome fetched =
        FetchImage(PanelImage, fraOnLineFunctions->Progress->Watch("Uploading", CancelRequested));
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
  // New-panel defaults, and the connection's settings shown as they are then.
  DisconnectQZ();
  LoadDefaults();
  FileNotInMemory = true;
  ForgetUnsavedWork();
  line->ShowDefaults(cancelled);
}
