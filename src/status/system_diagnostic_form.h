#pragma once

#include "line/panel_replies.h"
#include "status/status_form.h"

/// A soak test of the Fennlink bus: polls all devices over and over and counts, for each, how often
/// it failed to answer and whether its inputs have changed. Device n stands in cell n - 1.
class frmT3SystemDiagnostic : public ChildForm {
 public:
  frmT3SystemDiagnostic();
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload() override;

  void Timer1_Timer();
  void cmdStop_Click();
  void cmdClearTotals_Click();
  void cmdClearFLChanges_Click();
  void lblFLNode_Click(int index);

 private:
  void FindDevices();
  void RunCycle();
  void CountErrors(const DeviceBytes& present);
  void NoteChanges(const DeviceBytes& inputs);
  void SetRunning(bool running);
  void ShowWatched(int cell);

  FixedArray<bool, DeviceCount> Watched;
  FixedArray<Int16, DeviceCount> ErrorCount;
  FixedArray<Int16, DeviceCount> LastInputs;
  Int16 CycleCount = 0;
  bool Running = false;

  Button* cmdStop = nullptr;
  Button* cmdClearTotals = nullptr;
  Label* lblCycleCount = nullptr;
  ControlArray<Label> lblFLNode;
  ControlArray<Label> lblFLComError;
  Timer* Timer1 = nullptr;
};
