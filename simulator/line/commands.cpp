#include "simulator/line/commands.h"

#include <vector>

#include "simulator/line/frame.h"

namespace simulator {

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

using Arguments = std::vector<int>;
using Data = std::optional<std::string>;
using By = Panel::By;

const std::string Acknowledge;

Data DoSetClock(Panel& panel, const Arguments& a) {
  const QDate date(Calendar::FirstYear + a[4], a[2], a[3]);
  const QTime time(a[0], a[1]);
  if (a[4] >= Calendar::Years || !date.isValid() || !time.isValid() || a[5] > 6)
    return std::nullopt;
  panel.SetTime(QDateTime(date, time, Qt::UTC), a[5] + 7 - date.dayOfWeek());
  return Acknowledge;
}

Data DoStatus(Panel& panel, const Arguments&) {
  const QDateTime time = panel.Time();
  std::string data;
  for (const int value : {time.time().hour(), time.time().minute(), time.time().second(),
                          time.date().month(), time.date().day(), time.date().year() % 100}) {
    data += HexOf(value);
  }
  data += HexOf(panel.Weekday(), 1) + "0" + HexOf(panel.Points()) + "0" +
          HexOf(panel.AddOnType, 1) + HexOf(panel.AddOnRevision, 1);
  data.resize(30, '0');
  return data;
}

Data DoAwaitTimer(Panel&, const Arguments&) {
  return std::string(76, '0');
}

Data DoFirmware(Panel& panel, const Arguments&) {
  return panel.FirmwareText();
}

Data DoKeys(Panel& panel, const Arguments& a) {
  if (a[0] != 0) panel.Front.Press(a[0]);
  return panel.Front.Display() + HexOf(panel.Front.LitLeds());
}

Data DoAllRelays(Panel& panel, const Arguments& a) {
  panel.SetAllRelays(a[0] == 1, By::Host);
  return Acknowledge;
}

Data DoRelay(Panel& panel, const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  panel.SetRelay(a[0], a[1] == 1, By::Host);
  return Acknowledge;
}

Data DoGroup(Panel& panel, const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  panel.SetGroup(a[0], a[1] == 1, By::Host);
  return Acknowledge;
}

Data DoForceTimer(Panel& panel, const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  panel.ForceTimer(a[0], By::Host);
  return Acknowledge;
}

Data DoInputs(Panel& panel, const Arguments&) {
  return EachItem([&panel](int i) { return static_cast<char>('0' + panel.InputState(i)); });
}

Data DoRelays(Panel& panel, const Arguments&) {
  return EachItem([&panel](int i) { return panel.Relay(i) ? '1' : '0'; });
}

Data DoGroups(Panel& panel, const Arguments&) {
  return EachItem([&panel](int i) { return panel.Group(i) ? '1' : '0'; });
}

Data DoPresets(Panel& panel, const Arguments&) {
  return EachItem([&panel](int i) { return panel.PresetState(i); });
}

Data DoWrite(Panel& panel, const Arguments& a) {
  const int count = a[1] + 1;
  if (static_cast<int>(a.size()) != 2 + count || !ValidRange(a[0], a[0] + count - 1)) {
    return std::nullopt;
  }
  for (int i = 0; i < count; ++i)
    panel.Memory.SetByte(a[0] + i, a[2 + static_cast<std::size_t>(i)]);
  return Acknowledge;
}

Data DoRead(Panel& panel, const Arguments& a) {
  if (!ValidRange(a[0], a[0] + a[1])) return std::nullopt;
  std::string data;
  for (int i = 0; i <= a[1]; ++i) data += HexOf(panel.Memory.Byte(a[0] + i));
  return data;
}

Data DoSum(Panel& panel, const Arguments& a) {
  if (!ValidRange(a[0], a[1])) return std::nullopt;
  return HexOf(panel.Memory.Sum(a[0], a[1]), 4);
}

Data DoClear(Panel& panel, const Arguments& a) {
  if (!ValidRange(a[0], a[1])) return std::nullopt;
  panel.Memory.Clear(a[0], a[1]);
  return Acknowledge;
}

Data DoSetPreset(Panel& panel, const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  panel.SetPreset(a[0], By::Host);
  return Acknowledge;
}

Data DoCapture(Panel& panel, const Arguments& a) {
  if (a[0] >= Items) return std::nullopt;
  panel.CapturePreset(a[0]);
  return Acknowledge;
}

Data DoDeviceInputs(Panel& panel, const Arguments&) {
  return EachDevice(
      [&panel](int d) { return panel.DevicePresent(d) ? panel.DeviceInputBits(d) : 0; });
}

Data DoDevicePresence(Panel& panel, const Arguments&) {
  return EachDevice([&panel](int d) { return panel.DevicePresent(d) ? 1 : 0; });
}

Data DoDeviceLevels(Panel& panel, const Arguments&) {
  return EachDevice([&panel](int d) { return panel.DevicePresent(d) ? panel.DeviceLevel(d) : 0; });
}

Data DoDimmers(Panel& panel, const Arguments&) {
  std::string data;
  for (int output = 0; output < DimmerOutputs; ++output) data += HexOf(panel.DimmerLevel(output));
  return data;
}

struct Command {
  const char* Form;
  Data (*Handler)(Panel&, const Arguments&);
};

// In a form "b" is a byte of two hex digits, "w" a word of four, "d" one decimal digit, "s" the
// digit 0 or 1, "*" any number of bytes up to the end; any other character stands for itself. The
// first form that fits is taken.
constexpr Command Commands[] = {
    {"00bbbbbd", DoSetClock}, {"01", DoStatus},       {"02", DoAwaitTimer}, {"05", DoFirmware},
    {"07b", DoKeys},          {"10FFs", DoAllRelays}, {"10bs", DoRelay},    {"11bs", DoGroup},
    {"13b0", DoForceTimer},   {"20FF", DoInputs},     {"23FF", DoRelays},   {"24FF", DoGroups},
    {"25FF", DoPresets},      {"30wb*", DoWrite},     {"31wb", DoRead},     {"34ww", DoSum},
    {"36ww", DoClear},        {"40b0", DoSetPreset},  {"41b0", DoCapture},  {"46", DoDeviceInputs},
    {"47", DoDevicePresence}, {"48", DoDeviceLevels}, {"49", DoDimmers},
};

}  // namespace

std::optional<std::string> Answer(Panel& panel, std::string_view frame) {
  const auto command = UnframeCommand(frame);
  if (!command || !panel.Powered()) return std::nullopt;
  for (const Command& known : Commands) {
    const auto arguments = Match(known.Form, *command);
    if (!arguments) continue;
    const Data data = known.Handler(panel, *arguments);
    return data ? std::optional(FrameReply(*data)) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace simulator
