#pragma once

#include "panel/live_project.h"
#include "shell/controls/device_list.h"
#include "shell/controls/list_column.h"

/// What the indicator of each input of a Fennlink device follows.
class frmT3FennlinkPilots : public ChildForm {
 public:
  frmT3FennlinkPilots();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowPilotConfiguration();
  void cboFennlinkDevice_Click();
  void cmdAutoMapThisFL_Click();
  void cmdAutoMapAllFL_Click();
  /// Maps the pilot of AutoMapInput of AutoMapDevice to what the input controls.
  void AutoMapAnInput();
  void lblPilotSource_Click(int index) { lblPilotSource.Open(index); }
  void lblPilotNumber_Click(int index);
  void cboNewSource_Click() { lblPilotSource.Take(); }
  void cboNewNumber_Click() { lblPilotNumber.Take(); }

 private:
  void AutoMapInputs(int device);
  Int16& Pilot(int input) const { return FennlinkRecords(SelectedDevice).DevicePilot(input); }
  bool IsStatic(int input) const;

  int SelectedDevice = 0;  ///< Survives a reactivation.
  Int16 AutoMapDevice = 0;
  Int16 AutoMapInput = 0;
  DeviceList* cboFennlinkDevice = nullptr;
  Label* lblNoPilots = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ListColumn lblPilotSource;
  ListColumn lblPilotNumber;
  Button* cmdAutoMapThisFL = nullptr;
  Button* cmdAutoMapAllFL = nullptr;
};
