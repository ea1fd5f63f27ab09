#include "config/names_form.h"

#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/hex.h"
#include "panel/program_state.h"

struct NamesScreen {
  std::string_view Name;
  QString Caption;
  const char* NumberLabel;
  const char* TextBoxName;
  QString Word;
  NameArray PanelRecordType::*Names;  ///< Null: the names of the bus devices.
  bool InstalledOnly = false;         ///< Rows beyond PanelIOCount are hidden.
};

namespace {

const auto NamesScreens = std::to_array<NamesScreen>({
    {"frmT3EditRelayNames", QStringLiteral("Edit Relay Names"), "lblRelayNumber", "txtRelayName",
     QStringLiteral("Relay "), &PanelRecordType::RelayName, true},
    {"frmT3EditGroupNames", QStringLiteral("Edit Group Names"), "lblGroupNumber", "txtGroupName",
     QStringLiteral("Group "), &PanelRecordType::GroupName},
    {"frmT3EditInputNames", QStringLiteral("Edit Input Names"), "lblInputNumber", "txtInputName",
     QStringLiteral("Input "), &PanelRecordType::InputName, true},
    {"frmT3EditTimerNames", QStringLiteral("Edit Timer Names"), "lblTimerNumber", "txtTimerName",
     QStringLiteral("Timer "), &PanelRecordType::TimerName},
    {"frmT3EditPresetNames", QStringLiteral("Edit Preset Names"), "lblPresetNumber",
     "txtPresetName", QStringLiteral("Preset "), &PanelRecordType::PresetName},
    {"frmT3EditFennlinkNames", QStringLiteral("Edit Fennlink Names"), "lblFennlinkNumber",
     "txtFennlinkName", QStringLiteral("FL Node "), nullptr},
});

constexpr int NumberChars = 12;
constexpr int NameDisplayCells = 10;
constexpr int DeviceDisplayCells = 8;

}  // namespace

NamesForm::NamesForm(const char* name)
    : ChildForm(QString::fromLatin1(name), ScreenRow(NamesScreens, name).Caption),
      Screen(ScreenRow(NamesScreens, name)) {}

int NamesForm::RowCount() const {
  return Screen.Names ? ItemCount : DeviceCount;
}

std::string& NamesForm::Name(int row) const {
  return Screen.Names ? (PanelRecord.*Screen.Names)(row) : FennlinkRecords(row + 1).DeviceName;
}

void NamesForm::Form_Load() {
  display = new NameDisplay(Screen.Names ? NameDisplayCells : DeviceDisplayCells);
  AddWidget(display);
  grid = new RowGrid(RowCount(), Screen.Word);
  const auto lblNumber = grid->AddNames(Screen.NumberLabel, NumberChars);
  txtName = grid->Add<TextBox>(Screen.TextBoxName, {.HeaderText = QStringLiteral("Name")});
  for (int row = 0; row < RowCount(); ++row) {
    const QString number =
        Screen.Names ? TwoDigits(row + 1) : QString::fromStdString(HexByte(row + 1));
    lblNumber(row).SetCaption(Screen.Word + number);
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
  grid->ShowRows(Screen.InstalledOnly ? PanelIOCount() : RowCount());
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
