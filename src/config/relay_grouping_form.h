#pragma once

#include "shell/row_grid.h"

/// Which relays belong to which group.
class frmT3RelayGrouping : public ChildForm {
  Q_OBJECT
 public:
  frmT3RelayGrouping();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowGroupConfiguration();
  void cboGroup_Click();
  void lblInclude_Click(int index);
  void lblRelayName_MouseDown(int index, int button, int shift);

 private:
  Int16& Include(int relay) const;

  ComboBox* cboGroup = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblRelayName;
  ControlArray<Label> lblInclude;
};
