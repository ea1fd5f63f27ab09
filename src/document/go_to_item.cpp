#include "document/go_to_item.h"

#include <array>

#include "shell/controls/row_grid.h"
#include "shell/shell.h"

namespace {

/// The lists that choose which item a screen shows; a device's stand at its address.
struct Selector {
  ItemKind Kind;
  const char* List;
  bool ByPart = false;
};

constexpr auto Selectors = std::to_array<Selector>({
    {ItemKind::Group, "cboGroup"},
    {ItemKind::Input, "cboInput"},
    {ItemKind::Timer, "cboTimerNumber"},
    {ItemKind::Timer, "cboTimer"},
    {ItemKind::Preset, "cboPresetNumber"},
    {ItemKind::Device, "cboFLinkDevice"},
    {ItemKind::Device, "cboFennlinkDevice"},
    {ItemKind::DeviceInput, "cboFLinkDevice"},
    {ItemKind::DeviceInput, "cboFennlinkDevice"},
    {ItemKind::DeviceInput, "cboInput", true},
    {ItemKind::DimmerOutput, "cboDDev"},
    {ItemKind::DimmerOutput, "cboDOut", true},
});

}  // namespace

void GoToItem(Screen screen, const Item& item) {
  UnloadAllForms();
  ChildForm* form = ShowForm(screen);
  if (!form || item.Kind == ItemKind::Panel) return;
  bool chosen = false;
  for (const Selector& selector : Selectors) {
    if (selector.Kind != item.Kind) continue;
    auto* list = form->findChild<ComboBox*>(QLatin1String(selector.List));
    if (!list || !list->isVisible()) continue;
    list->SetListIndex(selector.ByPart ? item.Part : item.Number);
    list->setFocus();
    chosen = true;
  }
  const int row = item.Kind == ItemKind::DeviceInput ? item.Part
                  : item.Kind == ItemKind::Device    ? item.Number - 1
                                                     : item.Number;
  if (chosen && item.Kind != ItemKind::DeviceInput) return;
  for (RowGrid* grid : form->findChildren<RowGrid*>()) {
    if (grid->isVisible() && grid->FocusRow(row)) return;
  }
}
