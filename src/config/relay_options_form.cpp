#include "config/relay_options_form.h"

#include "panel/program_state.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

frmT3RelayOutputOptions::frmT3RelayOutputOptions()
    : ChildForm(Screen::RelayOutputOptions, QStringLiteral("Relay Output Options")) {}

void frmT3RelayOutputOptions::Form_Load() {
  grid = new RowGrid(ItemCount, QStringLiteral("Relay "));
  lblRelayName = grid->AddNames("lblRelayName");
  lblTimerType.Add(this, grid,
                   FieldColumn<&PanelRecordType::RelayTimerType>(
                       "cboNewTimerType",
                       {.Header = "lblTimerTypeHeater", .HeaderText = QStringLiteral("Timers")}),
                   &frmT3RelayOutputOptions::ShowRelayConfiguration,
                   &frmT3RelayOutputOptions::lblTimerType_Click,
                   &frmT3RelayOutputOptions::cboNewTimerType_Click);
  lblPowerOnType.Add(this, grid,
                     FieldColumn<&PanelRecordType::RelayPowerOnType>(
                         "cboNewPowerOnType",
                         {.Header = "lblPowerUpHeader", .HeaderText = QStringLiteral("PowerOn")}),
                     &frmT3RelayOutputOptions::ShowRelayConfiguration,
                     &frmT3RelayOutputOptions::lblPowerOnType_Click,
                     &frmT3RelayOutputOptions::cboNewPowerOnType_Click);
  lblRelayName.OnEach(&Label::MouseDown, this, &frmT3RelayOutputOptions::lblRelayName_MouseDown);
  lblRelayName(0).MakeFocusable(CopyToAllAction);
  AddWidget(grid);
  AddHint(CopyToAllHint(QStringLiteral("relay")));
}

void frmT3RelayOutputOptions::Form_Activate() {
  ShowInstalledRows(*grid, lblRelayName, PanelRecord.RelayName);
  ShowRelayConfiguration();
}

void frmT3RelayOutputOptions::ShowRelayConfiguration() {
  lblTimerType.Show(PanelIOCount());
  lblPowerOnType.Show(PanelIOCount());
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
