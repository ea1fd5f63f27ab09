#pragma once

#include "shell/controls/child_form.h"

/// Writes the configuration as a text document: its file and the sections that it holds.
class frmT3Document : public ChildForm {
 public:
  frmT3Document();
  void Form_Load() override;
  void Form_Activate() override;

  void chkPrintOptions_Click(int index);
  void cmdBrowse_Click();
  void cmdDocument_Click();
  void lblOpenDocument_Click();

 private:
  void ShowFileName();

  class FindingsFrame* findings = nullptr;
  Label* lblDocFileName = nullptr;
  Label* lblOpenDocument = nullptr;
  ControlArray<CheckBox> chkPrintOptions;
  bool fileDialogUsed_ = false;
};
