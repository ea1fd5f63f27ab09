#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/child_form.h"

/// The three times of all alerts and overrides of the panel.
class frmT3BlinkAlertAndAlarmSettings : public ChildForm {
 public:
  frmT3BlinkAlertAndAlarmSettings();
  void Form_Load() override;
  void Form_Activate() override;

  void cboBlinkAlert_Click();
  void cboOverRide_Click();
  void cboAlarm_Click();

 private:
  ComboBox* cboBlinkAlert = nullptr;
  ComboBox* cboOverRide = nullptr;
  ComboBox* cboAlarm = nullptr;
};
