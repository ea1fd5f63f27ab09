#include "link/rules/panel_image.h"

#include <QScopeGuard>
#include <algorithm>
#include <utility>

#include "panel/checked_arithmetic.h"
#include "panel/hex.h"
#include "panel/project_document.h"

PanelImageType PanelImage;
Int16 IncludeNamesInUpload = 0;

namespace {

constexpr int MatrixRowSize = ItemCount / 8;
constexpr int LocalPlaneSize = ItemCount * MatrixRowSize;
constexpr int DevicePlaneSize = DeviceInputCount * MatrixRowSize;
constexpr int NameLength = 10;
constexpr int PanelNameLength = 18;
constexpr int PasswordAddress = 0x1F7A;
constexpr int ClearedSize = 0x8000;
constexpr const char* NamelessPanel = "ORV TAMBERLOOM 3";

/// One bit of a bit matrix.
struct BitPlace {
  BitPlace(int matrix, int row, int column)
      : Address(matrix + row * MatrixRowSize + column / 8), Mask(1 << column % 8) {}
  int Address;
  int Mask;
};

/// Document to image.
class Packer {
 public:
  static void Byte(int address, Int16 field) { PanelImage(address) = field; }

  static void Word(int address, Int32 field, const std::string& = {}) {
    PanelImage(address) = ToInt16(FloorDiv(field, 256));
    PanelImage(address + 1) = static_cast<Int16>(field % 256);
  }

  static void Flag(int address, Int16 field) {
    if (field != 0) PanelImage(address) = 1;
  }

  static void Member(BitPlace place, Int16 field) {
    if (field != 0) SetBit(place.Address, place.Mask);
  }

  /// Bit 0 of the code goes to the first plane, bit 1 to the second, bit 2 to the third.
  static void Code(BitPlace place, int planes, int planeSize, Int16 field) {
    for (int plane = 0; plane < planes; ++plane) {
      if ((field >> plane & 1) != 0) SetBit(place.Address + plane * planeSize, place.Mask);
    }
  }

  static void Percent(int address, Int16 field) {
    PanelImage(address) = ToInt16(FloorDiv(ToInt16(ToInt16(field * 255) + 128), 100));
  }

  static void ModBus(int address, Int16 mode, Int16 baud, Int16 parity) {
    PanelImage(address) = ToInt16(ToInt16(mode + ToInt16(baud * 2)) + ToInt16(parity * 8));
  }

  static void Text(int address, int length, const std::string& field) {
    for (int i = 0; i < length; ++i) {
      const auto at = static_cast<std::size_t>(i);
      PanelImage(address + i) = at < field.size() ? static_cast<unsigned char>(field[at]) : ' ';
    }
  }

  static void Name(int address, const std::string& field) { Text(address, NameLength, field); }

  static void PanelName(int address, const std::string& field) {
    Text(address, PanelNameLength, field.empty() ? NamelessPanel : field);
  }

 private:
  static void SetBit(int address, int mask) {
    PanelImage(address) = static_cast<Int16>(PanelImage(address) | mask);
  }
};

/// Image to document.
class Unpacker {
 public:
  static void Byte(int address, Int16& field) { field = PanelImage(address); }

  /// `setting` says in a failure what the word is.
  static void Word(int address, Int16& field, const std::string& setting) {
    field = ToInt16(PanelImage(address) * 256 + PanelImage(address + 1), setting.c_str());
  }

  static void Word(int address, Int32& field, const std::string& = {}) {
    field = PanelImage(address) * 256 + PanelImage(address + 1);
  }

  static void Flag(int address, Int16& field) { field = PanelImage(address) == 1 ? -1 : 0; }

  static void Member(BitPlace place, Int16& field) {
    field = (PanelImage(place.Address) & place.Mask) != 0 ? -1 : 0;
  }

  static void Code(BitPlace place, int planes, int planeSize, Int16& field) {
    int code = 0;
    for (int plane = 0; plane < planes; ++plane) {
      if ((PanelImage(place.Address + plane * planeSize) & place.Mask) != 0) code += 1 << plane;
    }
    field = static_cast<Int16>(code);
  }

  static void Percent(int address, Int16& field) {
    field = ToInt16(FloorDiv(ToInt16(ToInt16(PanelImage(address) * 100) + 50), 255));
  }

  static void ModBus(int address, Int16& mode, Int16& baud, Int16& parity) {
    const Int16 packed = PanelImage(address);
    mode = packed & 1;
    baud = static_cast<Int16>(FloorDiv(packed, 2) % 4);
    parity = static_cast<Int16>(FloorDiv(packed, 8) % 4);
  }

  static void Text(int address, int length, std::string& field) {
    field.clear();
    for (int i = 0; i < length; ++i) field += static_cast<char>(PanelImage(address + i));
  }

  static void Name(int address, std::string& field) {
    if (IncludeNamesInUpload != 0) Text(address, NameLength, field);
  }

  static void PanelName(int address, std::string& field) { Text(address, PanelNameLength, field); }
};

template <typename Map, typename Fields>
void Bytes(Map map, int address, Fields& fields, int count = ItemCount) {
  for (int i = 0; i < count; ++i) map.Byte(address + i, fields(i));
}

template <typename Map, typename Fields>
void Words(Map map, int address, Fields& fields, const char* setting, int count = ItemCount) {
  for (int i = 0; i < count; ++i) {
    map.Word(address + i * 2, fields(i), setting + std::to_string(i + 1) + ", ");
  }
}

template <typename Map, typename Fields>
void Names(Map map, int address, Fields& fields) {
  for (int i = 0; i < ItemCount; ++i) map.Name(address + i * NameLength, fields(i));
}

template <typename Map, typename Fields>
void Members(Map map, int address, Fields& fields) {
  for (int i = 0; i < ItemCount; ++i) map.Member({address, 0, i}, fields(i));
}

/// A byte for each month and date, without the spare cells.
template <typename Map, typename Table>
void Dates(Map map, int address, Table& table) {
  for (int month = 0; month < 12; ++month) {
    for (int date = 0; date < 31; ++date) map.Byte(address + month * 31 + date, table(month, date));
  }
}

/// Rows are the targets, columns the sources.
template <typename Map, typename Table>
void Codes(Map map, int address, int planes, Table& table) {
  for (int target = 0; target < ItemCount; ++target) {
    for (int source = 0; source < ItemCount; ++source) {
      map.Code({address, target, source}, planes, LocalPlaneSize, table(source, target));
    }
  }
}

/// The other way round: rows are the inputs of the device, columns the targets.
template <typename Map, typename Table>
void DeviceCodes(Map map, int address, Table& table) {
  for (int target = 0; target < ItemCount; ++target) {
    for (int input = 0; input < DeviceInputCount; ++input) {
      map.Code({address, input, target}, 3, DevicePlaneSize, table(input, target));
    }
  }
}

template <typename Map, typename Panel>
void MapPanel(Map map, Panel& panel) {
  Codes(map, 0x0000, 3, panel.InputRelayControl);
  Codes(map, 0x0360, 3, panel.InputGroupControl);
  Bytes(map, 0x06C0, panel.InputPreset);
  Bytes(map, 0x06F0, panel.RelayTimerType);
  Bytes(map, 0x0720, panel.RelayPowerOnType);
  Bytes(map, 0x0750, panel.InputType);
  Words(map, 0x0780, panel.InputTimedOnTime, "the timed-on time of input ");
  for (int relay = 0; relay < ItemCount; ++relay) {
    for (int group = 0; group < ItemCount; ++group) {
      map.Member({0x07E0, relay, group}, panel.GroupRelayInclude(group, relay));
    }
  }
  Bytes(map, 0x0900, panel.LocalPilot);
  Codes(map, 0x0930, 2, panel.TimerRelayControl);
  Codes(map, 0x0B70, 2, panel.TimerGroupControl);
  Codes(map, 0x0DB0, 1, panel.TimerPresetControl);
  Codes(map, 0x0ED0, 2, panel.PresetRelayControl);
  Bytes(map, 0x1110, panel.NormalOpenTime, 7);
  Bytes(map, 0x1117, panel.NormalCloseTime, 7);
  Dates(map, 0x111E, panel.DateOpenTime);
  Dates(map, 0x1292, panel.DateCloseTime);
  Names(map, 0x1420, panel.RelayName);
  Names(map, 0x1600, panel.GroupName);
  Names(map, 0x17E0, panel.InputName);
  Names(map, 0x19C0, panel.TimerName);
  Names(map, 0x1BA0, panel.PresetName);
  Bytes(map, 0x1E00, panel.TimerTimeType);
  Bytes(map, 0x1E30, panel.TimerTime);
  Bytes(map, 0x1E60, panel.TimerDays);
  Bytes(map, 0x1E90, panel.TimerHolidayMonth);
  Bytes(map, 0x1EC0, panel.TimerHolidayDate);
  Bytes(map, 0x1EF0, panel.InputEnableTime);
  Bytes(map, 0x1F20, panel.InputDisableTime);
  map.Byte(0x1F50, panel.BlinkAlertMinutes);
  map.Word(0x1F51, panel.OverrideMinutes, "the override time, ");
  map.Byte(0x1F53, panel.AlarmSeconds);
  map.Byte(0x1F54, panel.OffHoursSweepInterval);
  Members(map, 0x1F55, panel.OffHoursSweepRelay);
  Members(map, 0x1F5B, panel.OffHoursSweepGroup);
  map.Flag(0x1F61, panel.DSTEnabled);
  map.Byte(0x1F62, panel.Latitude);
  map.Byte(0x1F63, panel.Longitude);
  map.Byte(0x1F64, panel.TimeZone);
  map.PanelName(0x1F65, panel.PanelName);
  map.Byte(0x1F77, panel.RTCSource);
  map.Flag(0x1F78, panel.PhotocellFilter);
  map.Flag(0x1F79, panel.TimedOnOperation);
  Words(map, 0x1F80, panel.DMXChannel, "the DMX channel of relay ");
  map.Percent(0x1FE0, panel.DMXOnLevel);
  map.Percent(0x1FE1, panel.DMXOffLevel);
  map.Byte(0x1FE2, panel.DMXFilter);
  map.ModBus(0x1FE3, panel.ModBusMode, panel.ModBusBaud, panel.ModBusParity);
  Bytes(map, 0x1FF0, panel.IOCount, NodeCount);
  map.Byte(0x1FFC, panel.DSTStartWeek);
  map.Byte(0x1FFD, panel.DSTStartMonth);
  map.Byte(0x1FFE, panel.DSTEndWeek);
  map.Byte(0x1FFF, panel.DSTEndMonth);
}

template <typename Map, typename Device>
void MapDevice(Map map, int address, int controlAddress, Device& device) {
  map.Byte(address, device.DeviceType);
  map.Name(address + 0x01, device.DeviceName);
  Bytes(map, address + 0x0B, device.DeviceInputType, DeviceInputCount);
  Words(map, address + 0x13, device.DeviceTimedOnTime, "the timed-on time of input ",
        DeviceInputCount);
  Bytes(map, address + 0x23, device.DevicePilot, DeviceInputCount);
  Bytes(map, address + 0x2B, device.DeviceOffLevel, DeviceInputCount);
  Bytes(map, address + 0x33, device.DeviceOnLevel, DeviceInputCount);
  DeviceCodes(map, controlAddress, device.DeviceRelayControl);
  DeviceCodes(map, controlAddress + 0x90, device.DeviceGroupControl);
  Bytes(map, controlAddress + 0x120, device.DevicePreset, DeviceInputCount);
}

/// The one memory map, for both directions.
template <typename Map, typename Panel, typename Devices, typename Dimmers>
void MapDocument(Map map, Panel& panel, Devices& devices, Dimmers& dimmers) {
  MapPanel(map, panel);
  for (int n = 1; n <= DeviceCount; ++n) {
    try {
      MapDevice(map, 0x2000 + n * 0x40, 0x3200 + n * 0x140, devices(n));
    } catch (const RunTimeFailure& failure) {
      throw RunTimeFailure("Bus device " + HexByte(n) + ": " + failure.what());
    }
  }
  Bytes(map, 0x8400, dimmers, DimmerBlockType::Size);
}

}  // namespace

void BuildPanelImage(const PasswordDigits& password) {
  std::fill_n(PanelImage.elements.begin(), ClearedSize, Int16{0});
  std::copy(password.begin(), password.end(), &PanelImage(PasswordAddress));
  MapDocument(Packer(), PanelRecord, FennlinkRecords, DimmerBlock);
}

std::string FreshPanelMemory() {
  const PanelImageType transferred = std::exchange(PanelImage, {});
  const auto restore = qScopeGuard([&] { PanelImage = transferred; });
  BuildPanelImage({});
  std::string bytes;
  // The wire carries the low byte of an element.
  for (const Int16 element : PanelImage.elements) bytes += static_cast<char>(element & 0xFF);
  return bytes;
}

void ApplyPanelImage() {
  ChangeDocument([](ProjectDocument& document) {
    MapDocument(Unpacker(), document.Panel, document.Devices, document.Dimmers);
  });
}
