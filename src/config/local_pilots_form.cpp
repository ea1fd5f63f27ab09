#include "config/local_pilots_form.h"

#include "panel/live_project.h"
#include "panel/pilot_code.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/editor_rows.h"

frmT3LocalInputPilots::frmT3LocalInputPilots()
    : ChildForm(Screen::LocalInputPilots, QStringLiteral("Local Input Pilots")) {}

void frmT3LocalInputPilots::Form_Load() {
  grid = new RowGrid(ItemCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName");
  lblPilotSource = grid->Add<Label>("lblPilotSource", {.Chars = 12,
                                                       .HeaderText = QStringLiteral("Source"),
                                                       .Act = CellAct::OpensList,
                                                       .Words = Items(LocalPilotSources)});
  lblPilotNumber = grid->Add<Label>(
      "lblPilotNumber",
      {.Chars = 3, .HeaderText = QStringLiteral("Number"), .Act = CellAct::OpensList});
  lblPilotSource.OnEach(&Label::Click, this, &frmT3LocalInputPilots::lblPilotSource_Click);
  lblPilotNumber.OnEach(&Label::Click, this, &frmT3LocalInputPilots::lblPilotNumber_Click);
  AddWidget(grid);

  cboNewSource = new InPlaceList(this, "cboNewSource", Items(LocalPilotSources));
  cboNewSource->Click = [this] { cboNewSource_Click(); };
  cboNewNumber = new InPlaceList(this, "cboNewNumber", NumberItems(1, ItemCount));
  cboNewNumber->Click = [this] { cboNewNumber_Click(); };
}

void frmT3LocalInputPilots::Form_Activate() {
  ShowInstalledRows(*grid, lblInputName, PanelRecord.InputName);
  ShowPilotConfiguration();
}

void frmT3LocalInputPilots::ShowPilotConfiguration() {
  for (int input = 0; input < PanelIOCount(); ++input) {
    const Int16 pilot = PanelRecord.LocalPilot(input);
    lblPilotSource(input).SetCaption(cboNewSource->ValueText(PilotSource(pilot)));
    lblPilotNumber(input).SetCaption(u' ' + QString::number(PilotNumber(pilot) + 1));
  }
}

void frmT3LocalInputPilots::lblPilotSource_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewSource->Open(lblPilotSource(index), PilotSource(PanelRecord.LocalPilot(index)));
}

void frmT3LocalInputPilots::lblPilotNumber_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewNumber->Open(lblPilotNumber(index), PilotNumber(PanelRecord.LocalPilot(index)));
}

void frmT3LocalInputPilots::cboNewSource_Click() {
  Int16& pilot = PanelRecord.LocalPilot(SelectedRow);
  pilot = WithPilotSource(pilot, cboNewSource->ListIndex());
  cboNewSource->Close();
  ShowPilotConfiguration();
  DataChanged = -1;
}

void frmT3LocalInputPilots::cboNewNumber_Click() {
  Int16& pilot = PanelRecord.LocalPilot(SelectedRow);
  pilot = WithPilotNumber(pilot, cboNewNumber->ListIndex());
  cboNewNumber->Close();
  ShowPilotConfiguration();
  DataChanged = -1;
}
