#pragma once

#include "panel/recovery_copy.h"
#include "shell/child_form.h"

/// The empty state of the main window, on show whenever no other screen is.
class frmT3About : public ChildForm {
 public:
  static constexpr const char* ScreenName = "frmT3About";

  frmT3About();
  void Form_Load() override;
  void Form_Activate() override;

  void lblWebPageInfo_Click();
  void lblTakeUp_Click();
  void lblDelete_Click();

 private:
  void ShowKeptWork();

  QWidget* kept_ = nullptr;
  KeptWork work_;
  Label* lblKeptWork = nullptr;
  Label* lblRevInfo = nullptr;
  Label* lblWebPageInfo = nullptr;
};
