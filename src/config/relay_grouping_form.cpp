#include "config/relay_grouping_form.h"

#include "panel/panel_record.h"
#include "panel/program_state.h"
#include "shell/editor_rows.h"

frmT3RelayGrouping::frmT3RelayGrouping()
    : ChildForm(QStringLiteral("frmT3RelayGrouping"), QStringLiteral("Relay Grouping")) {}

void frmT3RelayGrouping::Form_Load() {
  auto* row = AddRow();
  AddLabel(row, "lblGroup", QStringLiteral("Group"));
  cboGroup = Add<ComboBox>(row, "cboGroup");
  cboGroup->Click = [this] { cboGroup_Click(); };

  grid = new RowGrid(ItemCount, QStringLiteral("Relay "));
  lblRelayName = grid->AddNames("lblRelayName");
  lblInclude = grid->Add<Label>("lblInclude", {.Chars = 8});
  lblInclude.OnEach(&Label::Click, this, &frmT3RelayGrouping::lblInclude_Click);
  lblRelayName.OnEach(&Label::MouseDown, this, &frmT3RelayGrouping::lblRelayName_MouseDown);
  lblRelayName(0).MakeFocusable();
  AddWidget(grid);
  AddHint(CopyToAllHint(QStringLiteral("relay")));
}

void frmT3RelayGrouping::Form_Activate() {
  ShowInstalledRows(*grid, lblRelayName, PanelRecord.RelayName);
  cboGroup->SetItems(ItemNames(PanelRecord.GroupName));
  cboGroup->SetListIndex(0);
}

Int16& frmT3RelayGrouping::Include(int relay) const {
  return PanelRecord.GroupRelayInclude(cboGroup->ListIndex(), relay);
}

void frmT3RelayGrouping::ShowGroupConfiguration() {
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    const bool included = Include(relay) != 0;
    lblInclude(relay).SetCaption(included ? QStringLiteral("Yes") : QStringLiteral("No"));
    lblInclude(relay).SetBackColor(included ? Colors::White : Colors::Grey);
  }
}

void frmT3RelayGrouping::cboGroup_Click() {
  ShowGroupConfiguration();
}

void frmT3RelayGrouping::lblInclude_Click(int index) {
  Include(index) = static_cast<Int16>(~Include(index));
  ShowGroupConfiguration();
  DataChanged = -1;
}

void frmT3RelayGrouping::lblRelayName_MouseDown(int index, int button, int shift) {
  if (IsCopyToAll(button, shift, index)) {
    for (int relay = 0; relay < PanelIOCount(); ++relay) Include(relay) = Include(0);
  }
  ShowGroupConfiguration();
  DataChanged = -1;
}
