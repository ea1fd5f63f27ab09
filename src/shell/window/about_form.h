#pragma once

#include "panel/recovery_copy.h"
#include "panel/remembered.h"
#include "shell/controls/child_form.h"
#include "shell/shell.h"

/// The empty state of the main window, on show whenever no other screen is.
class frmT3About : public ChildForm {
 public:
  frmT3About();
  void Form_Load() override;
  void Form_Activate() override;
  QWidget* FirstFocus() override;

  void lblWebPageInfo_Click();
  void lblTakeUp_Click(int index);
  void lblDelete_Click(int index);
  void lblRecent_Click(int index);
  /// Opens the folder of the project.
  void lblProjectFile_Click();
  void lblStep_Click(int index);
  /// Says until the screen is left what was taken up.
  void TellTakenUp(const KeptWork& work);

 private:
  void AddStart(QVBoxLayout* column);
  void ShowStart();
  void ShowKeptWork();
  void AddKeptWork();

  QHBoxLayout* columns_ = nullptr;
  QVBoxLayout* kept_ = nullptr;
  std::vector<KeptWork> work_;  ///< Of each row.
  Label* lblTakenUp = nullptr;
  ControlArray<Label> lblKeptWork;
  ControlArray<Label> lblTakeUp;
  ControlArray<Label> lblDelete;
  Timer* tmrStart = nullptr;  ///< Shows what can be begun with once the screen is there.
  Label* lblRecentProjects = nullptr;
  std::vector<RecentProject> recent_;  ///< Of each row.
  ControlArray<Label> lblRecent;
  ControlArray<Label> lblRecentFolder;
  ControlArray<Label> lblRecentWhen;
  Label* lblProject = nullptr;      ///< Of one that is in no file.
  Label* lblProjectFile = nullptr;  ///< Of one that is.
  std::vector<WorkStep> steps_;     ///< Of each row.
  ControlArray<Label> lblStep;
  Label* lblRevInfo = nullptr;
  Label* lblWebPageInfo = nullptr;
};
