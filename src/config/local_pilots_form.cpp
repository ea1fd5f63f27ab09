#include "config/local_pilots_form.h"

#include "panel/live_project.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"
#include "panel/words.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

frmT3LocalInputPilots::frmT3LocalInputPilots()
    : ChildForm(Screen::LocalInputPilots, QStringLiteral("Local Input Pilots")) {}

void frmT3LocalInputPilots::Form_Load() {
  grid = new RowGrid(ItemCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName");
  const QStringList sources = Items(LocalPilotSources);
  lblPilotSource.Add(
      this, grid,
      {.Cells = ControlOf<&PanelRecordType::LocalPilot>(),
       .List = "cboNewSource",
       .Look = {.Chars = 12, .HeaderText = QStringLiteral("Source"), .Words = sources},
       .Items = sources,
       .Item = [](int input) { return PilotSource(PanelRecord.LocalPilot(input)); },
       .Store =
           [](int input, int item) {
             Int16& pilot = PanelRecord.LocalPilot(input);
             pilot = WithPilotSource(pilot, item);
           }},
      &frmT3LocalInputPilots::ShowPilotConfiguration, &frmT3LocalInputPilots::lblPilotSource_Click,
      &frmT3LocalInputPilots::cboNewSource_Click);
  const auto number = [](int input) { return PilotNumber(PanelRecord.LocalPilot(input)); };
  lblPilotNumber.Add(
      this, grid,
      {.Cells = "lblPilotNumber",
       .List = "cboNewNumber",
       .Look = {.Chars = 3, .HeaderText = QStringLiteral("Number")},
       .Items = NumberItems(1, ItemCount),
       .Item = number,
       .Store =
           [](int input, int item) {
             Int16& pilot = PanelRecord.LocalPilot(input);
             pilot = WithPilotNumber(pilot, item);
           },
       .Text = [number](int input) { return u' ' + QString::number(number(input) + 1); },
       .Note =
           [](int input, int item) {
             return PilotName(LiveProject, PilotSource(PanelRecord.LocalPilot(input)) + PilotRelay,
                              item);
           }},
      &frmT3LocalInputPilots::ShowPilotConfiguration, &frmT3LocalInputPilots::lblPilotNumber_Click,
      &frmT3LocalInputPilots::cboNewNumber_Click);
  AddWidget(grid);
}

void frmT3LocalInputPilots::Form_Activate() {
  ShowInstalledRows(*grid, lblInputName, PanelRecord.InputName);
  ShowPilotConfiguration();
}

void frmT3LocalInputPilots::ShowPilotConfiguration() {
  lblPilotSource.Show(PanelIOCount());
  lblPilotNumber.Show(PanelIOCount());
}
