#pragma once

#include "config/control_grid.h"
#include "panel/live_project.h"
#include "shell/controls/device_list.h"

/// What an input of a Fennlink device does to each relay (frmT3FennlinkInputToRelayControl) or each
/// group (frmT3FennlinkInputToGroupControl). The actions depend on the types of the device and of
/// the input.
class FennlinkControlForm : public ControlGridForm {
 public:
  explicit FennlinkControlForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void cboFennlinkDevice_Click();
  void cboInput_Click();
  void cboPreset_Click() override;
  void ShowDeviceType();
  /// Fills the selector of inputs with the device's name and 1 to `count`, and selects the first.
  void ShowInputCBO(int count);
  void ShowInputType();

 private:
  FennlinkRecord& Device() const { return FennlinkRecords(cboFennlinkDevice->ListIndex()); }
  void ShowDevice();
  void ShowInput();
  std::optional<ControlOptions> SelectedOptions() const override;
  std::optional<InputKind> SelectedKind() const override;
  Elsewhere SetElsewhere() const override;
  Int16* Cell(int row) const override;
  Int16* SelectedPreset() const override;

  DeviceControlTable FennlinkRecord::*Cells;
  Int16 FormLoading = 0;  ///< -1 while the lists are filled.
  DeviceList* cboFennlinkDevice = nullptr;
  Label* lblDeviceType = nullptr;
  Label* lblInput = nullptr;
  ComboBox* cboInput = nullptr;
  Label* lblInputType = nullptr;
};
