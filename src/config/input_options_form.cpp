#include "config/input_options_form.h"

#include "panel/input_actions.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/editor_rows.h"

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
  lblInputType = grid->Add<Label>(
      "lblInputType", {.HeaderText = QStringLiteral("Type"), .Act = CellAct::OpensList});
  lblInputTimedOn = grid->Add<Label>("lblInputTimedOn", {.Chars = 9,
                                                         .HeaderText = QStringLiteral("Timed On"),
                                                         .SharesCell = true,
                                                         .Act = CellAct::OpensList});
  lblInputType.OnEach(&Label::Click, this, &frmT3InputOptions::lblInputType_Click);
  lblInputTimedOn.OnEach(&Label::Click, this, &frmT3InputOptions::lblInputTimedOn_Click);
  AddWidget(grid);

  cboNewType = new InPlaceList(this, "cboNewType", Items(InputTypes));
  cboNewType->Click = [this] { cboNewType_Click(); };
  cboNewTime = new InPlaceList(
      this, "cboNewTime", NumberItems(ShortestTimedOn, LongestTimedOn, {}, QStringLiteral("Min")));
  cboNewTime->Click = [this] { cboNewTime_Click(); };
}

void frmT3InputOptions::Form_Activate() {
  ShowInstalledRows(*grid, lblInputName, PanelRecord.InputName);
  ShowInputConfiguration();
}

void frmT3InputOptions::ShowInputConfiguration() {
  for (int input = 0; input < PanelIOCount(); ++input) {
    lblInputType(input).SetCaption(cboNewType->ValueText(PanelRecord.InputType(input)));
    lblInputTimedOn(input).SetCaption(
        QStringLiteral(" %1 Min").arg(PanelRecord.InputTimedOnTime(input)));
    lblInputTimedOn(input).setVisible(IsTimedOn(input));
  }
}

void frmT3InputOptions::lblInputType_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewType->Open(lblInputType(index), PanelRecord.InputType(index));
}

void frmT3InputOptions::lblInputTimedOn_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewTime->Open(lblInputTimedOn(index), TimedOnIndex(PanelRecord.InputTimedOnTime(index)));
}

void frmT3InputOptions::cboNewType_Click() {
  PanelRecord.InputType(SelectedRow) = static_cast<Int16>(cboNewType->ListIndex());
  cboNewType->Close();
  ShowInputConfiguration();
  DataChanged = -1;
}

void frmT3InputOptions::cboNewTime_Click() {
  PanelRecord.InputTimedOnTime(SelectedRow) = cboNewTime->ListIndex() + ShortestTimedOn;
  cboNewTime->Close();
  ShowInputConfiguration();
  DataChanged = -1;
}
