#include <utility>

#include "panel/defaults.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/main_window.h"

namespace {

const QString FileFilter =
    QStringLiteral("Tamberloom 3 Data Files (*.T3)|*.T3|All Files (*.*)|*.*");

QString StartMask() {
  return DataPath(QStringLiteral("*.T3"));
}

bool Chosen(const QString& name) {
  return !name.isEmpty() && name != StartMask();
}

}  // namespace

bool frmT3MasterMDI::DiscardChanges() const {
  return DataChanged == 0 || MsgBox(QStringLiteral("Discard Any Changes?"), MsgIcon::Question,
                                    ProgramTitle, MsgButtons::YesNo) == MsgAnswer::Yes;
}

void frmT3MasterMDI::mnuNew_Click() {
  if (!DiscardChanges()) return;
  ShowEmptyState();
  CurrentFileName = NoFileName;
  fileUnread_ = false;
  LoadDefaults();
  UnloadAllForms();
  ShowForm("frmT3About");
  DataChanged = 0;
  UpdateStatusBar();
}

void frmT3MasterMDI::FileOpen() {
  if (!DiscardChanges()) return;
  const QString mask = fileDialogUsed_ ? QString() : StartMask();
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Open, FileFilter, mask});
  if (!Chosen(name)) return;
  CurrentFileName = name;
  ShowEmptyState();
  UpdateStatusBar();
  fileUnread_ = true;
  ReadProjectFile();
  fileUnread_ = false;
  DataChanged = 0;
}

void frmT3MasterMDI::FileSave() {
  WriteProjectFile();
  DataChanged = 0;
}

void frmT3MasterMDI::FileSaveAs() {
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Save, FileFilter, StartMask()});
  if (!Chosen(name)) return;
  const QString before = std::exchange(CurrentFileName, name);
  try {
    WriteProjectFile();
  } catch (const RunTimeFailure&) {
    CurrentFileName = before;
    throw;
  }
  fileUnread_ = false;
  UpdateStatusBar();
  DataChanged = 0;
}

void frmT3MasterMDI::mnuSave_Click() {
  if (CurrentFileName == NoFileName || fileUnread_) {
    FileSaveAs();
  } else {
    FileSave();
  }
}
