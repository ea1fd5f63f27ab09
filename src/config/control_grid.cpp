#include "config/control_grid.h"

#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

ControlGridForm::ControlGridForm(Screen name, const QString& caption, ControlTable table)
    : ChildForm(name, caption), Table(table) {}

void ControlGridForm::AddGrid(QHBoxLayout* selectors) {
  const bool relays = Table == ControlTable::Relay;
  if (relays) {
    lblPreset = AddLabel(selectors, "lblPreset", QStringLiteral("Preset"));
    cboPreset = Add<ComboBox>(selectors, "cboPreset");
    cboPreset->setAccessibleName(QStringLiteral("Preset"));
    cboPreset->Click = [this] { cboPreset_Click(); };
  }
  grid = new RowGrid(ItemCount, relays ? QStringLiteral("Relay ") : QStringLiteral("Group "));
  names = grid->AddNames(relays ? "lblRelayName" : "lblGroupName");
  lblControl.Add(this, grid,
                 {.Cells = ControlOf<&PanelRecordType::InputRelayControl>(),
                  .List = "cboControl",
                  .Item = [this](int row) { return *Cell(row); },
                  .Store = [this](int row, int item) { *Cell(row) = static_cast<Int16>(item); },
                  .OpeningMarks = true},
                 &ControlGridForm::ShowControl, &ControlGridForm::lblControl_Click,
                 &ControlGridForm::cboControl_Click);
  AddWidget(grid);
  lblNoActions = Add<Label>(nullptr, "lblNoActions");
  lblNoActions->SetLook(Label::Look::Quiet);
  AddWidget(lblNoActions);
  HideControlledItems();
}

void ControlGridForm::FillPresets() {
  if (cboPreset) cboPreset->SetItems(ItemNames(PanelRecord.PresetName));
}

void ControlGridForm::SetControlOptions() {
  lblControl.List().Close();
  lblControl.List().Clear();
  const auto options = SelectedOptions();
  ShowElsewhere(options);
  if (!options) return;
  lblControl.List().SetItems(Items(options->Actions));
  MaxControlCode = options->MaxControlCode();
}

void ControlGridForm::ShowRows(const QString& word, const NameArray& items, int count) {
  for (int row = 0; row < ItemCount; ++row) {
    grid->SetRowTitle(row, word + TwoDigits(row + 1));
    names(row).SetCaption(ToUnicode(items(row)));
  }
  grid->ShowRows(count);
}

void ControlGridForm::HideControlledItems() {
  grid->ShowRows(0);
  SetPresetVisible(false);
}

void ControlGridForm::SetPresetVisible(bool visible) {
  if (!cboPreset) return;
  lblPreset->setVisible(visible);
  cboPreset->setVisible(visible);
}

QWidget* ControlGridForm::FocusWithoutGrid(QWidget* selector) {
  return cboPreset && cboPreset->isVisibleTo(this) ? cboPreset : selector;
}

QWidget* ControlGridForm::FirstFocus() {
  return FocusWithoutGrid(ChildForm::FirstFocus());
}

void ControlGridForm::ShowElsewhere(const std::optional<ControlOptions>& options) {
  const auto what = [](std::optional<InputKind> kind) {
    switch (kind.value_or(InputKind::MomentaryOnOff)) {
      case InputKind::SetPreset:
        return QStringLiteral("This input sets a preset, which is chosen in %1.");
      case InputKind::InputDisable:
        return QStringLiteral("This input disables inputs, which are chosen in %1.");
      case InputKind::TimerDisable:
        return QStringLiteral("This input disables timers, which are chosen in %1.");
      case InputKind::ForceTimer:
        return QStringLiteral("This input forces timers, which are chosen in %1.");
      default:
        return QString();
    }
  };
  QString line;
  if (!options) {
    line = SetElsewhere().Kind;
  } else if (options->Rows == ControlRows::None && !cboPreset) {
    line = what(SelectedKind()).arg(SetElsewhere().Rows);
  }
  lblNoActions->SetCaption(line);
  lblNoActions->setVisible(!line.isEmpty());
}

void ControlGridForm::ShowControlledItems() {
  const auto options = SelectedOptions();
  if (!options) return;
  SetPresetVisible(options->Rows == ControlRows::None);
  switch (options->Rows) {
    case ControlRows::None:
      grid->ShowRows(0);
      break;
    case ControlRows::Relays:
      ShowRows(QStringLiteral("Relay "), PanelRecord.RelayName, PanelIOCount());
      break;
    case ControlRows::Inputs:
      ShowRows(QStringLiteral("Input "), PanelRecord.InputName, PanelIOCount());
      break;
    case ControlRows::Groups:
      ShowRows(QStringLiteral("Group "), PanelRecord.GroupName, ItemCount);
      break;
    case ControlRows::Timers:
      ShowRows(QStringLiteral("Timer "), PanelRecord.TimerName, ItemCount);
      break;
  }
}

void ControlGridForm::LimitToList(Int16& cell) const {
  if (cell > MaxControlCode) cell = MaxControlCode;
}

void ControlGridForm::ShowControl() {
  if (!Cell(0)) return;
  for (int row = 0; row < ItemCount; ++row) LimitToList(*Cell(row));
  lblControl.Show(ItemCount);
  if (cboPreset) cboPreset->SetListIndex(*SelectedPreset());
}

void ControlGridForm::lblControl_Click(int index) {
  if (!Cell(index)) return;
  LimitToList(*Cell(index));
  lblControl.Open(index);
}

void ControlGridForm::cboControl_Click() {
  if (Cell(0)) lblControl.Take();
}

void ControlGridForm::cboPreset_Click() {
  if (!SelectedPreset()) return;
  *SelectedPreset() = static_cast<Int16>(cboPreset->ListIndex());
  DataChanged = -1;
}
