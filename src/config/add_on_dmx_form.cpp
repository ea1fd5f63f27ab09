#include "config/add_on_dmx_form.h"

#include "panel/code_page.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

namespace {

/// Stores the level of the item on show; a list without a selection shows a level that it does not
/// hold, which stays.
void StoreLevel(Int16& level, const ComboBox& list) {
  if (list.ListIndex() >= 0) level = static_cast<Int16>(list.ListIndex() + 1);
}

void RefuseLevel(const QString& text) {
  MsgBox(text, MsgIcon::Information, QStringLiteral("Error"));
}

}  // namespace

frmT3AddOnModuleDMX::frmT3AddOnModuleDMX()
    : ChildForm(Screen::AddOnModuleDMX, ToUnicode(AddOnModuleOf(AddOnModuleDMX).EditorCaption)) {}

void frmT3AddOnModuleDMX::Form_Load() {
  const QStringList levels =
      NumberItems(DMXLevelRange.First, DMXLevelRange.Last, {}, QStringLiteral("%"));
  auto* row = AddRow();
  cboOnLevel = AddList(row, "cboOnLevel", QStringLiteral("DMX On Level"));
  cboOnLevel->SetItems(levels);
  cboOnLevel->Click = [this] { cboOnLevel_Click(); };
  row->addSpacing(8);
  cboOffLevel = AddList(row, "cboOffLevel", QStringLiteral("DMX Off Level"));
  cboOffLevel->SetItems(levels);
  cboOffLevel->Click = [this] { cboOffLevel_Click(); };
  row->addSpacing(8);
  cboFilter = AddList(row, "cboFilter", QStringLiteral("DMX Filter"));
  cboFilter->SetItems(NumberItems(1, 16));
  cboFilter->Click = [this] { cboFilter_Click(); };
  row->addSpacing(8);
  cmdAutoMap = Add<Button>(row, "cmdAutoMap", QStringLiteral("Auto Map"));
  cmdAutoMap->Click = [this] { cmdAutoMap_Click(); };

  grid = new RowGrid(ItemCount, QStringLiteral("Relay "));
  lblRelayName = grid->AddNames("lblRelayName");
  lblDMXChan.Add(this, grid,
                 FieldColumn<&PanelRecordType::DMXChannel>(
                     "cboNewDMX", {.HeaderText = QStringLiteral("Channel")},
                     QStringList{QStringLiteral("None")} +
                         NumberItems(1, DMXChannelRange.Last, QStringLiteral("DMX "))),
                 &frmT3AddOnModuleDMX::ShowDMXConfiguration, &frmT3AddOnModuleDMX::lblDMXChan_Click,
                 &frmT3AddOnModuleDMX::cboNewDMX_Click);
  AddWidget(grid);
  AddHint(
      QStringLiteral("Once the first relay has a channel, Auto Map gives the relays after it the "
                     "channels that follow."));
}

void frmT3AddOnModuleDMX::Form_Activate() {
  ShowInstalledRows(*grid, lblRelayName, PanelRecord.RelayName);
  ShowDMXConfiguration();
}

void frmT3AddOnModuleDMX::ShowDMXConfiguration() {
  lblDMXChan.Show(PanelIOCount());
  cmdAutoMap->setVisible(PanelRecord.DMXChannel(0) != 0);
  cboOnLevel->SetListIndex(PanelRecord.DMXOnLevel - 1);
  cboOffLevel->SetListIndex(PanelRecord.DMXOffLevel - 1);
  cboFilter->SetListIndex(PanelRecord.DMXFilter);
}

void frmT3AddOnModuleDMX::cboOnLevel_Click() {
  if (cboOnLevel->ListIndex() <= PanelRecord.DMXOffLevel - 1) {
    RefuseLevel(QStringLiteral("On Level Must Be Greater Than Off Level"));
    ShowDMXConfiguration();
  }
  StoreLevel(PanelRecord.DMXOnLevel, *cboOnLevel);
  DataChanged = -1;
}

void frmT3AddOnModuleDMX::cboOffLevel_Click() {
  if (cboOffLevel->ListIndex() >= PanelRecord.DMXOnLevel - 1) {
    RefuseLevel(QStringLiteral("Off Level Must Be Less Than On Level"));
    ShowDMXConfiguration();
  }
  StoreLevel(PanelRecord.DMXOffLevel, *cboOffLevel);
  DataChanged = -1;
}

void frmT3AddOnModuleDMX::cboFilter_Click() {
  PanelRecord.DMXFilter = static_cast<Int16>(cboFilter->ListIndex());
  DataChanged = -1;
}

void frmT3AddOnModuleDMX::cmdAutoMap_Click() {
  for (int relay = 0; relay < ItemCount; ++relay) {
    const int channel = PanelRecord.DMXChannel(0) + relay;
    PanelRecord.DMXChannel(relay) =
        static_cast<Int16>(channel > DMXChannelRange.Last ? 0 : channel);
  }
  DataChanged = -1;
  ShowDMXConfiguration();
}
