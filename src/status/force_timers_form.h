#pragma once

#include "status/status_form.h"

/// Fires a timer at once.
class frmT3ForceTimers : public LiveForm {
 public:
  frmT3ForceTimers();
  void Form_Load() override;
  void Form_Unload() override;

  void cmdForce_Click(int index);

 protected:
  void ShowConnected(bool connected) override;

 private:
  RowGrid* grid = nullptr;
  ControlArray<Label> lblTimerName;
  Label* lblPleaseWait = nullptr;
};
