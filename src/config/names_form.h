#pragma once

#include "config/name_display.h"
#include "panel/panel_record.h"
#include "shell/controls/row_grid.h"

struct NamesScreen;

/// The editors of the names of relays, groups, inputs, timers, presets and bus devices.
class NamesForm : public ChildForm {
 public:
  explicit NamesForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void ShowNameChar(int index);
  void txtName_Change(int index);
  void txtName_Click(int index);

 private:
  int RowCount() const;
  std::string& Name(int row) const;

  const NamesScreen& Row;
  Int16 FormLoading = 0;
  NameDisplay* display = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<TextBox> txtName;
};
