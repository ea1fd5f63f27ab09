#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QScopeGuard>
#include <QUrl>
#include <utility>

#include "panel/beside_project.h"
#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/merge.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "panel/remembered.h"
#include "panel/stopwatch.h"
#include "shell/shell.h"
#include "shell/window/about_form.h"
#include "shell/window/history.h"
#include "shell/window/main_window.h"
#include "shell/window/saved_project.h"
#include "shell/window/screen_stack.h"

namespace {

QString StartMask() {
  return DataPath(QStringLiteral("*.T3"));
}

bool Chosen(const QString& name) {
  return !name.isEmpty() && name != StartMask();
}

}  // namespace

/// Asked exactly when edits are marked; that some change nothing is told below the question.
bool frmT3MasterMDI::DiscardChanges() const {
  if (DataChanged == 0) return true;
  const QString same = CurrentFileName == NoFileName
                           ? QStringLiteral("No setting differs from a new panel.")
                           : QStringLiteral("No setting differs from the file.");
  return MsgBox(QStringLiteral("Discard Any Changes?"), MsgIcon::Question, ProgramTitle,
                MsgButtons::YesNo, AnythingChanged(recovery_) ? QString() : same) == MsgAnswer::Yes;
}

/// Another project comes into memory. Nobody was asked about the work of one that is not marked as
/// changed, so what of it is in no file stays kept.
void frmT3MasterMDI::ReplaceProject(const std::function<void()>& replace) {
  recovery_.Update(LiveProject);
  replace();
  if (DataChanged == 0) recovery_.Leave();
  history_->Begin();
  merged_ = {};
}

void frmT3MasterMDI::mnuNew_Click() {
  if (!DiscardChanges()) return;
  ShowEmptyState();
  ReplaceProject([] {
    CurrentFileName = NoFileName;
    FileNotInMemory = false;
    SetKnownContent({});
    LoadDefaults();
  });
  DataChanged = 0;
  recovery_.Settle(LiveProject);
  UnloadAllForms();
  ShowForm(Screen::About);
  DataChanged = 0;
  UpdateStatusBar();
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
  ReplaceProject([] {
    FileNotInMemory = true;
    ReadProjectFile();
    FileNotInMemory = false;
  });
  DataChanged = 0;
  recovery_.Settle(LiveProject);
  RememberProject(name, Now());
  TellNews(QStringLiteral("Opened"));
}

/// Saves the project; over its old content where no file may be made beside it and the user takes
/// the risk. False when the user does not.
bool frmT3MasterMDI::WriteProject() {
  try {
    WriteProjectFile();
    return true;
  } catch (const FolderRefuses& refusal) {
    if (MsgBox(QString::fromUtf8(refusal.what()) +
                   QStringLiteral("\n\nThe file itself can be written over. A disk that fails "
                                  "meanwhile leaves it damaged.\nSave In Place?"),
               MsgIcon::Question, ProgramTitle, MsgButtons::YesNo) != MsgAnswer::Yes) {
      return false;
    }
  }
  WriteProjectFile(Saving::InPlace);
  return true;
}

/// Whether the file, which somebody else has changed, is to be saved over.
bool frmT3MasterMDI::MaySaveOver() {
  const QString file = CurrentFileName;
  const auto base = recovery_.Saved();
  QStringList answers = {QStringLiteral("Compare"), QStringLiteral("Merge"),
                         QStringLiteral("Save Over It"), QStringLiteral("Cancel")};
  // Of work that was taken up nobody knows what both began with.
  if (!base) answers.removeAt(1);
  const QString answer = answers[Ask(
      QStringLiteral(
          "\"%1\" was changed by somebody else at %2, after it was opened or saved here.")
          .arg(file, QFileInfo(file).lastModified().toString(TimeFormat)),
      answers)];
  if (answer == u"Compare") program_.CompareWithFile(file);
  if (answer == u"Merge") MergeWithFile(*base);
  return answer == u"Save Over It";
}

/// What somebody else has changed in the file comes into the project. What both have changed stays
/// as it is here, and is listed with all else that the file has not.
void frmT3MasterMDI::MergeWithFile(const Project& base) {
  const ProjectRead theirs = ReadProject(CurrentFileName, NewProject());
  if (!theirs.Whole) {
    throw RunTimeFailure("What the file holds now ends early. It cannot be merged.");
  }
  const MergedProject merged = MergeProjects(base, LiveProject, theirs.Content);
  LiveProject = merged.Content;
  DataChanged = -1;
  program_.CompareWithFile(CurrentFileName);
  merged_ = {theirs.Fingerprint, history_->Stack().index()};
  if (merged.Conflicts.empty()) {
    TellNews(QStringLiteral("Merged. Save writes it."));
    return;
  }
  const MergeConflict& first = merged.Conflicts.front();
  TellRefusal(
      QStringLiteral("Merged. What both had changed stays as it is here: settings: %1, first "
                     "%2 %3.")
          .arg(merged.Conflicts.size())
          .arg(ItemCode(first.Where), first.Field));
}

void frmT3MasterMDI::FileSave() {
  // What was merged and not undone since is asked about no more.
  const bool isMerged = history_->Stack().index() >= merged_.Step && !merged_.File.isEmpty() &&
                        ReadProject(CurrentFileName, LiveProject).Fingerprint == merged_.File;
  if (!isMerged && ChangedByOthers() && !MaySaveOver()) return;
  if (!WriteProject()) return;
  merged_ = {};
  TellSaved();
}

void frmT3MasterMDI::TellSaved() {
  DataChanged = 0;
  recovery_.Settle(LiveProject);
  RememberProject(CurrentFileName, Now());
  TellNews(QStringLiteral("Saved"));
  // The first screen tells of work that was taken up, and of the project's state.
  if (screens_->Front() == Screen::About) screens_->FrontForm()->ShowAnew();
}

void frmT3MasterMDI::FileSaveAs() {
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Save, ProjectFileFilter, StartMask()});
  if (!Chosen(name)) return;
  const QString before = CurrentFileName;
  auto restore = qScopeGuard([&before] { CurrentFileName = before; });
  CurrentFileName = name;
  if (!WriteProject()) return;
  restore.dismiss();
  FileNotInMemory = false;
  UpdateStatusBar();
  TellSaved();
  if (before != NoFileName) CopyBeside(before, name);
}

void frmT3MasterMDI::mnuSave_Click() {
  if (!ProjectHasFile()) {
    FileSaveAs();
  } else {
    FileSave();
  }
}

void frmT3MasterMDI::OpenKeptWork(const KeptWork& work) {
  if (!DiscardChanges()) return;
  ShowEmptyState();
  ReplaceProject([&work] { TakeUpKeptWork(work); });
  // The start would take the mark for its own.
  tmrFix_->SetEnabled(false);
  DataChanged = -1;
  recovery_.Unsettle();
  recovery_.Update(LiveProject);
  // On a full disk the old copy is the only one.
  if (recovery_.HoldsWork()) DeleteKeptWork(work);
  UpdateStatusBar();
  if (auto* about = dynamic_cast<frmT3About*>(ShowForm(Screen::About))) {
    about->TellTakenUp(work);
  }
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
