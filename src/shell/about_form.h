#pragma once

#include "shell/child_form.h"

/// The empty state of the main window, on show whenever no other screen is.
class frmT3About : public ChildForm {
 public:
  frmT3About();
  void Form_Load() override;
  void Form_Activate() override;

  void lblWebPageInfo_Click();

 private:
  Label* lblRevInfo = nullptr;
  Label* lblWebPageInfo = nullptr;
};
