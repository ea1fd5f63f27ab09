#pragma once

#include "panel/panel_record.h"
#include "shell/controls/row_grid.h"

struct CellGridScreen;

/// The editors whose cells change at once on a click, without a list: relay grouping, presets, and
/// the relays and groups of the off-hours sweep. The first two edit one group or preset at a time.
class CellGridForm : public ChildForm {
 public:
  explicit CellGridForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void ShowCells();
  void cboSelector_Click();
  void lblCell_Click(int index);
  void lblName_MouseDown(int index, int button, int shift);

 private:
  int RowCount() const;
  Int16& Cell(int row) const;
  void SetCell(int row, Int16 code);

  const CellGridScreen& Row;
  ComboBox* cboSelector = nullptr;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblName;
  ControlArray<Label> lblCell;
};
