#include "document/sample_panel.h"

#include "panel/live_dimmers.h"
#include "panel/live_project.h"

namespace {

PanelRecordType& Sample = PanelRecord;

Int16 Code(int value) {
  return static_cast<Int16>(value);
}

void SetTimer(int timer, int type, int time, int days) {
  Sample.TimerTimeType(timer) = Code(type);
  Sample.TimerTime(timer) = Code(time);
  Sample.TimerDays(timer) = Code(days);
}

void EveryRelayAndInput() {
  Sample.IOCount(0) = 8;
  Sample.IOCount(1) = 2;
  Sample.IOCount(11) = 3;
  for (Int16 i = 0; i < ItemCount; ++i) {
    const Int16 mirror = 47 - i;
    Sample.RelayTimerType(i) = Code((i + 7) % 8);    // 7 has no word
    Sample.RelayPowerOnType(i) = Code((i + 1) % 5);  // nor has 4
    Sample.InputType(i) = i % 14;                    // nor has 13
    Sample.InputTimedOnTime(i) = i == 5 ? 999 : i;
    Sample.InputEnableTime(i) = 2 * i;
    Sample.InputDisableTime(i) = 60 + i;
    Sample.InputPreset(i) = mirror;
    Sample.InputRelayControl(i, i) = 1;
    Sample.InputRelayControl(i, 47) = 2;
    Sample.InputGroupControl(i, mirror) = 4;
    Sample.InputGroupControl(i, 0) = 1;
    Sample.GroupRelayInclude(i, mirror) = -1;
    Sample.GroupRelayInclude(0, i) = 1;
    Sample.PresetRelayControl(i, i) = 1 + i % 3;  // 3 touches the relay, neither off nor on
    Sample.PresetRelayControl(i, 0) = 2;
    Sample.LocalPilot(i) = Code(i % 4 * 64 + i);
    Sample.OffHoursSweepRelay(i) = i % 2 == 0 ? -1 : 0;
    Sample.OffHoursSweepGroup(i) = i % 3 == 0 ? 1 : 0;
    Sample.DMXChannel(i) = i * 11;
  }
}

void EveryTimer() {
  const Int16 offsets[] = {0, 1, 45, 255, 256, 700, 998, 999};
  for (Int16 t = 0; t < ItemCount; ++t) {
    SetTimer(t, t, t, 0);
    Sample.TimerRelayControl(t, t) = 1;
    Sample.TimerRelayControl(t, 47 - t) = 2;
    Sample.TimerGroupControl(t, t) = 2;
    Sample.TimerGroupControl(t, 0) = 1;
    Sample.TimerPresetControl(t, t) = 1;
    Sample.TimerPresetControl(t, 2) = -1;
  }
  for (Int16 event = 0; event < 8; ++event) {
    SetTimer(24 + event, 24 + 32 * event + offsets[event] / 256, offsets[event] % 256, 1 << event);
  }
  SetTimer(32, 27, 0, 0xFF);
  SetTimer(33, 28, 0, 0x7F);
  SetTimer(34, -1, 0, 0x80);
  SetTimer(35, 252, 0, 0x55);
  SetTimer(36, 23, 61, 0);
  Sample.TimerHolidayMonth(36) = 2;
  Sample.TimerHolidayDate(36) = 31;
}

void EveryDevice() {
  for (int d = 1; d <= 9; ++d) {
    FennlinkRecord& device = FennlinkRecords(d);
    device.DeviceType = Code(d);
    for (Int16 input = 0; input < DeviceInputCount; ++input) {
      device.DeviceInputType(input) = input;
      device.DeviceTimedOnTime(input) = 5 + input;
      device.DeviceRelayControl(input, 2 * d) = 1;
      device.DeviceGroupControl(input, 3 * d) = 1;
      device.DevicePreset(input) = 40 + input;
      device.DevicePilot(input) = Code((input + d) % 5 * 64 + input);  // source 4 has no word
      device.DeviceOffLevel(input) = 30 * input;
      device.DeviceOnLevel(input) = 255;
    }
  }
  FennlinkRecord& second = FennlinkRecords(26);
  second.DeviceType = 7;
  for (Int16 input = 0; input < 4; ++input) second.DeviceInputType(input) = 7 + input;
  second.DeviceRelayControl(1, 47) = 1;
  second.DeviceRelayControl(2, 40) = 3;
  FennlinkRecords(64).DeviceType = 12;  // unknown: named as a source, but without rows
  FennlinkRecords(64).DeviceRelayControl(7, 0) = 1;
}

void EveryDimmerSlot() {
  Int16 code = 0;
  for (const Int16 dev : {Int16{0}, Int16{11}}) {
    DimSetEnabled(dev, 1);
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      DimSetTrackMode(dev, out, out);
      for (Int16 slot = 0; slot < ControlSlotCount; ++slot, ++code) {
        DimSetCtlType(dev, out, slot, Code((slot + 1) % 6));  // 5 has no word
        DimSetCtlDevice(dev, out, slot, slot < 8 ? 0 : 60);
        DimSetCtlNumber(dev, out, slot, slot);
        DimSetCtlAction(dev, out, slot, code);
        DimSetCtlRevert(dev, out, slot, code);
        DimSetCtlInstant(dev, out, slot, slot % 2);
      }
    }
  }
  const Int16 fades[] = {15, 16, 42, 43};
  for (Int16 out = 0; out < DimmerOutputCount; ++out) {
    DimSetFade(11, out, fades[out]);
    DimSetMinPC(11, out, out % 2);
    DimSetMaxPC(11, out, out / 2);
    DimSetMin(11, out, 10 + out);
    DimSetDMX(11, out, out * 170);
    DimSetPCNode(11, out, 1);
    DimSetPCDev(11, out, 63);
    DimSetTarget(11, out, 200);
    DimSetOnLevel(11, out, 80);
    DimSetOffLevel(11, out, 5);
    DimSetRelay(11, out, 0, 1);
    DimSetRelay(11, out, 9 + out, 1);
    DimSetRelay(11, out, 47, 1);
  }
}

}  // namespace

void LoadEveryCode() {
  Sample.AddOnModuleType = 1;
  EveryRelayAndInput();
  EveryTimer();
  EveryDevice();
  EveryDimmerSlot();
  for (Int16 day = 0; day < 7; ++day) {
    Sample.NormalOpenTime(day) = 16 * day;  // Saturday: 96, a whole day
    Sample.NormalCloseTime(day) = 95 - day;
  }
  for (Int16 open = 0; open < 5; ++open) Sample.DateOpenTime(1, 28 - open) = 95 + open;
  Sample.DateCloseTime(1, 28) = 48;
}
