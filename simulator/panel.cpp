#include "simulator/panel.h"

#include <algorithm>
#include <stdexcept>

namespace simulator {

namespace {

constexpr int CodeOn = 1;
constexpr int CodeOff = 2;

std::size_t Checked(int value, int first, int last) {
  if (value < first || value > last) throw std::out_of_range("number " + std::to_string(value));
  return static_cast<std::size_t>(value);
}

std::size_t Item(int value) {
  return Checked(value, 0, Items - 1);
}
std::size_t Device(int value) {
  return Checked(value, 1, Devices);
}

}  // namespace

Panel::Panel(const PanelMemory& memory, Clock clock)
    : Memory(memory),
      Firmware("ORV TAMBERLOOM 3    SIMULATOR  REV 1.02"),
      Now(clock ? std::move(clock) : Clock(&QDateTime::currentDateTime)) {}

void Panel::Advance() {
  const std::int64_t now = NowMs();
  for (std::size_t i = 0; i < Relays.size(); ++i) {
    if (!OffAtMs[i] || *OffAtMs[i] > now) continue;
    OffAtMs[i].reset();
    Relays[i] = false;
  }
}

bool Panel::Relay(int relay) {
  Advance();
  return Relays[Item(relay)];
}

void Panel::SetRelay(int relay, bool on) {
  OffAtMs[Item(relay)].reset();
  Relays[Item(relay)] = on;
}

void Panel::SetAllRelays(bool on) {
  for (int relay = 0; relay < Items; ++relay) SetRelay(relay, on);
}

bool Panel::Group(int group) {
  Item(group);
  bool any = false;
  for (int relay = 0; relay < Items; ++relay) {
    if (Memory.Code(map::GroupRelayInclude, relay, group) == 0) continue;
    if (!Relay(relay)) return false;
    any = true;
  }
  return any;
}

void Panel::SetGroup(int group, bool on) {
  Item(group);
  for (int relay = 0; relay < Items; ++relay) {
    if (Memory.Code(map::GroupRelayInclude, relay, group) != 0) SetRelay(relay, on);
  }
}

char Panel::PresetState(int preset) {
  Item(preset);
  char state = '2';
  for (int relay = 0; relay < Items; ++relay) {
    const int code = Memory.Code(map::PresetRelayControl, relay, preset);
    if (code != CodeOn && code != CodeOff) continue;
    if (Relay(relay) != (code == CodeOn)) return '0';
    state = '1';
  }
  return state;
}

void Panel::SetPreset(int preset) {
  Item(preset);
  for (int relay = 0; relay < Items; ++relay) {
    const int code = Memory.Code(map::PresetRelayControl, relay, preset);
    if (code == CodeOn || code == CodeOff) SetRelay(relay, code == CodeOn);
  }
}

void Panel::CapturePreset(int preset) {
  Item(preset);
  for (int relay = 0; relay < Points(); ++relay) {
    Memory.SetCode(map::PresetRelayControl, relay, preset, Relay(relay) ? CodeOn : CodeOff);
  }
}

void Panel::ForceTimer(int timer) {
  Item(timer);
  for (int i = 0; i < Items; ++i) {
    const int relayCode = Memory.Code(map::TimerRelayControl, i, timer);
    if (relayCode == CodeOn || relayCode == CodeOff) SetRelay(i, relayCode == CodeOn);
  }
  for (int i = 0; i < Items; ++i) {
    const int groupCode = Memory.Code(map::TimerGroupControl, i, timer);
    if (groupCode == CodeOn || groupCode == CodeOff) SetGroup(i, groupCode == CodeOn);
  }
  for (int i = 0; i < Items; ++i) {
    if (Memory.Code(map::TimerPresetControl, i, timer) != 0) SetPreset(i);
  }
}

int Panel::Points() const {
  int blocks = 0;
  for (int node = 0; node < map::IONodes; ++node) blocks += Memory.Byte(map::IOCount + node);
  return std::min(blocks * 4, Items);
}

void Panel::SetPresence(int device, Presence presence) {
  Presences[Device(device)] = presence;
}

bool Panel::DevicePresent(int device) const {
  const Presence presence = Presences[Device(device)];
  if (presence == Presence::ByMemory) return Memory.Byte(map::DeviceBlock(device)) != 0;
  return presence == Presence::Present;
}

void Panel::SetDeviceLevel(int device, int level) {
  Levels[Device(device)] = static_cast<int>(Checked(level, 0, 255));
}

int Panel::DimmerLevel(int output) {
  Item(output);
  const int block = map::DimmerBlock(output);
  bool mapped = false;
  for (int relay = 0; relay < Items; ++relay) {
    const int bits = Memory.Byte(block + map::RelayInclude + relay / 8);
    if (((bits >> (relay % 8)) & 1) == 0) continue;
    if (Relay(relay)) return Memory.Byte(block + map::RelayOnLevel);
    mapped = true;
  }
  return Memory.Byte(block + (mapped ? map::RelayOffLevel : map::PowerOnLevel));
}

QDateTime Panel::Time() const {
  // As a plain calendar time, so that the computer's own daylight saving shifts nothing.
  const QDateTime now = Now();
  return QDateTime(now.date(), now.time(), Qt::UTC).addMSecs(ClockOffsetMs);
}

int Panel::Weekday() const {
  return (Time().date().dayOfWeek() + WeekdayOffset) % 7;
}

void Panel::SetTime(const QDateTime& time) {
  const QDateTime now = Now();
  const QDateTime wanted(time.date(), time.time(), Qt::UTC);
  ClockOffsetMs = QDateTime(now.date(), now.time(), Qt::UTC).msecsTo(wanted);
  WeekdayOffset = 0;
}

int Panel::Leds() {
  int bits = 0;
  for (int led = 0; led < 6; ++led) bits |= Relay(led) ? 1 << led : 0;
  return bits;
}

}  // namespace simulator
