#pragma once

#include "panel/panel_record.h"
#include "shell/controls/list_column.h"

struct TimerControlScreen;

/// What one timer at a time does to every relay (frmT3TimerToRelayControl), group
/// (frmT3TimerToGroupControl) or preset (frmT3TimerToPresetControl).
class TimerControlForm : public ChildForm {
 public:
  explicit TimerControlForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void ShowControl();
  void cboTimer_Click();
  void lblControl_Click(int index) { lblControl.Open(index); }
  void cboControl_Click() { lblControl.Take(); }

 private:
  Int16& Cell(int target) const;

  const TimerControlScreen& screen;
  ComboBox* cboTimer = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblName;
  ListColumn lblControl;
};
