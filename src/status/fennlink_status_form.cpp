#include "status/fennlink_status_form.h"

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/live_project.h"
#include "panel/shown_percent.h"

namespace {

/// "3 Push Button", "8 Input", "PhotoCell", "None".
QString TypeText(int deviceType) {
  const FennlinkDeviceType& type = FennlinkDevice(deviceType);
  const FennlinkFamily* family = FennlinkFamilyOf(deviceType);
  if (family && !family->Name.empty()) {
    return ToUnicode(FirstWord(type.ListText)) + u' ' + ToUnicode(family->Name);
  }
  return ToUnicode(type.DocumentText.empty() ? type.ListText : type.DocumentText);
}

}  // namespace

frmT3FennlinkStatus::frmT3FennlinkStatus()
    : StatusForm(Screen::FennlinkStatus, QStringLiteral("Fennlink Status")) {}

void frmT3FennlinkStatus::Form_Load() {
  AddWalkButton(AddUpdateControls(), Walk::Stations);
  selector = new QWidget;
  AddWidget(selector);
  auto* row = new QHBoxLayout(selector);
  row->setContentsMargins(0, 0, 0, 0);
  row->setAlignment(Qt::AlignLeft);
  AddLabel(row, "lblFLinkDevice", QStringLiteral("Device"));
  cboFLinkDevice = Add<DeviceList>(row, "cboFLinkDevice");
  cboFLinkDevice->Click = [this] { cboFLinkDevice_Click(); };
  AddSelector(cboFLinkDevice);
  row->addWidget(cboFLinkDevice->ChooseHint());
  row->addSpacing(16);
  lblFLinkDeviceType = Add<Label>(row, "lblFLinkDeviceType");
  for (int family = 0; family < FennlinkFamilyCount; ++family) AddFamilyFrame(family);
}

void frmT3FennlinkStatus::AddFamilyFrame(int index) {
  const FennlinkFamily& family = FennlinkFamilies[static_cast<std::size_t>(index)];
  StatusFrame& frame = frames[static_cast<std::size_t>(index)];
  frame.Frame =
      AddFrame(FamilyControlName("fraStatus", family).constData(),
               QStringLiteral("Fennlink Status - ") + ToUnicode(FennlinkFamilyName(family)));
  auto* lines = new QVBoxLayout(frame.Frame);
  auto* first = new QHBoxLayout;
  first->setAlignment(Qt::AlignLeft);
  lines->addLayout(first);
  constexpr int textChars = 20;
  frame.Present = Add<Label>(first, FamilyControlName("lblPresent", family).constData());
  frame.Present->SetWidthInChars(textChars);
  frame.Present->SetAlignment(Qt::AlignCenter);
  if (family.FirstType == DeviceTypePhotocell) {
    lblLightLevel = Add<Label>(first, "lblLightLevel");
    lblLightLevel->SetWidthInChars(textChars);
    lblLightLevel->setAccessibleName(QStringLiteral("Light Level"));
  }
  first->addStretch(1);

  const int rows = FennlinkDevice(family.LastType).InputCount;
  frame.Grid = new RowGrid(rows);
  const auto numbers =
      frame.Grid->AddNames(FamilyControlName("lblInput", family, "Number").constData());
  for (int input = 0; input < rows; ++input) {
    const QString number = QStringLiteral("Input %1").arg(input + 1);
    frame.Grid->SetRowTitle(input, number);
    numbers(input).SetCaption(number);
  }
  frame.InputStatus =
      frame.Grid->Add<Label>(FamilyControlName("lblInput", family, "Status").constData(),
                             {.Chars = 6, .HeaderText = QStringLiteral("Status")});
  lines->addWidget(frame.Grid, 0, Qt::AlignLeft);
}

void frmT3FennlinkStatus::ShowConnected(bool connected) {
  selector->setVisible(connected);
  HideFrames();
  cboFLinkDevice->Fill();
  // No choice of the user: the first reading shows it.
  cboFLinkDevice->setCurrentIndex(0);
}

void frmT3FennlinkStatus::HideFrames() {
  for (const StatusFrame& frame : frames) frame.Frame->setVisible(false);
  lblFLinkDeviceType->SetCaption({});
}

void frmT3FennlinkStatus::cboFLinkDevice_Click() {
  HideFrames();
  Update();
}

void frmT3FennlinkStatus::ReadStatus() {
  const int device = cboFLinkDevice->ListIndex();
  if (!GetDeviceStatus(device)) {
    PanelConnectionLost();
  } else if (device == cboFLinkDevice->ListIndex()) {
    ShowStatus(device);
  }
}

bool frmT3FennlinkStatus::GetDeviceStatus(int device) {
  const std::optional<DeviceBytes> inputs = ReadDeviceInputs();
  if (!inputs) return false;
  for (int i = 0; i < DeviceInputCount; ++i) {
    InputFlags(i) = ((*inputs)(device) >> i & 1) != 0 ? -1 : 0;
  }
  const std::optional<DeviceBytes> present = ReadDevicesPresent();
  if (!present) return false;
  DevicePresent = (*present)(device) != 0 ? -1 : 0;
  const std::optional<DeviceBytes> levels = ReadDeviceLevels();
  if (!levels) return false;
  AnalogLevel = (*levels)(device);
  return true;
}

void frmT3FennlinkStatus::ShowStatus(int device) {
  const int type = FennlinkRecords(device).DeviceType;
  const FennlinkFamily* own = FennlinkFamilyOf(type);
  const bool present = DevicePresent != 0;
  lblFLinkDeviceType->SetCaption(device == 0 ? QString() : TypeText(type));
  for (std::size_t family = 0; family < frames.size(); ++family) {
    const StatusFrame& frame = frames[family];
    frame.Frame->setVisible(own == &FennlinkFamilies[family]);
    if (own != &FennlinkFamilies[family]) continue;
    frame.Present->SetCaption(present ? QStringLiteral("Connected")
                                      : QStringLiteral("No Response"));
    frame.Present->SetBackColor(present ? Colors::LightGreen : Colors::LightRed);
    const int inputs = present ? FennlinkDevice(type).InputCount : 0;
    frame.Grid->ShowRows(inputs);
    for (int i = 0; i < frame.InputStatus.Count(); ++i) {
      i < inputs ? ShowOnOff(frame.InputStatus(i), InputFlags(i) != 0)
                 : frame.InputStatus(i).SetCaption({});
    }
  }
  lblLightLevel->SetCaption(
      present ? QStringLiteral("%1/255 (%2%)").arg(AnalogLevel).arg(ShownPercent(AnalogLevel))
              : QString());
}
