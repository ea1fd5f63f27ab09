#include "link/download.h"

#include <QScopeGuard>
#include <utility>

#include "line/com_port.h"
#include "line/known_memory.h"
#include "line/panel_commands.h"
#include "line/session.h"
#include "link/panel_link.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/remembered.h"
#include "panel/stopwatch.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

namespace {

const QString PanelHalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");
const QString DownloadCancelled = QStringLiteral("Manual Download Cancel.") + PanelHalfNew;

/// Where the panel is, as people say it.
QString PanelPlace() {
  switch (ConnectionType()) {
    case ConnectionUSB:
      return ComPortName(PanelRecord.ComPort);
    case ConnectionModem:
      return ToUnicode(PhoneNumber());
    default:
      return ToUnicode(TcpAddress());
  }
}

void ShowOutcome(TransferOutcome outcome) {
  if (outcome == TransferOutcome::Complete) {
    if (CurrentFileName != NoFileName) RememberSent(CurrentFileName, Now(), PanelPlace());
    MsgBox(QStringLiteral("Download Complete"), MsgIcon::None, QStringLiteral("Download"));
  } else if (outcome == TransferOutcome::Cancelled) {
    MsgBox(DownloadCancelled, MsgIcon::Exclamation, QStringLiteral("Download"));
  } else {
    MsgBox(QStringLiteral("Download Error: %1").arg(static_cast<int>(outcome)) + PanelHalfNew,
           MsgIcon::Critical, QStringLiteral("Error"));
  }
}

}  // namespace

Download::Download(PassWordFrame* passWord, std::function<TransferOutcome(const Run&)> transfer)
    : passWord_(passWord), transfer_(std::move(transfer)) {}

void Download::AskPassWord(bool changesAlone) {
  changesAlone_ = changesAlone;
  passWord_->chkChangePanelPassWord->SetValue(0);
  passWord_->setVisible(true);
  passWord_->txtPassWord(0).setFocus();
}

bool Download::Send() {
  if (!PassWordAccepted()) return false;
  if (changesAlone_) return SendChanged();
  if (ChangePassWord()) SendAll();
  return false;
}

/// Compares here: a panel tells its password to any caller.
bool Download::PassWordAccepted() {
  const std::optional<PasswordDigits> panels = ReadPassWord();
  if (!panels) {
    PanelConnectionLost();
    return false;
  }
  if (*panels == passWord_->Current()) return true;
  MsgBox(QStringLiteral("Password Invalid.\nDownload Denied."), MsgIcon::Critical, ProgramTitle);
  return false;
}

bool Download::ChangePassWord() {
  if (passWord_->chkChangePanelPassWord->Value() == 0) return true;
  if (!WritePassWord(passWord_->New())) {
    PanelConnectionLost();
    return false;
  }
  // The image takes the password from these boxes.
  passWord_->AdoptNew();
  return true;
}

void Download::SendAll() {
  ShowOutcome(Transfer([this](const TransferWatch& watch) {
    BuildPanelImage(passWord_->Current());
    return SendImage(PanelImage, watch);
  }));
}

/// A new password is written once the panel has told that it holds what is known of it.
bool Download::SendChanged() {
  const auto known = KnownMemory(OpenedPanel());
  if (!known) {
    return AskInstead(
        QStringLiteral("What This Panel Holds Is Not Known: It Has Not Been Downloaded To Or "
                       "Uploaded From Here."));
  }
  const PasswordDigits current = passWord_->Current();
  const bool newPassWord = passWord_->chkChangePanelPassWord->Value() != 0;
  const TransferOutcome outcome = Transfer([&](const TransferWatch& watch) {
    BuildPanelImage(newPassWord ? passWord_->New() : current);
    return SendChanges(*known, current, PanelImage, watch);
  });
  switch (outcome) {
    case TransferOutcome::HoldsSomethingElse:
      return AskInstead(QStringLiteral(
          "The Panel Holds Something Else Than Was Last Downloaded Or Uploaded Here."));
    case TransferOutcome::NothingChanged:
      MsgBox(QStringLiteral("Nothing Has Changed Since The Last Download Or Upload."),
             MsgIcon::None, QStringLiteral("Download"));
      return false;
    case TransferOutcome::NotAnswered:
      PanelConnectionLost();
      return false;
    default:
      if (newPassWord) passWord_->AdoptNew();
      ShowOutcome(outcome);
      return false;
  }
}

/// Nothing has been written. Whether the user would compare.
bool Download::AskInstead(const QString& why) {
  const MsgAnswer answer =
      MsgBox(why + QStringLiteral("\nNothing Was Written.\n\nDownload All Settings?\n\nNo goes to "
                                  "Document, where Compare With Panel tells what differs."),
             MsgIcon::Question, QStringLiteral("Download"), MsgButtons::YesNoCancel);
  if (answer == MsgAnswer::Yes && ChangePassWord()) SendAll();
  return answer == MsgAnswer::No;
}

/// A user who closes the window is asked between two blocks.
TransferOutcome Download::Transfer(const Run& run) {
  const auto askedBetweenBlocks = [&](TransferWatch watch) {
    const auto end = qScopeGuard([this] { writing_ = Writing::Nothing; });
    watch.Cancelled = [this, shown = watch.Cancelled] {
      writing_ = Writing::TopOfBlock;
      CloseWindowIfAsked();
      const bool cancelled = shown();
      writing_ = Writing::Block;
      return cancelled;
    };
    watch.Sum = [this, shown = watch.Sum] {
      writing_ = Writing::Nothing;
      shown();
    };
    return run(watch);
  };
  return transfer_(askedBetweenBlocks);
}

bool Download::PutsOffClose() {
  if (writing_ != Writing::Block) return false;
  closeAsked_ = true;
  return true;
}

void Download::CloseWindowIfAsked() {
  if (std::exchange(closeAsked_, false)) MainWindow()->close();
}

bool Download::MayLeave() const {
  return writing_ == Writing::Nothing ||
         MsgBox(DownloadCancelled + QStringLiteral("\nClose The Program?"), MsgIcon::Exclamation,
                QStringLiteral("Download"), MsgButtons::YesNo) == MsgAnswer::Yes;
}
