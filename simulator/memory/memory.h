#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

/// Numbers of things a panel has.
constexpr int Items = 48;  // relays, groups, inputs, timers, presets
constexpr int Devices = 64;
constexpr int DeviceInputs = 8;
constexpr int DimmerDevices = 12;
constexpr int OutputsADimmer = 4;
constexpr int DimmerOutputs = DimmerDevices * OutputsADimmer;
constexpr int PointsABlock = 4;  // inputs and relays that the nodes' counts speak of

/// Of light on a photocell and of a dimmer output.
constexpr int FullLevel = 255;

/// What a momentary or maintained switch does to a relay or group.
constexpr int OnOnly = 1;
constexpr int OffOnly = 2;
constexpr int OnAndOff = 3;
constexpr int BlinkAlert = 4;

/// Times of day count quarter hours; a single date that has none holds `NoEntry`.
constexpr int QuarterMinutes = 15;
constexpr int LastQuarter = 95;
constexpr int NoEntry = 100;

namespace map {
constexpr int RowBytes = Items / 8;  // of a bit matrix
}

/// A table of codes kept as one bit matrix a code bit, plane 0 the lowest bit. Column c of a row is
/// bit c mod 8 of byte c / 8.
struct PlaneSet {
  int Address;
  int Planes;
  int PlaneSize = Items * map::RowBytes;
};

/// Where things stand in the panel's memory. Rows are named first.
namespace map {
constexpr PlaneSet InputRelayControl{0x0000, 3};   // relay, input
constexpr PlaneSet InputGroupControl{0x0360, 3};   // group, input
constexpr PlaneSet GroupRelayInclude{0x07E0, 1};   // relay, group
constexpr PlaneSet TimerRelayControl{0x0930, 2};   // relay, timer
constexpr PlaneSet TimerGroupControl{0x0B70, 2};   // group, timer
constexpr PlaneSet TimerPresetControl{0x0DB0, 1};  // preset, timer
constexpr PlaneSet PresetRelayControl{0x0ED0, 2};  // relay, preset
constexpr int InputPreset = 0x06C0;
constexpr int RelayTimerType = 0x06F0;
constexpr int RelayPowerOnType = 0x0720;
constexpr int InputType = 0x0750;
constexpr int InputTimedOnTime = 0x0780;  // words, minutes
constexpr int LocalPilot = 0x0900;
constexpr int NormalOpenTime = 0x1110;
constexpr int NormalCloseTime = 0x1117;
constexpr int DateTimes = 0x111E;  // open times, then close times
constexpr int DatesAYear = 12 * 31;
constexpr int DateTimesEnd = DateTimes + 2 * DatesAYear;
constexpr int RelayName = 0x1420;
constexpr int GroupName = 0x1600;
constexpr int InputName = 0x17E0;
constexpr int TimerName = 0x19C0;
constexpr int PresetName = 0x1BA0;
constexpr int NameLength = 10;
constexpr int TimerTimeType = 0x1E00;
constexpr int TimerTime = 0x1E30;
constexpr int TimerDays = 0x1E60;
constexpr int TimerHolidayMonth = 0x1E90;
constexpr int TimerHolidayDate = 0x1EC0;
constexpr int InputEnableTime = 0x1EF0;
constexpr int InputDisableTime = 0x1F20;
constexpr int BlinkAlertMinutes = 0x1F50;
constexpr int OverrideMinutes = 0x1F51;  // word
constexpr int AlarmSeconds = 0x1F53;
constexpr int OffHoursSweepInterval = 0x1F54;
constexpr int OffHoursSweepRelay = 0x1F55;  // a bit an item
constexpr int OffHoursSweepGroup = 0x1F5B;
constexpr int DSTEnabled = 0x1F61;
constexpr int Latitude = 0x1F62;
constexpr int Longitude = 0x1F63;
constexpr int TimeZone = 0x1F64;
constexpr int PanelName = 0x1F65;
constexpr int PanelNameLength = 18;
constexpr int PhotocellFilter = 0x1F78;
constexpr int TimedOnOperation = 0x1F79;
constexpr int Password = 0x1F7A;
constexpr int PasswordLength = 6;
constexpr int DMXOnLevel = 0x1FE0;
constexpr int DMXOffLevel = 0x1FE1;
constexpr int IOCount = 0x1FF0;
constexpr int IONodes = 12;
constexpr int DSTStartWeek = 0x1FFC;  // then start month, end week, end month

/// Block of a Fennlink device, 1..64.
constexpr int DeviceBlock(int device) {
  return 0x2000 + device * 0x40;
}
constexpr int DeviceName = 0x01;
constexpr int DeviceInputType = 0x0B;
constexpr int DeviceTimedOnTime = 0x13;  // words, minutes
constexpr int DevicePilot = 0x23;
constexpr int DeviceOffLevel = 0x2B;
constexpr int DeviceOnLevel = 0x33;
constexpr PlaneSet DeviceRelayControl(int device) {
  return {0x3200 + device * 0x140, 3, DeviceInputs * RowBytes};
}
constexpr PlaneSet DeviceGroupControl(int device) {
  return {DeviceRelayControl(device).Address + 0x90, 3, DeviceInputs * RowBytes};
}
constexpr int DevicePreset(int device) {
  return DeviceRelayControl(device).Address + 0x120;
}

/// Block of a dimmer output, device * 4 + output, 0..47.
constexpr int DimmerBlock(int output) {
  return 0x8400 + output * 0x80;
}
constexpr int TrackMode = 0;  // and bit 2 minimum, bit 3 maximum from the photocell
constexpr int PowerOnLevel = 1;
constexpr int FadeRate = 2;
constexpr int MinLevel = 3;
constexpr int MaxLevel = 4;
constexpr int PhotocellDevice = 6;  // device number less 1
constexpr int PointAIn = 7;
constexpr int PointAOut = 8;
constexpr int PointBIn = 9;
constexpr int PointBOut = 10;
constexpr int PointCIn = 11;
constexpr int PointCOut = 12;
constexpr int Target = 15;
constexpr int ControlSlots = 16;
constexpr int ControlType = 16;  // a byte a slot, as the next four
constexpr int ControlNumber = 48;
constexpr int ControlDevice = 64;
constexpr int ControlAction = 80;
constexpr int ControlRevert = 96;
constexpr int RelayOnLevel = 112;
constexpr int RelayOffLevel = 113;
constexpr int RelayInclude = 114;
constexpr int DeviceEnabled = 0x9C00;  // a byte a dimmer device
}  // namespace map

/// Six decimal digits.
bool IsPassword(std::string_view text);

/// The 40,960 bytes of a panel, with the encodings its memory uses. An address outside throws
/// std::out_of_range.
class PanelMemory {
 public:
  static constexpr int Size = 0xA000;

  int Byte(int address) const { return Bytes.at(static_cast<std::size_t>(address)); }
  void SetByte(int address, int value);

  /// Two bytes, high byte first.
  int Word(int address) const { return Byte(address) * 256 + Byte(address + 1); }
  void SetWord(int address, int value);

  std::string Text(int address, int length) const;
  /// Pads with blanks and cuts to `length`.
  void SetText(int address, int length, std::string_view text);

  /// Throws std::invalid_argument for what is no password.
  void SetPassword(std::string_view digits);

  /// The code of a cell, all planes together.
  int Code(const PlaneSet& set, int row, int column) const;
  void SetCode(const PlaneSet& set, int row, int column, int code);

  /// Sets every byte from first to last, both included, to 0.
  void Clear(int first, int last);

  /// The 16-bit sum of the bytes from first to last, both included: each byte is added, then the
  /// sum is rotated left by one bit.
  int Sum(int first, int last) const;

  /// Installed points, 0..48, by the I/O counts.
  int Points() const;

  /// Counts the changes, so that a keeper of the file knows when to write it.
  std::uint64_t Revision() const { return Changes; }

  std::string Content() const { return {Bytes.begin(), Bytes.end()}; }
  /// Throws std::invalid_argument unless the content is exactly 40,960 bytes.
  void SetContent(std::string_view content);

 private:
  std::array<std::uint8_t, Size> Bytes{};
  std::uint64_t Changes = 0;
};

/// The configuration of a small installation: 16 relays with names, groups, presets, switches and
/// a few Fennlink devices.
PanelMemory SmallInstallation();

}  // namespace simulator
