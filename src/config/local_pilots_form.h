#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/list_column.h"

/// Which relay, group or preset the pilot light of each local input follows.
class frmT3LocalInputPilots : public ChildForm {
 public:
  frmT3LocalInputPilots();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowPilotConfiguration();
  void lblPilotSource_Click(int index) { lblPilotSource.Open(index); }
  void lblPilotNumber_Click(int index) { lblPilotNumber.Open(index); }
  void cboNewSource_Click() { lblPilotSource.Take(); }
  void cboNewNumber_Click() { lblPilotNumber.Take(); }

 private:
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ListColumn lblPilotSource;
  ListColumn lblPilotNumber;
};
