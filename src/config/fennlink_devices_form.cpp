#include "config/fennlink_devices_form.h"

#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/format.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"
#include "panel/shown_percent.h"

namespace {

constexpr int LargestLevel = 255;

const FennlinkFamily& Family(int family) {
  return FennlinkFamilies[static_cast<std::size_t>(family)];
}

QByteArray ControlName(const char* before, int family, const char* behind = "") {
  return FamilyControlName(before, Family(family), behind);
}

QStringList DeviceTypeItems() {
  QStringList items;
  for (const FennlinkDeviceType& type : FennlinkDeviceTypes) items << ToUnicode(type.ListText);
  return items;
}

QStringList InputTypeItems(int deviceType) {
  QStringList items;
  for (const InputKind kind : FennlinkInputKinds(deviceType)) {
    items << ToUnicode(FennlinkListText(kind));
  }
  return items;
}

const QString Minutes = QStringLiteral(" Minutes");

/// " Off 128/255 (50%)"
QString LevelText(const QString& word, int level) {
  return QStringLiteral(" %1 %2/%3 (%4%)")
      .arg(word, ToUnicode(NumberText(level, 3)))
      .arg(LargestLevel)
      .arg(ShownPercent(level));
}

}  // namespace

frmT3ConfigureFennlinkDevices::frmT3ConfigureFennlinkDevices()
    : ChildForm(Screen::ConfigureFennlinkDevices, QStringLiteral("Configure Fennlink Devices")) {}

void frmT3ConfigureFennlinkDevices::Form_Load() {
  auto* row = AddRow();
  AddLabel(row, "lblFLinkDevice", QStringLiteral("Device"));
  cboFLinkDevice = Add<DeviceList>(row, "cboFLinkDevice");
  cboFLinkDevice->Click = [this] { cboFLinkDevice_Click(); };
  AddSelector(cboFLinkDevice);
  row->addWidget(cboFLinkDevice->ChooseHint(false));
  row->addSpacing(16);
  lblFLinkType = AddLabel(row, "lblFLinkType", QStringLiteral("Type"));
  cboFLinkType = Add<ComboBox>(row, "cboFLinkType");
  cboFLinkType->setAccessibleName(QStringLiteral("Type"));
  cboFLinkType->setPlaceholderText(QStringLiteral("Unknown"));
  cboFLinkType->SetItems(DeviceTypeItems());
  cboFLinkType->Click = [this] { cboFLinkType_Click(); };

  for (int family = 0; family < FennlinkFamilyCount; ++family) {
    RowGrid* grid = AddFamilyFrame(family);
    if (FennlinkInputKinds(Family(family).LastType).empty()) {
      AddLevelRows(grid);
    } else {
      AddInputRows(family);
    }
    grid->TabByRows();
  }
}

RowGrid* frmT3ConfigureFennlinkDevices::AddFamilyFrame(int family) {
  FamilyFrame& frame = frames[static_cast<std::size_t>(family)];
  frame.Frame = AddFrame(
      ControlName("fraConfigFLinkDevice", family).constData(),
      QStringLiteral("Fennlink Configuration - ") + ToUnicode(FennlinkFamilyName(Family(family))));
  const int rows = FennlinkDevice(Family(family).LastType).InputCount;
  frame.Grid = new RowGrid(rows);
  for (int input = 0; input < rows; ++input) {
    frame.Grid->SetRowTitle(input, QStringLiteral("Input %1").arg(input + 1));
  }
  const auto numbers =
      frame.Grid->AddNames(ControlName("lblInput", family, "Number").constData(), 8);
  for (int input = 0; input < rows; ++input) numbers(input).SetCaption(numbers(input).toolTip());
  (new QVBoxLayout(frame.Frame))->addWidget(frame.Grid);
  return frame.Grid;
}

void frmT3ConfigureFennlinkDevices::AddInputRows(int family) {
  FamilyFrame& frame = frames[static_cast<std::size_t>(family)];
  frame.InputType = frame.Grid->Add<ComboBox>(ControlName("cboInput", family, "Type").constData(),
                                              {.Chars = 22, .HeaderText = QStringLiteral("Type")});
  static const QStringList times = NumberItems(ShortestTimedOn, LongestTimedOn, {}, Minutes);
  frame.TimedOn.Add(
      this, frame.Grid,
      {.Cells = ControlName("lblInput", family, "TimedOn"),
       .List = ControlName("cboInput", family, "NewTime"),
       .Look = {.Chars = 14, .HeaderText = QStringLiteral("Timed On")},
       .Items = times,
       .Item = [this](int input) { return TimedOnIndex(Device().DeviceTimedOnTime(input)); },
       .Store = [this](int input,
                       int item) { Device().DeviceTimedOnTime(input) = item + ShortestTimedOn; },
       .Text =
           [this](int input) {
             return QStringLiteral(" %1").arg(Device().DeviceTimedOnTime(input)) + Minutes;
           }},
      &frmT3ConfigureFennlinkDevices::ShowConfiguration);
  const QStringList types = InputTypeItems(Family(family).LastType);
  for (int input = 0; input < frame.InputType.Count(); ++input) {
    ComboBox& type = frame.InputType(input);
    type.SetItems(types);
    type.setPlaceholderText(QStringLiteral("Choose a type"));
    type.Click = [this, family, input] { cboInputType_Click(family, input); };
  }
  // The first row is in every frame and keeps the room of the times while all are hidden.
  KeepRoomWhileHidden(frame.TimedOn(0));
}

void frmT3ConfigureFennlinkDevices::AddLevelRows(RowGrid* grid) {
  const auto addLevel = [grid](const char* bar, const char* label, const QString& header) {
    const auto bars = grid->Add<ScrollBar>(bar, {.Chars = 20, .HeaderText = header});
    for (int input = 0; input < bars.Count(); ++input) bars(input).setRange(0, LargestLevel);
    return std::pair(bars, grid->Add<Label>(label, {.Chars = 18, .HeaderText = header}));
  };
  std::tie(hsInputFOffLevel, lblInputFOffLevel) =
      addLevel("hsInputFOffLevel", "lblInputFOffLevel", QStringLiteral("Off level"));
  std::tie(hsInputFOnLevel, lblInputFOnLevel) =
      addLevel("hsInputFOnLevel", "lblInputFOnLevel", QStringLiteral("On level"));
  hsInputFOffLevel.OnEach(&ScrollBar::Change, this,
                          &frmT3ConfigureFennlinkDevices::hsInputFOffLevel_Change);
  hsInputFOnLevel.OnEach(&ScrollBar::Change, this,
                         &frmT3ConfigureFennlinkDevices::hsInputFOnLevel_Change);
}

void frmT3ConfigureFennlinkDevices::Form_Activate() {
  const int remembered = SelectedDevice;
  cboFLinkDevice->Fill();
  cboFLinkDevice->SetListIndex(remembered);
  ShowConfiguration();
  CloseLists();
}

void frmT3ConfigureFennlinkDevices::ShowConfiguration() {
  const bool selected = SelectedDevice != 0;
  lblFLinkType->setVisible(selected);
  cboFLinkType->setVisible(selected);
  const int type = selected ? Device().DeviceType : 0;
  if (selected) cboFLinkType->SetListIndex(type);

  const FamilyFrame* shown = nullptr;
  for (int family = 0; family < FennlinkFamilyCount; ++family) {
    const FamilyFrame& frame = frames[static_cast<std::size_t>(family)];
    const bool own = FennlinkFamilyOf(type) == &Family(family);
    frame.Frame->setVisible(own);
    if (own) shown = &frame;
  }
  if (!shown) return;
  shown->Grid->ShowRows(FennlinkDevice(type).InputCount);
  type == DeviceTypePhotocell ? ShowLevels() : ShowInputs(*shown);
}

void frmT3ConfigureFennlinkDevices::ShowInputs(const FamilyFrame& frame) {
  const FennlinkRecord& device = Device();
  frame.TimedOn.Show(FennlinkDevice(device.DeviceType).InputCount);
  const int timedOn = FennlinkTimedOnIndex(device.DeviceType);
  for (int input = 0; input < FennlinkDevice(device.DeviceType).InputCount; ++input) {
    const int inputType = device.DeviceInputType(input);
    frame.InputType(input).SetListIndex(inputType);
    frame.TimedOn(input).setVisible(inputType == timedOn);
  }
}

void frmT3ConfigureFennlinkDevices::ShowLevels() {
  const FennlinkRecord& device = Device();
  for (int input = 0; input < DeviceInputCount; ++input) {
    const int off = device.DeviceOffLevel(input);
    const int on = device.DeviceOnLevel(input);
    lblInputFOffLevel(input).SetCaption(LevelText(QStringLiteral("Off"), off));
    lblInputFOnLevel(input).SetCaption(LevelText(QStringLiteral("On"), on));
    hsInputFOffLevel(input).SetValue(off);
    hsInputFOnLevel(input).SetValue(on);
  }
}

void frmT3ConfigureFennlinkDevices::cboFLinkDevice_Click() {
  SelectedDevice = cboFLinkDevice->ListIndex();
  ShowConfiguration();
}

void frmT3ConfigureFennlinkDevices::cboFLinkType_Click() {
  Device().DeviceType = static_cast<Int16>(cboFLinkType->ListIndex());
  ShowConfiguration();
  DataChanged = -1;
}

void frmT3ConfigureFennlinkDevices::cboInputType_Click(int family, int index) {
  const ComboBox& list = frames[static_cast<std::size_t>(family)].InputType(index);
  Device().DeviceInputType(index) = static_cast<Int16>(list.ListIndex());
  ShowConfiguration();
  DataChanged = -1;
}

void frmT3ConfigureFennlinkDevices::hsInputFOffLevel_Change(int index) {
  Device().DeviceOffLevel(index) = static_cast<Int16>(hsInputFOffLevel(index).Value());
  ShowConfiguration();
  DataChanged = -1;
}

void frmT3ConfigureFennlinkDevices::hsInputFOnLevel_Change(int index) {
  Device().DeviceOnLevel(index) = static_cast<Int16>(hsInputFOnLevel(index).Value());
  ShowConfiguration();
  DataChanged = -1;
}
