#pragma once

#include "shell/controls/child_form.h"
#include "shell/controls/row_grid.h"

/// A lamp that is lit or dark.
class IncludePicture : public Label {
  Q_OBJECT
 public:
  void SetLit(bool lit);
  bool Lit() const { return Checked(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Which relays drive a dimmer output, and the levels that it takes for on and off.
class frmT3DimmerRelayControl : public ChildForm {
 public:
  frmT3DimmerRelayControl();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowControl();
  /// Turns a relay, or with Shift gives the last value to all relays from the last one clicked.
  void IncCnt(int index);

  void cboDDev_Click();
  void cboDOut_Click();
  void cboOnLevel_Click();
  void cboOffLevel_Click();
  void imgInclude_Click(int index) { IncCnt(index); }
  void lblRelayName_Click(int index) { IncCnt(index); }
  void Row_MouseDown(int index, int button, int shift);

 private:
  Int16 Dev = 0;
  Int16 Out = 0;
  Int16 LastRelay = 0;
  Int16 ShiftDown = 0;
  Int16 LastValue = 0;
  ComboBox* cboDDev = nullptr;
  ComboBox* cboDOut = nullptr;
  ComboBox* cboOnLevel = nullptr;
  ComboBox* cboOffLevel = nullptr;
  Label* lblNotEnabled = nullptr;
  RowGrid* frmConfig = nullptr;
  ControlArray<IncludePicture> imgInclude;
  ControlArray<Label> lblRelayName;
};
