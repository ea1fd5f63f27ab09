#include "config/input_control_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "shell/controls/editor_rows.h"

namespace {

struct InputControlScreen {
  Screen Name;
  QString Caption;
  ControlTable Table;
  ItemTable PanelRecordType::*Cells;
};

const auto InputControlScreens = std::to_array<InputControlScreen>({
    {Screen::InputToRelayControl, QStringLiteral("Input To Relay Control"), ControlTable::Relay,
     &PanelRecordType::InputRelayControl},
    {Screen::InputToGroupControl, QStringLiteral("Input To Group Control"), ControlTable::Group,
     &PanelRecordType::InputGroupControl},
});

}  // namespace

InputControlForm::InputControlForm(Screen name)
    : ControlGridForm(name, ScreenRow(InputControlScreens, name).Caption,
                      ScreenRow(InputControlScreens, name).Table),
      Cells(PanelRecord.*ScreenRow(InputControlScreens, name).Cells) {}

void InputControlForm::Form_Load() {
  auto* selectors = AddRow();
  cboInput = AddList(selectors, "cboInput", QStringLiteral("Input"));
  cboInput->Click = [this] { cboInput_Click(); };
  AddSelector(cboInput);
  lblInputType = AddLabel(selectors, "lblInputType", {});
  AddGrid(selectors);
}

void InputControlForm::Form_Activate() {
  FillPresets();
  cboInput->SetItems(ItemNames(PanelRecord.InputName).mid(0, std::max<int>(PanelIOCount(), 0)));
  cboInput->SetListIndex(0);
  ShowControl();
}

void InputControlForm::cboInput_Click() {
  const int type = PanelRecord.InputType(cboInput->ListIndex());
  if (LocalInputKind(type)) lblInputType->SetCaption(u' ' + ToUnicode(Word(InputTypes, type)));
  SetControlOptions();
  ShowControlledItems();
  ShowControl();
}

std::optional<ControlOptions> InputControlForm::SelectedOptions() const {
  return LocalControlOptions(PanelRecord.InputType(cboInput->ListIndex()), Table);
}

std::optional<InputKind> InputControlForm::SelectedKind() const {
  return LocalInputKind(PanelRecord.InputType(cboInput->ListIndex()));
}

ControlGridForm::Elsewhere InputControlForm::SetElsewhere() const {
  return {QStringLiteral("Input To Relay Control"),
          QStringLiteral("This input is of an unknown type. Choose another in Input Options.")};
}

Int16* InputControlForm::Cell(int row) const {
  const int input = cboInput->ListIndex();
  return input < 0 ? nullptr : &Cells(input, row);
}

Int16* InputControlForm::SelectedPreset() const {
  const int input = cboInput->ListIndex();
  return input < 0 ? nullptr : &PanelRecord.InputPreset(input);
}
