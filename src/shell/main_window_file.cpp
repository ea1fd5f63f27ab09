#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QUrl>
#include <utility>

#include "panel/defaults.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/about_form.h"
#include "shell/main_window.h"

namespace {

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
  FileNotInMemory = false;
  SetKnownContent({});
  LoadDefaults();
  UnloadAllForms();
  ShowForm(frmT3About::ScreenName);
  DataChanged = 0;
  UpdateStatusBar();
  recovery_.Settle();
}

void frmT3MasterMDI::FileOpen() {
  if (!DiscardChanges()) return;
  const QString mask = fileDialogUsed_ ? QString() : StartMask();
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Open, ProjectFileFilter, mask});
  if (Chosen(name)) ReadFile(name);
}

void frmT3MasterMDI::OpenFile(const QString& name) {
  if (DiscardChanges()) ReadFile(name);
}

void frmT3MasterMDI::ReadFile(const QString& name) {
  CurrentFileName = name;
  ShowEmptyState();
  UpdateStatusBar();
  FileNotInMemory = true;
  ReadProjectFile();
  FileNotInMemory = false;
  DataChanged = 0;
  recovery_.Settle();
  TellNews(QStringLiteral("Opened"));
}

void frmT3MasterMDI::FileSave() {
  if (ChangedByOthers() &&
      MsgBox(
          QStringLiteral("\"%1\" was changed by somebody else at %2, after it was opened or "
                         "saved here.\nSave Over It?")
              .arg(CurrentFileName, QFileInfo(CurrentFileName).lastModified().toString(TimeFormat)),
          MsgIcon::Question, ProgramTitle, MsgButtons::YesNo) != MsgAnswer::Yes) {
    return;
  }
  WriteProjectFile();
  DataChanged = 0;
  recovery_.Settle();
  TellNews(QStringLiteral("Saved"));
}

void frmT3MasterMDI::FileSaveAs() {
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Save, ProjectFileFilter, StartMask()});
  if (!Chosen(name)) return;
  const QString before = std::exchange(CurrentFileName, name);
  try {
    WriteProjectFile();
  } catch (const RunTimeFailure&) {
    CurrentFileName = before;
    throw;
  }
  FileNotInMemory = false;
  UpdateStatusBar();
  DataChanged = 0;
  recovery_.Settle();
  TellNews(QStringLiteral("Saved"));
}

void frmT3MasterMDI::mnuSave_Click() {
  if (CurrentFileName == NoFileName || FileNotInMemory) {
    FileSaveAs();
  } else {
    FileSave();
  }
}

void frmT3MasterMDI::OpenKeptWork(const KeptWork& work) {
  if (!DiscardChanges()) return;
  ShowEmptyState();
  TakeUpKeptWork(work);
  recovery_.Unsettle();
  recovery_.Update();
  // On a full disk the old copy is the only one.
  if (recovery_.HoldsWork()) DeleteKeptWork(work);
  UpdateStatusBar();
  ShowForm(frmT3About::ScreenName);
}

namespace {

/// The one project file that is dragged; empty for anything else.
QString DraggedProject(const QDropEvent& event) {
  const QList<QUrl> urls = event.mimeData()->urls();
  const QString path = urls.size() == 1 ? urls.front().toLocalFile() : QString();
  return path.endsWith(QLatin1String(".T3"), Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

void frmT3MasterMDI::dragEnterEvent(QDragEnterEvent* event) {
  // Not while the menus are off.
  if (menuBar()->isEnabled() && !DraggedProject(*event).isEmpty()) event->acceptProposedAction();
}

void frmT3MasterMDI::dropEvent(QDropEvent* event) {
  const QString path = DraggedProject(*event);
  if (path.isEmpty()) return;
  event->acceptProposedAction();
  RunHandler([&] { OpenFile(QDir::toNativeSeparators(path)); });
}
