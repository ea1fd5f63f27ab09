#pragma once

#include "panel/fixed_array.h"
#include "shell/in_place_list.h"
#include "shell/row_grid.h"

/// Which relay, group or preset the pilot light of each local input follows.
class frmT3LocalInputPilots : public ChildForm {
 public:
  frmT3LocalInputPilots();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowPilotConfiguration();
  void lblPilotSource_Click(int index);
  void lblPilotNumber_Click(int index);
  void cboNewSource_Click();
  void cboNewNumber_Click();

 private:
  Int16 SelectedRow = 0;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ControlArray<Label> lblPilotSource;
  ControlArray<Label> lblPilotNumber;
  InPlaceList* cboNewSource = nullptr;
  InPlaceList* cboNewNumber = nullptr;
};
