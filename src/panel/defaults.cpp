#include "panel/defaults.h"

#include "panel/hex.h"
#include "panel/program_state.h"

namespace {

void LoadItemDefaults(PanelRecordType& record) {
  for (int i = 0; i < ItemCount; ++i) {
    const std::string number = {static_cast<char>('0' + (i + 1) / 10),
                                static_cast<char>('0' + (i + 1) % 10)};
    record.RelayName(i) = "RELAY " + number;
    record.GroupName(i) = "GROUP " + number;
    record.InputName(i) = "INPUT " + number;
    record.TimerName(i) = "TIMER " + number;
    record.PresetName(i) = "PRESET " + number;

    record.InputPreset(i) = 0;
    record.RelayTimerType(i) = 0;
    record.RelayPowerOnType(i) = 0;
    record.InputType(i) = 0;
    record.InputEnableTime(i) = 0;
    record.InputDisableTime(i) = 0;
    record.InputTimedOnTime(i) = 10;
    record.LocalPilot(i) = static_cast<Int16>(i);
    record.TimerTimeType(i) = 0;
    record.TimerTime(i) = 0;
    record.TimerDays(i) = 0;
    record.TimerHolidayMonth(i) = 0;
    record.TimerHolidayDate(i) = 1;
    record.OffHoursSweepRelay(i) = 0;
    record.OffHoursSweepGroup(i) = 0;
    record.DMXChannel(i) = 0;
    for (int j = 0; j < ItemCount; ++j) {
      record.InputRelayControl(j, i) = 0;
      record.InputGroupControl(j, i) = 0;
      record.GroupRelayInclude(j, i) = 0;
      record.TimerRelayControl(j, i) = 0;
      record.TimerGroupControl(j, i) = 0;
      record.TimerPresetControl(j, i) = 0;
      record.PresetRelayControl(j, i) = 0;
    }
  }
}

void LoadScalarDefaults(PanelRecordType& record) {
  record.BlinkAlertMinutes = 10;
  record.OverrideMinutes = 120;
  record.AlarmSeconds = 5;
  record.TimedOnOperation = 0;
  record.OffHoursSweepInterval = 0;
  record.DSTEnabled = -1;
  record.DSTStartWeek = 2;
  record.DSTStartMonth = 3;
  record.DSTEndWeek = 1;
  record.DSTEndMonth = 11;
  record.Latitude = 45;
  record.Longitude = 90;
  record.TimeZone = 1;
  record.RTCSource = 0;
  record.PhotocellFilter = 0;
  record.AddOnModuleType = 0;
  for (int node = 0; node < NodeCount; ++node) record.IOCount(node) = node == 0 ? 1 : 0;
  record.ComPort = 1;
  record.DMXOnLevel = 90;
  record.DMXOffLevel = 10;
  record.DMXFilter = 0;
  record.ModBusMode = 0;
  record.ModBusBaud = 0;
  record.ModBusParity = 0;
}

void LoadDeviceDefaults(FennlinkRecord& device, int address) {
  device.DeviceType = 0;
  device.DeviceName = "FLINK " + HexByte(address);
  for (int input = 0; input < DeviceInputCount; ++input) {
    device.DeviceInputType(input) = 0;
    device.DeviceTimedOnTime(input) = 10;
    device.DevicePilot(input) = 0;
    device.DeviceOffLevel(input) = 0;
    device.DeviceOnLevel(input) = 0;
    for (int row = 0; row < ItemCount; ++row) {
      device.DeviceRelayControl(input, row) = 0;
      device.DeviceGroupControl(input, row) = 0;
    }
    device.DevicePreset(input) = 0;
  }
}

void LoadPanelDefaults(PanelRecordType& record) {
  record.TimerTimeType(SpareItem) = ConnectionUSB;
  record.TimerName(SpareItem).clear();
  record.PresetName(SpareItem).clear();
  record.PanelName.clear();
  LoadItemDefaults(record);
  for (int day = 0; day < 7; ++day) {
    record.NormalOpenTime(day) = 32;
    record.NormalCloseTime(day) = 84;
  }
  record.DateOpenTime.elements.fill(NoEntry);
  record.DateCloseTime.elements.fill(NoEntry);
  LoadScalarDefaults(record);
}

void LoadDefaultsInto(PanelRecordType& panel, FennlinkRecordsType& devices,
                      DimmerBlockType& dimmers) {
  LoadPanelDefaults(panel);
  for (int address = 0; address <= DeviceCount; ++address) {
    LoadDeviceDefaults(devices(address), address);
  }
  dimmers = NewDimmerBlock();
}

}  // namespace

void LoadDefaults() {
  DocumentSectionOff = {};
  DocumentFileName = DataPath(QStringLiteral("Documentation/Tamberloom 3.txt"));
  LoadDefaultsInto(PanelRecord, FennlinkRecords, DimmerBlock);
}

ProjectDocument NewPanel() {
  ProjectDocument document;
  LoadDefaultsInto(document.Panel, document.Devices, document.Dimmers);
  return document;
}
