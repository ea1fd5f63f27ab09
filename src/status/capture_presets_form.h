#pragma once

#include "status/status_form.h"

/// The live state of each preset, with buttons to set it and to capture the panel's present relay
/// states into it.
class frmT3CapturePresets : public StatusForm {
 public:
  frmT3CapturePresets();
  void Form_Load() override;

  void ShowPresetStatus();
  void cmdSet_Click(int index);
  void cmdCapture_Click(int index);

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override { ShowPresetStatus(); }

 private:
  RowGrid* grid = nullptr;
  ControlArray<Label> lblPresetName;
  ControlArray<Label> lblPresetStatus;
  ControlArray<Button> cmdSet;
};
