#include "config/input_options_form.h"

#include "panel/input_actions.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

namespace {

bool IsTimedOn(int input) {
  return PanelRecord.InputType(input) == static_cast<Int16>(InputKind::TimedOn);
}

}  // namespace

frmT3InputOptions::frmT3InputOptions()
    : ChildForm(Screen::InputOptions, QStringLiteral("Input Options")) {}

void frmT3InputOptions::Form_Load() {
  grid = new RowGrid(ItemCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName");
  auto type = FieldColumn<&PanelRecordType::InputType>("cboNewType",
                                                       {.HeaderText = QStringLiteral("Type")});
  type.Look.Words.clear();  // Wide enough for a type and its time.
  lblInputType.Add(this, grid, type, &frmT3InputOptions::ShowInputConfiguration,
                   &frmT3InputOptions::lblInputType_Click, &frmT3InputOptions::cboNewType_Click);
  auto timedOn = FieldColumn<&PanelRecordType::InputTimedOnTime>(
      "cboNewTime", {.Chars = 9, .HeaderText = QStringLiteral("Timed On"), .SharesCell = true},
      NumberItems(ShortestTimedOn, LongestTimedOn, {}, QStringLiteral("Min")), ShortestTimedOn);
  timedOn.Text = [](int input) {
    return QStringLiteral(" %1 Min").arg(PanelRecord.InputTimedOnTime(input));
  };
  lblInputTimedOn.Add(this, grid, timedOn, &frmT3InputOptions::ShowInputConfiguration,
                      &frmT3InputOptions::lblInputTimedOn_Click,
                      &frmT3InputOptions::cboNewTime_Click);
  AddWidget(grid);
}

void frmT3InputOptions::Form_Activate() {
  ShowInstalledRows(*grid, lblInputName, PanelRecord.InputName);
  ShowInputConfiguration();
}

void frmT3InputOptions::ShowInputConfiguration() {
  lblInputType.Show(PanelIOCount());
  lblInputTimedOn.Show(PanelIOCount());
  for (int input = 0; input < PanelIOCount(); ++input) {
    lblInputTimedOn(input).setVisible(IsTimedOn(input));
  }
}
