#pragma once

#include "shell/in_place_list.h"
#include "shell/row_grid.h"

/// The hardware of the panel: I/O blocks of each node, and the add-on module.
class frmT3Setup : public ChildForm {
 public:
  frmT3Setup();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowConfig();
  void lblIOCount_Click(int index);
  void cboIOCount_Click();
  void optAddOnModuleType_Click(int index);

 private:
  Int16 SelectedRow = 0;
  ControlArray<Label> lblNode;
  ControlArray<Label> lblIOCount;
  ControlArray<Label> lblIOAdd;
  ControlArray<OptionButton> optAddOnModuleType;
  InPlaceList* cboIOCount = nullptr;
};
