#pragma once

#include "shell/controls/list_column.h"

/// The hardware of the panel: I/O blocks of each node, and the add-on module.
class frmT3Setup : public ChildForm {
 public:
  frmT3Setup();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowConfig();
  void lblIOCount_Click(int index) { lblIOCount.Open(index); }
  void cboIOCount_Click() { lblIOCount.Take(); }
  void optAddOnModuleType_Click(int index);

 private:
  ControlArray<Label> lblNode;
  ListColumn lblIOCount;
  ControlArray<Label> lblIOAdd;
  ControlArray<OptionButton> optAddOnModuleType;
};
