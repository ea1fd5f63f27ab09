#pragma once

#include "status/status_form.h"

/// The live state of the two contacts of each local input.
class frmT3InputStatus : public StatusForm {
 public:
  frmT3InputStatus();
  void Form_Load() override;

  void ShowInputStatus();

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override { ShowInputStatus(); }

 private:
  int shownRows = 0;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblInputName;
  ControlArray<Label> lblInputOnStatus;
  ControlArray<Label> lblInputOffStatus;
};
