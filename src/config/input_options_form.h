#pragma once

#include "panel/fixed_array.h"
#include "shell/in_place_list.h"
#include "shell/row_grid.h"

/// The type of each local input, and the time of a Timed On input.
class frmT3InputOptions : public ChildForm {
 public:
  frmT3InputOptions();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowInputConfiguration();
  void lblInputType_Click(int index);
  void lblInputTimedOn_Click(int index);
  void cboNewType_Click();
  void cboNewTime_Click();

 private:
  Int16 SelectedRow = 0;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ControlArray<Label> lblInputType;
  ControlArray<Label> lblInputTimedOn;
  InPlaceList* cboNewType = nullptr;
  InPlaceList* cboNewTime = nullptr;
};
