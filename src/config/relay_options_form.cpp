#include "config/relay_options_form.h"

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/editor_rows.h"

frmT3RelayOutputOptions::frmT3RelayOutputOptions()
    : ChildForm(Screen::RelayOutputOptions, QStringLiteral("Relay Output Options")) {}

void frmT3RelayOutputOptions::Form_Load() {
  grid = new RowGrid(ItemCount, QStringLiteral("Relay "));
  lblRelayName = grid->AddNames("lblRelayName");
  lblTimerType = grid->Add<Label>("lblTimerType", {.Header = "lblTimerTypeHeater",
                                                   .HeaderText = QStringLiteral("Timers"),
                                                   .Act = CellAct::OpensList,
                                                   .Words = Items(RelayTimerTypes)});
  lblPowerOnType = grid->Add<Label>("lblPowerOnType", {.Header = "lblPowerUpHeader",
                                                       .HeaderText = QStringLiteral("PowerOn"),
                                                       .Act = CellAct::OpensList,
                                                       .Words = Items(RelayPowerOnTypes)});
  lblTimerType.OnEach(&Label::Click, this, &frmT3RelayOutputOptions::lblTimerType_Click);
  lblPowerOnType.OnEach(&Label::Click, this, &frmT3RelayOutputOptions::lblPowerOnType_Click);
  lblRelayName.OnEach(&Label::MouseDown, this, &frmT3RelayOutputOptions::lblRelayName_MouseDown);
  lblRelayName(0).MakeFocusable(CopyToAllAction);
  AddWidget(grid);

  cboNewTimerType = new InPlaceList(this, "cboNewTimerType", Items(RelayTimerTypes));
  cboNewTimerType->Click = [this] { cboNewTimerType_Click(); };
  cboNewPowerOnType = new InPlaceList(this, "cboNewPowerOnType", Items(RelayPowerOnTypes));
  cboNewPowerOnType->Click = [this] { cboNewPowerOnType_Click(); };
  AddHint(CopyToAllHint(QStringLiteral("relay")));
}

void frmT3RelayOutputOptions::Form_Activate() {
  ShowInstalledRows(*grid, lblRelayName, PanelRecord.RelayName);
  ShowRelayConfiguration();
}

void frmT3RelayOutputOptions::ShowRelayConfiguration() {
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    lblTimerType(relay).SetCaption(cboNewTimerType->ValueText(PanelRecord.RelayTimerType(relay)));
    lblPowerOnType(relay).SetCaption(
        cboNewPowerOnType->ValueText(PanelRecord.RelayPowerOnType(relay)));
  }
}

void frmT3RelayOutputOptions::lblTimerType_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewTimerType->Open(lblTimerType(index), PanelRecord.RelayTimerType(index));
}

void frmT3RelayOutputOptions::lblPowerOnType_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewPowerOnType->Open(lblPowerOnType(index), PanelRecord.RelayPowerOnType(index));
}

void frmT3RelayOutputOptions::cboNewTimerType_Click() {
  PanelRecord.RelayTimerType(SelectedRow) = static_cast<Int16>(cboNewTimerType->ListIndex());
  cboNewTimerType->Close();
  ShowRelayConfiguration();
  DataChanged = -1;
}

void frmT3RelayOutputOptions::cboNewPowerOnType_Click() {
  PanelRecord.RelayPowerOnType(SelectedRow) = static_cast<Int16>(cboNewPowerOnType->ListIndex());
  cboNewPowerOnType->Close();
  ShowRelayConfiguration();
  DataChanged = -1;
}

void frmT3RelayOutputOptions::lblRelayName_MouseDown(int index, int button, int shift) {
  CloseLists();
  if (IsCopyToAll(button, shift, index)) {
    for (int relay = 0; relay < PanelIOCount(); ++relay) {
      PanelRecord.RelayTimerType(relay) = PanelRecord.RelayTimerType(0);
      PanelRecord.RelayPowerOnType(relay) = PanelRecord.RelayPowerOnType(0);
    }
  }
  ShowRelayConfiguration();
  DataChanged = -1;
}
