#include <array>

#include "simulator/frame.h"
#include "simulator/panel.h"

namespace simulator {

// In a form "b" is a byte of two hex digits, "w" a word of four, "d" one decimal digit, "s" the
// digit 0 or 1, "*" any number of bytes up to the end; any other character stands for itself. The
// first form that fits is taken.
const Panel::Command Panel::Commands[] = {
    {"00bbbbbd", &Panel::DoSetClock}, {"01", &Panel::DoStatus},
    {"02", &Panel::DoAwaitTimer},     {"05", &Panel::DoFirmware},
    {"07b", &Panel::DoKeys},          {"10FFs", &Panel::DoAllRelays},
    {"10bs", &Panel::DoRelay},        {"11bs", &Panel::DoGroup},
    {"13b0", &Panel::DoForceTimer},   {"20FF", &Panel::DoInputs},
    {"23FF", &Panel::DoRelays},       {"24FF", &Panel::DoGroups},
    {"25FF", &Panel::DoPresets},      {"30wb*", &Panel::DoWrite},
    {"31wb", &Panel::DoRead},         {"34ww", &Panel::DoSum},
    {"36ww", &Panel::DoClear},        {"40b0", &Panel::DoSetPreset},
    {"41b0", &Panel::DoCapture},      {"46", &Panel::DoDeviceInputs},
    {"47", &Panel::DoDevicePresence}, {"48", &Panel::DoDeviceLevels},
    {"49", &Panel::DoDimmers},
};

namespace {

/// The arguments of a command that fits the form; nothing when it does not fit.
std::optional<std::vector<int>> Match(std::string_view form, std::string_view command) {
  std::vector<int> arguments;
  const auto take = [&](std::size_t digits) {
    const auto value = command.size() < digits ? std::nullopt : ParseHex(command.substr(0, digits));
    if (!value) return false;
    arguments.push_back(*value);
    command.remove_prefix(digits);
    return true;
  };
  for (const char c : form) {
    if (c == 'b' || c == 'w') {
      if (!take(c == 'b' ? 2 : 4)) return std::nullopt;
    } else if (c == 'd' || c == 's') {
      if (!take(1) || arguments.back() > (c == 'd' ? 9 : 1)) return std::nullopt;
    } else if (c == '*') {
      while (!command.empty()) {
        if (!take(2)) return std::nullopt;
      }
    } else {
      if (command.empty() || command.front() != c) return std::nullopt;
      command.remove_prefix(1);
    }
  }
  if (!command.empty()) return std::nullopt;
  return arguments;
}

std::string HexOf(int value, int digits = 2) {
  return Hex(static_cast<unsigned>(value), digits);
}

/// One character for each of the 48 items.
template <typename State>
std::string EachItem(State state) {
  std::string text;
  for (int i = 0; i < Items; ++i) text += state(i);
  return text;
}

/// 65 bytes, the first for the device 0 that does not exist.
template <typename Value>
std::string EachDevice(Value value) {
  std::string text = "00";
  for (int device = 1; device <= Devices; ++device) text += HexOf(value(device));
  return text;
}

bool ValidRange(int first, int last) {
  return first <= last && last < PanelMemory::Size;
}

const std::string Acknowledge;

}  // namespace

std::optional<std::string> Panel::Answer(std::string_view frame) {
  const auto command = UnframeCommand(frame);
  const Data data = command ? RunCommand(*command) : std::nullopt;
  if (!data) return std::nullopt;
  return FrameReply(*data);
}

Panel::Data Panel::RunCommand(std::string_view command) {
  for (const Command& known : Commands) {
    if (const auto arguments = Match(known.Form, command))
      return (this->*known.Handler)(*arguments);
  }
  return std::nullopt;
}

Panel::Data Panel::DoSetClock(const Arguments& a) {
  const QDate date(2000 + a[4], a[2], a[3]);
  const QTime time(a[0], a[1]);
  if (a[4] > 99 || !date.isValid() || !time.isValid() || a[5] > 6) return std::nullopt;
  SetTime(QDateTime(date, time, Qt::UTC), a[5] + 7 - date.dayOfWeek());
  return Acknowledge;
}

Panel::Data Panel::DoStatus(const Arguments&) {
  const QDateTime time = Time();
  std::string data;
  for (const int value : {time.time().hour(), time.time().minute(), time.time().second(),
                          time.date().month(), time.date().day(), time.date().year() % 100}) {
    data += HexOf(value);
  }
  data += HexOf(Weekday(), 1) + "0" + HexOf(Points()) + "0" + HexOf(AddOnType, 1) +
          HexOf(AddOnRevision, 1);
  data.resize(30, '0');
  return data;
}

Panel::Data Panel::DoAwaitTimer(const Arguments&) {
  return std::string(76, '0');
}

Panel::Data Panel::DoFirmware(const Arguments&) {
  std::string text = Firmware;
  text.resize(FirmwareSize, ' ');
  return text;
}

Panel::Data Panel::DoKeys(const Arguments& a) {
  if (a[0] != 0) PressKeys(a[0]);
  return Display() + HexOf(Leds());
}

Panel::Data Panel::DoAllRelays(const Arguments& a) {
  SetAllRelays(a[0] == 1, By::Host);
  return Acknowledge;
}

Panel::Data Panel::DoRelay(const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  SetRelay(a[0], a[1] == 1, By::Host);
  return Acknowledge;
}

Panel::Data Panel::DoGroup(const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  SetGroup(a[0], a[1] == 1, By::Host);
  return Acknowledge;
}

Panel::Data Panel::DoForceTimer(const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  ForceTimer(a[0], By::Host);
  return Acknowledge;
}

Panel::Data Panel::DoInputs(const Arguments&) {
  return EachItem([this](int i) { return static_cast<char>('0' + InputState(i)); });
}

Panel::Data Panel::DoRelays(const Arguments&) {
  return EachItem([this](int i) { return Relay(i) ? '1' : '0'; });
}

Panel::Data Panel::DoGroups(const Arguments&) {
  return EachItem([this](int i) { return Group(i) ? '1' : '0'; });
}

Panel::Data Panel::DoPresets(const Arguments&) {
  return EachItem([this](int i) { return PresetState(i); });
}

Panel::Data Panel::DoWrite(const Arguments& a) {
  const int count = a[1] + 1;
  if (static_cast<int>(a.size()) != 2 + count || !ValidRange(a[0], a[0] + count - 1)) {
    return std::nullopt;
  }
  for (int i = 0; i < count; ++i) Memory.SetByte(a[0] + i, a[2 + static_cast<std::size_t>(i)]);
  return Acknowledge;
}

Panel::Data Panel::DoRead(const Arguments& a) {
  if (!ValidRange(a[0], a[0] + a[1])) return std::nullopt;
  std::string data;
  for (int i = 0; i <= a[1]; ++i) data += HexOf(Memory.Byte(a[0] + i));
  return data;
}

Panel::Data Panel::DoSum(const Arguments& a) {
  if (!ValidRange(a[0], a[1])) return std::nullopt;
  return HexOf(Memory.Sum(a[0], a[1]), 4);
}

Panel::Data Panel::DoClear(const Arguments& a) {
  if (!ValidRange(a[0], a[1])) return std::nullopt;
  Memory.Clear(a[0], a[1]);
  return Acknowledge;
}

Panel::Data Panel::DoSetPreset(const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  SetPreset(a[0], By::Host);
  return Acknowledge;
}

Panel::Data Panel::DoCapture(const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  CapturePreset(a[0]);
  return Acknowledge;
}

Panel::Data Panel::DoDeviceInputs(const Arguments&) {
  return EachDevice([this](int d) { return DevicePresent(d) ? DeviceInputBits(d) : 0; });
}

Panel::Data Panel::DoDevicePresence(const Arguments&) {
  return EachDevice([this](int d) { return DevicePresent(d) ? 1 : 0; });
}

Panel::Data Panel::DoDeviceLevels(const Arguments&) {
  return EachDevice([this](int d) { return DevicePresent(d) ? DeviceLevel(d) : 0; });
}

Panel::Data Panel::DoDimmers(const Arguments&) {
  std::string data;
  for (int output = 0; output < DimmerOutputs; ++output) data += HexOf(DimmerLevel(output));
  return data;
}

}  // namespace simulator
