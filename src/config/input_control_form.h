#pragma once

#include "config/control_grid.h"

/// What a local input does to each relay (frmT3InputToRelayControl) or each group
/// (frmT3InputToGroupControl). The kind of the input decides which actions there are and, in the
/// relay editor, what the rows stand for.
class InputControlForm : public ControlGridForm {
 public:
  explicit InputControlForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void cboInput_Click();

 private:
  std::optional<ControlOptions> SelectedOptions() const override;
  std::optional<InputKind> SelectedKind() const override;
  Elsewhere SetElsewhere() const override;
  Int16* Cell(int row) const override;
  Int16* SelectedPreset() const override;

  ItemTable& Cells;
  ComboBox* cboInput = nullptr;
  Label* lblInputType = nullptr;
};
