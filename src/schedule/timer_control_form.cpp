#include "schedule/timer_control_form.h"

#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"

/// One kind of target that a firing timer acts on.
struct TimerControlScreen {
  Screen Name;
  QString Caption;
  QString TargetWord;
  const char* NameLabel;
  NameArray PanelRecordType::*Names;
  FieldCells Cells;  ///< Of (timer, target): index into Codes.
  std::span<const std::string_view> Codes;
  bool InstalledOnly;  ///< Rows of points that are not installed are hidden.
};

namespace {

constexpr auto SwitchCodes = std::to_array<std::string_view>({"None", "Turn On", "Turn Off"});
constexpr auto PresetCodes = std::to_array<std::string_view>({"None", "Activate"});

const auto TimerControlScreens = std::to_array<TimerControlScreen>({
    {Screen::TimerToRelayControl, QStringLiteral("Timer To Relay Control"),
     QStringLiteral("Relay "), "lblRelayName", &PanelRecordType::RelayName,
     CellsOf<&PanelRecordType::TimerRelayControl>(), SwitchCodes, true},
    {Screen::TimerToGroupControl, QStringLiteral("Timer To Group Control"),
     QStringLiteral("Group "), "lblGroupName", &PanelRecordType::GroupName,
     CellsOf<&PanelRecordType::TimerGroupControl>(), SwitchCodes, false},
    {Screen::TimerToPresetControl, QStringLiteral("Timer To Preset Control"),
     QStringLiteral("Preset "), "lblPresetName", &PanelRecordType::PresetName,
     CellsOf<&PanelRecordType::TimerPresetControl>(), PresetCodes, false},
});

}  // namespace

TimerControlForm::TimerControlForm(Screen name)
    : ChildForm(name, ScreenRow(TimerControlScreens, name).Caption),
      screen(ScreenRow(TimerControlScreens, name)) {}

void TimerControlForm::Form_Load() {
  cboTimer = AddList(AddRow(), "cboTimer", QStringLiteral("Timer"));
  cboTimer->Click = [this] { cboTimer_Click(); };
  AddSelector(cboTimer);

  grid = new RowGrid(ItemCount, screen.TargetWord);
  lblName = grid->AddNames(screen.NameLabel);
  lblControl.Add(
      this, grid,
      {.Cells = screen.Cells.Control,
       .List = "cboControl",
       .Look = {.Words = Items(screen.Codes)},
       .Items = Items(screen.Codes),
       .Item = [this](int target) { return Cell(target); },
       .Store = [this](int target, int item) { Cell(target) = static_cast<Int16>(item); },
       .OpeningMarks = true},
      &TimerControlForm::ShowControl, &TimerControlForm::lblControl_Click,
      &TimerControlForm::cboControl_Click);
  AddWidget(grid);
}

void TimerControlForm::Form_Activate() {
  cboTimer->SetItems(ItemNames(PanelRecord.TimerName));
  cboTimer->SetListIndex(0);
  const NameArray& names = PanelRecord.*screen.Names;
  if (screen.InstalledOnly) {
    ShowInstalledRows(*grid, lblName, names);
  } else {
    const QStringList captions = ItemNames(names);
    for (int i = 0; i < ItemCount; ++i) lblName(i).SetCaption(captions[i]);
  }
  CloseLists();
  ShowControl();
}

Int16& TimerControlForm::Cell(int target) const {
  return screen.Cells.At(cboTimer->ListIndex(), target);
}

void TimerControlForm::ShowControl() {
  lblControl.Show(ItemCount);
}

void TimerControlForm::cboTimer_Click() {
  CloseLists();
  ShowControl();
}
