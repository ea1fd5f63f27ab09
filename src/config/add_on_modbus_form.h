#pragma once

#include "shell/controls/child_form.h"

/// The serial settings of the Modbus module.
class frmT3AddOnModuleModBus : public ChildForm {
 public:
  frmT3AddOnModuleModBus();
  void Form_Load() override;
  void Form_Activate() override;

  void cboMode_Click();
  void cboBaud_Click();
  void cboParity_Click();

 private:
  ComboBox* cboMode = nullptr;
  ComboBox* cboBaud = nullptr;
  ComboBox* cboParity = nullptr;
};
