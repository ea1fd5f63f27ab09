#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/list_column.h"

/// The DMX module: the channel of each relay, and the levels sent for on and off.
class frmT3AddOnModuleDMX : public ChildForm {
 public:
  frmT3AddOnModuleDMX();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowDMXConfiguration();
  void lblDMXChan_Click(int index) { lblDMXChan.Open(index); }
  void cboNewDMX_Click() { lblDMXChan.Take(); }
  void cboOnLevel_Click();
  void cboOffLevel_Click();
  void cboFilter_Click();
  void cmdAutoMap_Click();

 private:
  ComboBox* cboOnLevel = nullptr;
  ComboBox* cboOffLevel = nullptr;
  ComboBox* cboFilter = nullptr;
  Button* cmdAutoMap = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblRelayName;
  ListColumn lblDMXChan;
};
