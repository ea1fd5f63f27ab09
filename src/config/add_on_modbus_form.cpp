#include "config/add_on_modbus_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/controls/row_grid.h"

frmT3AddOnModuleModBus::frmT3AddOnModuleModBus()
    : ChildForm(Screen::AddOnModuleModBus,
                ToUnicode(AddOnModuleOf(AddOnModuleModBus).EditorCaption)) {}

void frmT3AddOnModuleModBus::Form_Load() {
  constexpr int captionChars = 8;
  cboMode = AddList(AddRow(), "cboMode", QStringLiteral("Mode"), captionChars);
  cboMode->SetItems(Items(ModBusModes));
  cboMode->Click = [this] { cboMode_Click(); };
  cboBaud = AddList(AddRow(), "cboBaud", QStringLiteral("Baud"), captionChars);
  cboBaud->SetItems(Items(ModBusBauds));
  cboBaud->Click = [this] { cboBaud_Click(); };
  cboParity = AddList(AddRow(), "cboParity", QStringLiteral("Parity"), captionChars);
  cboParity->SetItems(Items(ModBusParities));
  cboParity->Click = [this] { cboParity_Click(); };
}

void frmT3AddOnModuleModBus::Form_Activate() {
  cboMode->SetListIndex(PanelRecord.ModBusMode);
  cboBaud->SetListIndex(PanelRecord.ModBusBaud);
  cboParity->SetListIndex(PanelRecord.ModBusParity);
}

void frmT3AddOnModuleModBus::cboMode_Click() {
  PanelRecord.ModBusMode = static_cast<Int16>(cboMode->ListIndex());
  DataChanged = -1;
}

void frmT3AddOnModuleModBus::cboBaud_Click() {
  PanelRecord.ModBusBaud = static_cast<Int16>(cboBaud->ListIndex());
  DataChanged = -1;
}

void frmT3AddOnModuleModBus::cboParity_Click() {
  PanelRecord.ModBusParity = static_cast<Int16>(cboParity->ListIndex());
  DataChanged = -1;
}
