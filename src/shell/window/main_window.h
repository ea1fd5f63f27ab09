#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QStackedWidget>
#include <QToolButton>
#include <map>

#include "panel/difference.h"
#include "panel/live_project.h"
#include "panel/recovery_copy.h"
#include "panel/stopwatch.h"
#include "shell/controls/child_form.h"
#include "shell/window/screen_entry.h"

class History;

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
  void KeepUnsavedWork() { recovery_.Update(LiveProject); }
  void ForgetUnsavedWork() { recovery_.Settle(LiveProject); }
  /// The project as it was saved, opened or new.
  std::unique_ptr<Project> SavedProject() const;
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
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct LoadedScreen {
    ChildForm* Form;
    QWidget* Page;
  };

  void BuildMenu();
  void BuildClient();
  void BuildHistory();
  void AddHistoryButtons(QHBoxLayout* line);
  QAction* AddLeaf(const char* name, Screen screen, const QString& caption);
  void CloseFrontForm();
  void Unload(Screen screen);
  void BringToFront(const LoadedScreen& screen);
  void GoToOtherPart();
  static QWidget* WindowOf(const QWidget& control);
  bool StepItem(const QObject* pressedOn, int step);
  bool StepHistory(QObject* pressedOn, bool back);
  QString HistoryRests() const;
  void ShowChange(const std::vector<Setting>& changes, const std::function<bool()>& stillSame);
  bool DiscardChanges() const;
  bool AnythingChanged() const;
  QString WhatHasChanged() const;
  void ReplaceProject(const std::function<void()>& replace);
  [[nodiscard]] bool WriteProject();
  [[nodiscard]] bool MaySaveOver();
  void MergeWithFile(const Project& base);
  void ShowEmptyState();
  void ReadFile(const QString& name);
  void ShowMarks();
  void ShowMarkTip();
  void TearDown();

  ProgramScreens program_;
  std::map<Screen, LoadedScreen> loaded_;
  Screen front_ = Screen::None;
  std::vector<QWidget*> retired_;  ///< Unloaded screens that a waiting handler may still be using.
  std::vector<QAction*> topEntries_;
  QStackedWidget* pages_ = nullptr;
  QWidget* picBlockFlashing_ = nullptr;
  QWidget* captionLine_ = nullptr;  ///< Title and close box of the screen on show.
  QLabel* lblTitle_ = nullptr;
  QToolButton* cmdClose_ = nullptr;
  Label* lblMark_ = nullptr;  ///< Unsaved changes, or what has just been done.
  QString news_;
  bool newsStays_ = false;
  Stopwatch newsShown_;
  Timer* tmrMarks_ = nullptr;
  Label* statusFile_ = nullptr;
  Label* statusLink_ = nullptr;
  Timer* tmrFix_ = nullptr;
  Int16 exitRequested_ = 0;
  bool fileDialogUsed_ = false;
  bool ending_ = false;
  bool keepsWork_ = false;
  History* history_ = nullptr;
  /// What was merged with: the file's fingerprint, and the steps with the merge. Empty for nothing.
  struct {
    QByteArray File;
    int Step = 0;
  } merged_;
  RecoveryCopy recovery_;
  Timer* tmrRecovery_ = nullptr;
};
