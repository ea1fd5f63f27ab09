#pragma once

#include "config/name_display.h"
#include "panel/fixed_array.h"
#include "shell/controls/child_form.h"

/// The name of the panel; an empty one stands for the panel's own default.
class frmT3EditPanelName : public ChildForm {
 public:
  frmT3EditPanelName();
  void Form_Load() override;
  void Form_Activate() override;
  QWidget* FirstFocus() override;

  void ShowPanelChars();
  void chkDefaultPanelName_Click();
  void txtPanelName_Change();

 private:
  Int16 FormLoading = 0;
  CheckBox* chkDefaultPanelName = nullptr;
  Label* lblPanelName = nullptr;
  TextBox* txtPanelName = nullptr;
  NameDisplay* frmAsDisplayed = nullptr;
};
