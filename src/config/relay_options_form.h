#pragma once

#include "shell/in_place_list.h"
#include "shell/row_grid.h"

/// Timing and power-on behaviour of each relay.
class frmT3RelayOutputOptions : public ChildForm {
 public:
  frmT3RelayOutputOptions();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowRelayConfiguration();
  void lblTimerType_Click(int index);
  void lblPowerOnType_Click(int index);
  void cboNewTimerType_Click();
  void cboNewPowerOnType_Click();
  void lblRelayName_MouseDown(int index, int button, int shift);

 private:
  Int16 SelectedRow = 0;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblRelayName;
  ControlArray<Label> lblTimerType;
  ControlArray<Label> lblPowerOnType;
  InPlaceList* cboNewTimerType = nullptr;
  InPlaceList* cboNewPowerOnType = nullptr;
};
