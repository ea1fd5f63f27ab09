#include "simulator/memory/digits.h"
#include "simulator/program/console.h"

namespace simulator {

namespace {

/// A row for each of the first `count` items: number, name, state.
std::string Rows(Panel& panel, int names, int count, const std::function<std::string(int)>& state) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += TwoDigits(i + 1) + "  " +
            panel.Memory.Text(names + i * map::NameLength, map::NameLength) + "  " + state(i) +
            "\n";
  }
  return text.empty() ? "none installed\n" : text;
}

std::string DeviceRows(Panel& panel) {
  std::string text;
  for (int device = 1; device <= Devices; ++device) {
    const int block = map::DeviceBlock(device);
    const bool present = panel.DevicePresent(device);
    if (!present && panel.Memory.Byte(block) == 0) continue;
    text += TwoDigits(device) + "  FL " + Hex(static_cast<unsigned>(device), 2) + "  " +
            panel.Memory.Text(block + map::DeviceName, map::NameLength) + "  type " +
            std::to_string(panel.Memory.Byte(block)) + (present ? "  present" : "  dropped") +
            "  inputs ";
    for (int i = 0; i < DeviceInputs; ++i) {
      text += ((panel.DeviceInputBits(device) >> i) & 1) != 0 ? '1' : '0';
    }
    text += "  level " + std::to_string(panel.DeviceLevel(device)) + "\n";
  }
  return text.empty() ? "no devices\n" : text;
}

std::string Dimmers(Panel& panel) {
  std::string text;
  for (int device = 0; device < DimmerDevices; ++device) {
    text += TwoDigits(device + 1) + " ";
    for (int i = 0; i < OutputsADimmer; ++i) {
      text += " " + std::to_string(panel.DimmerLevel(device * OutputsADimmer + i));
    }
    text += "\n";
  }
  return text;
}

std::string DisplayText(Panel& panel) {
  constexpr std::size_t rowLength = PanelFront::RowLength;
  std::string display = panel.Front.Display();
  for (char& c : display) {
    if (static_cast<unsigned char>(c) < ' ') c = "?>*-????"[c & 7];
  }
  std::string text;
  for (std::size_t at = 0; at < display.size(); at += rowLength) {
    text += "|" + display.substr(at, rowLength) + "|\n";
  }
  return text + "LEDs " + Hex(static_cast<unsigned>(panel.Front.LitLeds()), 2) + "\n";
}

}  // namespace

std::optional<std::string> Describe(Panel& panel, const QString& what) {
  const auto onOff = [](bool on) { return std::string(on ? "on" : "off"); };
  if (what == "relays") {
    return Rows(panel, map::RelayName, panel.Points(),
                [&](int i) { return onOff(panel.Relay(i)); });
  }
  if (what == "groups") {
    return Rows(panel, map::GroupName, Items, [&](int i) { return onOff(panel.Group(i)); });
  }
  if (what == "inputs") {
    static constexpr const char* states[]{"open", "closed", "off closed", "both closed"};
    return Rows(panel, map::InputName, panel.Points(),
                [&](int i) { return std::string(states[panel.InputState(i) & 3]); });
  }
  if (what == "presets") {
    return Rows(panel, map::PresetName, Items, [&](int i) {
      const char state = panel.PresetState(i);
      return std::string(state == '2' ? "---" : state == '1' ? "set" : "off");
    });
  }
  if (what == "devices") return DeviceRows(panel);
  if (what == "dimmers") return Dimmers(panel);
  if (what == "display") return DisplayText(panel);
  if (what == "time") return panel.Time().toString("ddd yyyy-MM-dd HH:mm:ss\n").toStdString();
  return std::nullopt;
}

}  // namespace simulator
