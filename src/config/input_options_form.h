#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/list_column.h"

/// The type of each local input, and the time of a Timed On input.
class frmT3InputOptions : public ChildForm {
 public:
  frmT3InputOptions();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowInputConfiguration();
  void lblInputType_Click(int index) { lblInputType.Open(index); }
  void lblInputTimedOn_Click(int index) { lblInputTimedOn.Open(index); }
  void cboNewType_Click() { lblInputType.Take(); }
  void cboNewTime_Click() { lblInputTimedOn.Take(); }

 private:
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ListColumn lblInputType;
  ListColumn lblInputTimedOn;
};
