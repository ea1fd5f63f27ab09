#include "shell/controls/go_to_item.h"

#include <algorithm>
#include <array>
#include <vector>

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

/// The lists by which a screen chooses items of this kind, and the item's place in each. The choice
/// in one may bring up the next.
std::vector<std::pair<ComboBox*, int>> SelectorsOf(const ChildForm& form, const Item& item) {
  std::vector<std::pair<ComboBox*, int>> found;
  for (const Selector& selector : Selectors) {
    if (selector.Kind != item.Kind) continue;
    auto* list = form.findChild<ComboBox*>(QLatin1String(selector.List));
    if (!list) continue;
    found.emplace_back(list, selector.ByPart ? item.Part : item.Number);
  }
  return found;
}

/// Whether the item is one that the screen chooses, and needs no row.
bool ChooseItem(const ChildForm& form, const Item& item) {
  bool chosen = false;
  for (const auto& [list, index] : SelectorsOf(form, item)) {
    if (!list->isVisible()) continue;
    list->SetListIndex(index);
    list->setFocus();
    chosen = true;
  }
  return chosen && item.Kind != ItemKind::DeviceInput;
}

bool FocusRow(const ChildForm& form, int row) {
  const auto grids = form.findChildren<RowGrid*>();
  return std::any_of(grids.begin(), grids.end(),
                     [row](RowGrid* grid) { return grid->isVisible() && grid->FocusRow(row); });
}

int RowOf(const Item& item) {
  return item.Kind == ItemKind::DeviceInput ? item.Part
         : item.Kind == ItemKind::Device    ? item.Number - 1
                                            : item.Number;
}

QWidget* ControlAt(const ChildForm& form, const QString& name) {
  auto* control = form.findChild<QWidget*>(name);
  // A label learns whether it takes the focus when it is polished.
  if (control) control->ensurePolished();
  const bool takesFocus = control && control->isVisible() && control->isEnabled() &&
                          control->focusPolicy() & Qt::TabFocus;
  return takesFocus ? control : nullptr;
}

}  // namespace

void GoToItem(Screen screen, const Item& item) {
  const Showing showing;
  UnloadAllForms();
  const ChildForm* form = ShowForm(screen);
  if (!form || item.Kind == ItemKind::Panel || ChooseItem(*form, item)) return;
  FocusRow(*form, RowOf(item));
}

bool ShowsItem(const ChildForm& form, const Item& item) {
  const auto selectors = SelectorsOf(form, item);
  return std::all_of(selectors.begin(), selectors.end(), [](const auto& selector) {
    return !selector.first->isVisible() || selector.first->ListIndex() == selector.second;
  });
}

void GoToSetting(ChildForm* front, const Setting& setting) {
  const Showing showing;
  const Spot spot = SpotOf(setting);
  const Item item = ItemOf(setting);
  if (front && front->ShowsToo(item)) return;
  ChildForm* form = front;
  if (form && form->Which() == spot.By.On) {
    form->ShowAnew();
  } else {
    UnloadAllForms();
    form = ShowForm(spot.By.On);
  }
  if (!form) return;
  if (spot.Month >= 0) {
    form->findChild<OptionButton*>(QStringLiteral("optMonth(%1)").arg(spot.Month))->Select();
  }
  // The slots of a dimmer's output, one of which the lists show.
  if (auto* slot = form->findChild<ComboBox*>(QStringLiteral("cboCONum"))) {
    const bool ofSlot = QByteArray(spot.By.Control).startsWith("cboCO");
    if (ofSlot && slot->isVisible()) slot->SetListIndex(spot.Row);
  }
  const bool chosen = ChooseItem(*form, item);
  const QStringList names = QString::fromLatin1(spot.By.Control).split(u'|');
  const auto element = [&](int index) {
    return ControlAt(*form, QStringLiteral("%1(%2)").arg(names.first()).arg(index));
  };
  QWidget* control = nullptr;
  for (const QString& name : names) {
    if (!control) control = ControlAt(*form, name);
  }
  if (!control) control = element(spot.Row);
  // Options and the like are not told apart by the item.
  if (!control || !qobject_cast<RowGrid*>(control->parentWidget())) {
    if (QWidget* first = element(0)) control = first;
  }
  if (control) {
    auto* option = qobject_cast<OptionButton*>(control);
    (option ? option->Chosen() : control)->setFocus(Qt::OtherFocusReason);
    // A name is shown as the panel shows it.
    if (const auto* box = qobject_cast<TextBox*>(control); box && box->Click) box->Click();
  } else if (!chosen) {
    FocusRow(*form, RowOf(item));
  }
}
