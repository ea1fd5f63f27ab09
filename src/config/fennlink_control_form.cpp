#include "config/fennlink_control_form.h"

#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/program_state.h"

namespace {

struct FennlinkControlScreen {
  Screen Name;
  QString Caption;
  ControlTable Table;
  DeviceControlTable FennlinkRecord::*Cells;
};

const auto FennlinkControlScreens = std::to_array<FennlinkControlScreen>({
    {Screen::FennlinkInputToRelayControl, QStringLiteral("Fennlink Input To Relay Control"),
     ControlTable::Relay, &FennlinkRecord::DeviceRelayControl},
    {Screen::FennlinkInputToGroupControl, QStringLiteral("Fennlink Input To Group Control"),
     ControlTable::Group, &FennlinkRecord::DeviceGroupControl},
});

}  // namespace

FennlinkControlForm::FennlinkControlForm(Screen name)
    : ControlGridForm(name, ScreenRow(FennlinkControlScreens, name).Caption,
                      ScreenRow(FennlinkControlScreens, name).Table),
      Cells(ScreenRow(FennlinkControlScreens, name).Cells) {}

void FennlinkControlForm::Form_Load() {
  auto* selectors = AddRow();
  AddLabel(selectors, "lblFennlinkDevice", QStringLiteral("Device"));
  cboFennlinkDevice = Add<DeviceList>(selectors, "cboFennlinkDevice");
  cboFennlinkDevice->Click = [this] { cboFennlinkDevice_Click(); };
  AddSelector(cboFennlinkDevice);
  selectors->addWidget(cboFennlinkDevice->ChooseHint());
  lblDeviceType = AddLabel(selectors, "lblDeviceType", {});
  selectors->addSpacing(16);
  lblInput = AddLabel(selectors, "lblInput", QStringLiteral("Input"));
  cboInput = Add<ComboBox>(selectors, "cboInput");
  cboInput->setAccessibleName(QStringLiteral("Input"));
  cboInput->SetWidthInChars(16);
  cboInput->Click = [this] { cboInput_Click(); };
  AddSelector(cboInput);
  lblInputType = AddLabel(selectors, "lblInputType", {});
  AddGrid(AddRow());
}

void FennlinkControlForm::Form_Activate() {
  FormLoading = -1;
  cboFennlinkDevice->Fill();
  FillPresets();
  cboInput->SetItems({QStringLiteral(".")});
  cboFennlinkDevice->SetListIndex(0);
  cboInput->SetListIndex(0);
  FormLoading = 0;
  ShowDevice();
}

void FennlinkControlForm::cboFennlinkDevice_Click() {
  if (FormLoading == 0) ShowDevice();
}

void FennlinkControlForm::cboInput_Click() {
  if (FormLoading == 0) ShowInput();
}

void FennlinkControlForm::cboPreset_Click() {
  if (FormLoading == 0) ControlGridForm::cboPreset_Click();
}

void FennlinkControlForm::ShowDevice() {
  ShowDeviceType();
  ShowInput();
}

void FennlinkControlForm::ShowInput() {
  ShowInputType();
  SetControlOptions();
  SelectedOptions() ? ShowControlledItems() : HideControlledItems();
  ShowControl();
}

void FennlinkControlForm::ShowDeviceType() {
  const FennlinkDeviceType& type = FennlinkDevice(Device().DeviceType);
  lblDeviceType->SetCaption(u' ' + ToUnicode(type.ListText));
  const bool hasInputs = type.InputCount > 0;
  if (hasInputs) ShowInputCBO(type.InputCount);
  for (QWidget* control : {static_cast<QWidget*>(lblInput), static_cast<QWidget*>(cboInput),
                           static_cast<QWidget*>(lblInputType)}) {
    control->setVisible(hasInputs);
  }
}

void FennlinkControlForm::ShowInputCBO(int count) {
  QStringList items;
  for (int input = 0; input < count; ++input) {
    items << DeviceInputText(cboFennlinkDevice->currentText(), input);
  }
  cboInput->SetItems(items);
  cboInput->SetListIndex(0);
}

void FennlinkControlForm::ShowInputType() {
  const FennlinkRecord& device = Device();
  if (FennlinkDevice(device.DeviceType).InputCount == 0) return;
  const int inputType = device.DeviceInputType(cboInput->ListIndex());
  lblInputType->SetCaption(u' ' + ToUnicode(FennlinkInputCaption(device.DeviceType, inputType)));
}

std::optional<ControlOptions> FennlinkControlForm::SelectedOptions() const {
  const FennlinkRecord& device = Device();
  return FennlinkControlOptions(device.DeviceType, device.DeviceInputType(cboInput->ListIndex()),
                                Table);
}

std::optional<InputKind> FennlinkControlForm::SelectedKind() const {
  const FennlinkRecord& device = Device();
  return FennlinkInputKind(device.DeviceType, device.DeviceInputType(cboInput->ListIndex()));
}

ControlGridForm::Elsewhere FennlinkControlForm::SetElsewhere() const {
  const bool hasInputs = FennlinkDevice(Device().DeviceType).InputCount > 0;
  return {QStringLiteral("Fennlink Input To Relay Control"),
          hasInputs ? QStringLiteral("This device does not offer the stored type of the input. "
                                     "Choose another in Configure Fennlink Devices.")
                    : QString()};
}

Int16* FennlinkControlForm::Cell(int row) const {
  return &(Device().*Cells)(cboInput->ListIndex(), row);
}

Int16* FennlinkControlForm::SelectedPreset() const {
  return &Device().DevicePreset(cboInput->ListIndex());
}
