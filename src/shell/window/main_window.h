#pragma once

#include <QMainWindow>

#include "panel/recovery_copy.h"
#include "shell/controls/child_form.h"
#include "shell/window/screen_entry.h"

class History;
class MarkLine;
class ScreenStack;

/// The main window: the menu, the status bar, the screen on show and the project's file commands.
/// The program lives from its load to its close.
class frmT3MasterMDI : public QMainWindow {
  Q_OBJECT
 public:
  /// The tables must outlive the window.
  explicit frmT3MasterMDI(const ProgramScreens& program);
  ~frmT3MasterMDI() override;

  /// Shows the window and starts the program in it; called once.
  void MDIForm_Load();

  void FileOpen();
  /// Opens a project by its path, under the rules of Open.
  void OpenFile(const QString& name);
  void FileSave();
  void FileSaveAs();
  void ExitProgram();
  /// Ends the program without a question, with unsaved work kept.
  void EndKeepingWork();
  RecoveryCopy& Recovery() { return recovery_; }
  /// Takes up what another program could not save, under the rules of Open.
  void OpenKeptWork(const KeptWork& work);

  /// Whether the window may close; asks about unsaved changes.
  bool MDIForm_QueryUnload();
  void MDIForm_Unload();
  void MDIForm_Resize();
  void tmrFix_Timer();

  void mnuNew_Click();
  void mnuOpen_Click() { FileOpen(); }
  void mnuSave_Click();
  void mnuSaveAs_Click() { FileSaveAs(); }
  void mnuExit_Click();
  void mnuAddOnModules_Click();

  ChildForm* ShowForm(Screen screen);
  ChildForm* LoadedForm(Screen screen) const;
  void UnloadAllForms();
  void UpdateStatusBar();
  void SetLinkStatus(const QString& text);
  /// For a moment, or until the next key or press.
  void TellNews(const QString& news, bool stays = false);
  void SetMainMenusEnabled(bool enabled);
  bool Ending() const { return ending_; }
  History& Steps() { return *history_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildClient();
  bool DiscardChanges() const;
  void ReplaceProject(const std::function<void()>& replace);
  [[nodiscard]] bool WriteProject();
  void TellSaved();
  [[nodiscard]] bool MaySaveOver();
  void MergeWithFile(const Project& base);
  void ShowEmptyState();
  void ReadFile(const QString& name);
  void TearDown();

  ProgramScreens program_;
  History* history_;
  MarkLine* marks_ = nullptr;
  ScreenStack* screens_ = nullptr;
  Label* statusFile_ = nullptr;
  Label* statusLink_ = nullptr;
  Timer* tmrFix_;
  Int16 exitRequested_ = 0;
  bool fileDialogUsed_ = false;
  bool ending_ = false;
  bool keepsWork_ = false;
  /// What was merged with: the file's fingerprint, and the steps with the merge. Empty for nothing.
  struct {
    QByteArray File;
    int Step = 0;
  } merged_;
  RecoveryCopy recovery_;
  Timer* tmrRecovery_;
};
