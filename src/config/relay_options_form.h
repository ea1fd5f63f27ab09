#pragma once

#include "shell/controls/list_column.h"

/// Timing and power-on behaviour of each relay.
class frmT3RelayOutputOptions : public ChildForm {
 public:
  frmT3RelayOutputOptions();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowRelayConfiguration();
  void lblTimerType_Click(int index) { lblTimerType.Open(index); }
  void lblPowerOnType_Click(int index) { lblPowerOnType.Open(index); }
  void cboNewTimerType_Click() { lblTimerType.Take(); }
  void cboNewPowerOnType_Click() { lblPowerOnType.Take(); }
  void lblRelayName_MouseDown(int index, int button, int shift);

 private:
  RowGrid* grid = nullptr;
  ControlArray<Label> lblRelayName;
  ListColumn lblTimerType;
  ListColumn lblPowerOnType;
};
