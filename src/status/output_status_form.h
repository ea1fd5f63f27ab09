#pragma once

#include "status/status_form.h"

struct OutputStatusScreen;

/// The live state of all relays or of all groups, with a switch for each.
class OutputStatusForm : public StatusForm {
 public:
  /// `name`: frmT3RelayStatus or frmT3RelayGroupStatus.
  explicit OutputStatusForm(Screen name);
  void Form_Load() override;

  void cmdTurnOn_Click(int index);
  void cmdTurnOff_Click(int index);
  void SwitchAll(bool on);

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override;
  void EnableForManual(bool enabled) override;

 private:
  void Switch(int index, bool on);

  const OutputStatusScreen& screen;
  int shownRows = 0;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblName;
  ControlArray<Label> lblStatus;
  Button* cmdAllOn = nullptr;
  Button* cmdAllOff = nullptr;
};
