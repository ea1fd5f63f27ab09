#include "config/names_form.h"

#include "panel/code_page.h"
#include "panel/field_facts.h"
#include "panel/format.h"
#include "panel/hex.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/name_keys.h"

struct NamesScreen {
  Screen Name;
  QString Caption;
  const char* NumberLabel;
  QString Word;
  NameArray PanelRecordType::*Names;  ///< Null: the names of the bus devices.
  bool InstalledOnly = false;         ///< Rows beyond PanelIOCount are hidden.
};

namespace {

const auto NamesScreens = std::to_array<NamesScreen>({
    {Screen::EditRelayNames, QStringLiteral("Edit Relay Names"), "lblRelayNumber",
     QStringLiteral("Relay "), &PanelRecordType::RelayName, true},
    {Screen::EditGroupNames, QStringLiteral("Edit Group Names"), "lblGroupNumber",
     QStringLiteral("Group "), &PanelRecordType::GroupName},
    {Screen::EditInputNames, QStringLiteral("Edit Input Names"), "lblInputNumber",
     QStringLiteral("Input "), &PanelRecordType::InputName, true},
    {Screen::EditTimerNames, QStringLiteral("Edit Timer Names"), "lblTimerNumber",
     QStringLiteral("Timer "), &PanelRecordType::TimerName},
    {Screen::EditPresetNames, QStringLiteral("Edit Preset Names"), "lblPresetNumber",
     QStringLiteral("Preset "), &PanelRecordType::PresetName},
    {Screen::EditFennlinkNames, QStringLiteral("Edit Fennlink Names"), "lblFennlinkNumber",
     QStringLiteral("FL Node "), nullptr},
});

constexpr int NumberChars = 12;
constexpr int NameDisplayCells = 10;
constexpr int DeviceDisplayCells = 8;

}  // namespace

NamesForm::NamesForm(Screen name)
    : ChildForm(name, ScreenRow(NamesScreens, name).Caption), Row(ScreenRow(NamesScreens, name)) {}

int NamesForm::RowCount() const {
  return Row.Names ? ItemCount : DeviceCount;
}

std::string& NamesForm::Name(int row) const {
  return Row.Names ? (PanelRecord.*Row.Names)(row) : FennlinkRecords(row + 1).DeviceName;
}

void NamesForm::Form_Load() {
  display = new NameDisplay(Row.Names ? NameDisplayCells : DeviceDisplayCells);
  AddWidget(display);
  grid = new RowGrid(RowCount(), Row.Word);
  const auto lblNumber = grid->AddNames(Row.NumberLabel, NumberChars);
  txtName = grid->Add<TextBox>(
      (Row.Names ? FactsOf(Row.Names) : FactsOf(&FennlinkRecord::DeviceName)).Where.Value.Control,
      {.HeaderText = QStringLiteral("Name")});
  for (int row = 0; row < RowCount(); ++row) {
    const QString number =
        Row.Names ? TwoDigits(row + 1) : QString::fromStdString(HexByte(row + 1));
    lblNumber(row).SetCaption(Row.Word + number);
    grid->SetRowTitle(row, lblNumber(row).Caption());
    txtName(row).setFixedHeight(lblNumber(row).sizeHint().height());
    FilterNameKeys(txtName(row));
  }
  txtName.OnEach(&TextBox::Change, this, &NamesForm::txtName_Change);
  txtName.OnEach(&TextBox::Click, this, &NamesForm::txtName_Click);
  AddWidget(grid);
  AddHint(
      QStringLiteral("Names take A-Z, 0-9, blanks and . - / * # @ ( ) : ? A click or Enter shows a "
                     "name as the panel does."));
}

void NamesForm::Form_Activate() {
  grid->ShowRows(Row.InstalledOnly ? PanelIOCount() : RowCount());
  FormLoading = -1;
  for (int row = 0; row < RowCount(); ++row) txtName(row).SetText(ToUnicode(Name(row)));
  FormLoading = 0;
}

void NamesForm::ShowNameChar(int index) {
  display->ShowName(Name(index));
}

void NamesForm::txtName_Change(int index) {
  if (FormLoading) return;
  Name(index) = FromUnicode(txtName(index).Text());
  DataChanged = -1;
  ShowNameChar(index);
}

void NamesForm::txtName_Click(int index) {
  ShowNameChar(index);
}
