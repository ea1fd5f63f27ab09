#include "config/cell_grid_form.h"

#include "panel/code_page.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

/// What a cell shows for a code.
struct CellState {
  std::string_view Text;
  QRgb Color;
};

/// The states of a cell by code. Where there are two, any code but 0 means the second, and a click
/// inverts the code bit by bit; where there are three, a click takes the next.
using CellStates = std::span<const CellState>;

namespace {

constexpr auto IncludeStates =
    std::to_array<CellState>({{"No", Colors::Grey}, {"Yes", Colors::White}});
constexpr auto SweepStates =
    std::to_array<CellState>({{"-", Colors::PaleGrey}, {"Off", Colors::LightGrey}});
constexpr auto PresetRelayStates =
    std::to_array<CellState>({{PresetRelayCodes[0], Colors::LightGrey},
                              {PresetRelayCodes[1], Colors::White},
                              {PresetRelayCodes[2], Colors::Grey}});

int StateOf(Int16 code, CellStates states) {
  return states.size() == 2 && code != 0 ? 1 : code;
}

Int16 NextCode(Int16 code, CellStates states) {
  return static_cast<Int16>(states.size() == 2 ? ~code : (code + 1) % 3);
}

}  // namespace

struct CellGridScreen {
  Screen Name;
  QString Caption;
  QString RowWord;
  const char* NameLabel;
  NameArray PanelRecordType::*Names;
  bool InstalledOnly;  ///< Rows beyond PanelIOCount are hidden.
  FieldCells Cells;
  CellStates States;
  const char* Selector = nullptr;  ///< Null: there is nothing to select, and no copy to all.
  QString SelectorWord = {};
  NameArray PanelRecordType::*SelectorNames = nullptr;
};

namespace {

const auto CellGridScreens = std::to_array<CellGridScreen>({
    {Screen::RelayGrouping, QStringLiteral("Relay Grouping"), QStringLiteral("Relay "),
     "lblRelayName", &PanelRecordType::RelayName, true,
     CellsOf<&PanelRecordType::GroupRelayInclude>(), IncludeStates, "cboGroup",
     QStringLiteral("Group"), &PanelRecordType::GroupName},
    {Screen::EditPresets, QStringLiteral("Edit Presets"), QStringLiteral("Relay "), "lblRelayName",
     &PanelRecordType::RelayName, true, CellsOf<&PanelRecordType::PresetRelayControl>(),
     PresetRelayStates, "cboPresetNumber", QStringLiteral("Preset"), &PanelRecordType::PresetName},
    {Screen::OffHoursSweepRelays, QStringLiteral("Off Hours Sweep Relays"),
     QStringLiteral("Relay "), "lblRelayName", &PanelRecordType::RelayName, true,
     CellsOf<&PanelRecordType::OffHoursSweepRelay>(), SweepStates},
    {Screen::OffHoursSweepGroups, QStringLiteral("Off Hours Sweep Groups"),
     QStringLiteral("Group "), "lblGroupName", &PanelRecordType::GroupName, false,
     CellsOf<&PanelRecordType::OffHoursSweepGroup>(), SweepStates},
});

}  // namespace

CellGridForm::CellGridForm(Screen name)
    : ChildForm(name, ScreenRow(CellGridScreens, name).Caption),
      Row(ScreenRow(CellGridScreens, name)) {}

void CellGridForm::Form_Load() {
  if (Row.Selector) {
    cboSelector = AddList(AddRow(), Row.Selector, Row.SelectorWord);
    cboSelector->Click = [this] { cboSelector_Click(); };
    AddSelector(cboSelector);
  }
  grid = new RowGrid(ItemCount, Row.RowWord);
  lblName = grid->AddNames(Row.NameLabel);
  QStringList words;
  for (const CellState& state : Row.States) words << ToUnicode(state.Text);
  lblCell =
      grid->Add<Label>(Row.Cells.Control,
                       {.Chars = 8,
                        .Act = Row.States.size() == 2 ? CellAct::Toggles : CellAct::Cycles,
                        .Words = words,
                        .Put = [this](int row, int state) {
                          SetCell(row, static_cast<Int16>(Row.States.size() == 2 ? -state : state));
                        }});
  lblCell.OnEach(&Label::Click, this, &CellGridForm::lblCell_Click);
  AddWidget(grid);
  if (!Row.Selector) return;
  lblName.OnEach(&Label::MouseDown, this, &CellGridForm::lblName_MouseDown);
  lblName(0).MakeFocusable(CopyToAllAction);
  AddHint(CopyToAllHint(QStringLiteral("relay")));
}

void CellGridForm::Form_Activate() {
  for (int row = 0; row < ItemCount; ++row) {
    lblName(row).SetCaption(ToUnicode((PanelRecord.*Row.Names)(row)));
  }
  grid->ShowRows(RowCount());
  if (!cboSelector) {
    ShowCells();
    return;
  }
  cboSelector->SetItems(ItemNames(PanelRecord.*Row.SelectorNames));
  cboSelector->SetListIndex(0);
}

int CellGridForm::RowCount() const {
  return Row.InstalledOnly ? PanelIOCount() : ItemCount;
}

Int16& CellGridForm::Cell(int row) const {
  return Row.Cells.At(cboSelector ? cboSelector->ListIndex() : 0, row);
}

void CellGridForm::ShowCells() {
  for (int row = 0; row < RowCount(); ++row) {
    const int state = StateOf(Cell(row), Row.States);
    if (state < 0 || state >= static_cast<int>(Row.States.size())) continue;
    const CellState& look = Row.States[static_cast<std::size_t>(state)];
    lblCell(row).SetCaption(ToUnicode(look.Text));
    lblCell(row).SetBackColor(look.Color);
    lblCell(row).SetChecked(state != 0);
  }
}

void CellGridForm::cboSelector_Click() {
  ShowCells();
}

void CellGridForm::lblCell_Click(int index) {
  SetCell(index, NextCode(Cell(index), Row.States));
}

void CellGridForm::SetCell(int row, Int16 code) {
  Cell(row) = code;
  ShowCells();
  DataChanged = -1;
}

void CellGridForm::lblName_MouseDown(int index, int button, int shift) {
  if (IsCopyToAll(button, shift, index)) {
    for (int row = 0; row < RowCount(); ++row) Cell(row) = Cell(0);
  }
  ShowCells();
  DataChanged = -1;
}
