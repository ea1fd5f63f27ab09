#include <QCoreApplication>
#include <QScopeGuard>
#include <utility>

#include "link/connect_form.h"
#include "link/panel_queue.h"
#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/shell.h"

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

void frmT3Connect::cmdCancelUpDownLoad_Click() {
  CancelRequested = -1;
}

void frmT3Connect::cmdDownLoadToT2_Click() {
  LeaveOnLine();
  download->AskPassWord(false);
}

void frmT3Connect::cmdSendChanges_Click() {
  LeaveOnLine();
  download->AskPassWord(true);
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
    bool compares = false;
    const auto end = qScopeGuard([&] {
      ReturnOnLine();
      download->CloseWindowIfAsked();
      if (!compares) return;
      UnloadAllForms();
      ShowForm(Screen::Document);
    });
    compares = download->Send();
  });
}

void frmT3Connect::DownLoadSettings() {
  download->SendAll();
}

/// Runs a transfer with the menus locked.
TransferOutcome frmT3Connect::Transfer(const char* action, const Download::Run& run) {
  MasterMDIMenuDisable();
  const auto end = qScopeGuard([this] { MasterMDIMenuEnable(); });
  CancelRequested = 0;
  return run(fraOnLineFunctions->Progress->Watch(action, CancelRequested));
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
  // New-panel defaults, and the connection's settings shown as they are then.
  DisconnectQZ();
  LoadDefaults();
  FileNotInMemory = true;
  ForgetUnsavedWork();
  line->ShowDefaults(cancelled);
}
