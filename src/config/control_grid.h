#pragma once

#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "shell/controls/list_column.h"

/// The base of the editors that say what one input does to the rows of a control table. A derived
/// editor adds its selectors, tells which input is selected, and calls SetControlOptions,
/// ShowControlledItems and ShowControl when the selection changes.
class ControlGridForm : public ChildForm {
 public:
  ControlGridForm(Screen name, const QString& caption, ControlTable table);

  /// Fills the in-place list with what the selected input offers. Without options the list is empty
  /// and MaxControlCode stays.
  void SetControlOptions();
  /// Names and shows the rows that the selected input acts on, or in the relay editor the preset
  /// list. Without options the rows stay as they are.
  void ShowControlledItems();
  /// Writes all cells. A cell above MaxControlCode is cut down to it, which does not count as a
  /// change of the data.
  void ShowControl();
  void lblControl_Click(int index);
  void cboControl_Click();
  virtual void cboPreset_Click();
  QWidget* FirstFocus() override;

 protected:
  /// What the selected input offers; none for an input of an unknown kind.
  virtual std::optional<ControlOptions> SelectedOptions() const = 0;
  /// What kind of input is selected; none for an unknown one.
  virtual std::optional<InputKind> SelectedKind() const = 0;
  /// What says where an input is set that has nothing here.
  struct Elsewhere {
    QString Rows;  ///< The screen that has what it does.
    QString Kind;  ///< Of an unknown kind, in a sentence; empty where another line says it.
  };
  virtual Elsewhere SetElsewhere() const = 0;
  /// The cell of the selected input and the row; null while no input is selected.
  virtual Int16* Cell(int row) const = 0;
  /// The preset of the selected input; null while no input is selected.
  virtual Int16* SelectedPreset() const = 0;

  /// The grid below the row of selectors that the derived editor has put on top; in the relay
  /// editor the preset list goes to the end of that row.
  void AddGrid(QHBoxLayout* selectors);
  /// Fills the preset list of the relay editor; runs nothing.
  void FillPresets();
  /// No rows and no preset list.
  void HideControlledItems();
  QWidget* FocusWithoutGrid(QWidget* selector) override;

  ControlTable Table;
  Int16 MaxControlCode = 0;
  ComboBox* cboPreset = nullptr;  ///< In the relay editor only.

  RowGrid* grid = nullptr;

 private:
  void LimitToList(Int16& cell) const;
  void SetPresetVisible(bool visible);
  void ShowElsewhere(const std::optional<ControlOptions>& options);
  void ShowRows(const QString& word, const NameArray& names, int count);

  Label* lblPreset = nullptr;
  Label* lblNoActions = nullptr;  ///< Where an input without rows is set.
  ControlArray<Label> names;
  ListColumn lblControl;
};
