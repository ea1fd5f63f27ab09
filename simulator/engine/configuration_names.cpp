#include "simulator/engine/configuration.h"

namespace simulator {

namespace {

std::string NameAt(const PanelMemory& memory, int address) {
  std::string name = memory.Text(address, map::NameLength);
  for (char& c : name) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

/// The 8-bit characters of the panel in UTF-8.
std::string Utf8(const std::string& text) {
  static constexpr std::array<char16_t, 32> above127{
      0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const unsigned code = byte >= 0x80 && byte < 0xA0 ? above127[byte - 0x80U] : byte;
    if (code < 0x80) {
      result += c;
    } else if (code < 0x800) {
      result += static_cast<char>(0xC0 | code >> 6);
      result += static_cast<char>(0x80 | (code & 63));
    } else {
      result += static_cast<char>(0xE0 | code >> 12);
      result += static_cast<char>(0x80 | (code >> 6 & 63));
      result += static_cast<char>(0x80 | (code & 63));
    }
  }
  return result;
}

}  // namespace

ItemNames::ItemNames(const PanelMemory& memory) {
  const auto read = [&](std::array<std::string, Items>& names, int address) {
    for (int i = 0; i < Items; ++i) {
      names[static_cast<std::size_t>(i)] = Utf8(NameAt(memory, address + i * map::NameLength));
    }
  };
  read(Relay, map::RelayName);
  read(Group, map::GroupName);
  read(Input, map::InputName);
  read(Timer, map::TimerName);
  read(Preset, map::PresetName);
  for (int device = 1; device <= Devices; ++device) {
    Device[static_cast<std::size_t>(device)] =
        Utf8(NameAt(memory, map::DeviceBlock(device) + map::DeviceName));
  }
}

}  // namespace simulator
