#include "simulator/engine/panel.h"

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

std::string Numbered(const char* word, int item) {
  return std::string(word) + " " + std::to_string(item + 1);
}

std::string Switched(const char* word, int item, bool on) {
  return Numbered(word, item) + (on ? " on" : " off");
}

}  // namespace

Panel::Panel(const PanelMemory& memory, Clock computer)
    : Memory(memory),
      Firmware("ORV TAMBERLOOM 3    SIMULATOR  REV 1.02"),
      Run(Memory),
      TheClock(Run, std::move(computer)) {
  Run.PowerOn(Run.Days().FromWall(WallOf(TheClock.Computer())));
}

std::string Panel::FirmwareText() const {
  std::string text = Firmware;
  text.resize(std::size_t{2} * PanelFront::RowLength, ' ');
  return text;
}

Engine& Panel::Runner() {
  TheClock.Tick();
  return Run;
}

bool Panel::Relay(int relay) {
  Item(relay);
  return Runner().Relay(relay);
}

void Panel::SetRelay(int relay, bool on, By by) {
  Item(relay);
  Touch(by, Switched("relay", relay, on));
  Runner().SetRelay(relay, on, by);
}

void Panel::SetAllRelays(bool on, By by) {
  for (int relay = 0; relay < Items; ++relay) Touch(by, Switched("relay", relay, on));
  Runner().SetRelays(on ? AllItems : 0, on ? 0 : AllItems, by);
}

bool Panel::Group(int group) {
  return Runner().Group(group);
}

void Panel::SetGroup(int group, bool on, By by) {
  Touch(by, Switched("group", group, on));
  Runner().SetGroup(group, on, by);
}

char Panel::PresetState(int preset) {
  const std::optional<bool> active = Runner().Preset(preset);
  if (!active) return '2';
  return *active ? '1' : '0';
}

void Panel::SetPreset(int preset, By by) {
  Touch(by, Numbered("preset", preset));
  Runner().SetPreset(preset, by);
}

void Panel::CapturePreset(int preset) {
  Item(preset);
  for (int relay = 0; relay < Points(); ++relay) {
    Memory.SetCode(map::PresetRelayControl, relay, preset, Run.Relay(relay) ? CodeOn : CodeOff);
  }
}

void Panel::ForceTimer(int timer, By by) {
  Item(timer);
  Touch(by, Numbered("timer", timer));
  Runner().ForceTimer(timer, by);
}

void Panel::SetPower(bool on) {
  if (on == Powered()) return;
  Touch(By::Hand, on ? "power on" : "power off");
  if (on) Runner().RestorePower();
  if (!on) Runner().CutPower();
}

void Panel::Touch(By by, const std::string& words) const {
  if (by == By::Hand && Touched) Touched(words);
}

void Panel::SetContact(int input, Contact contact, bool closed) {
  Item(input);
  Touch(By::Hand,
        Numbered(closed ? "press" : "release", input) + (contact == Contact::Off ? " off" : ""));
  Runner().SetContact(input, contact, closed);
}

int Panel::InputState(int input) {
  return Runner().InputState(input);
}

void Panel::SetPresence(int device, Presence presence) {
  Presences[Device(device)] = presence;
  Runner().SetSilent(device, presence == Presence::Dropped);
}

bool Panel::DevicePresent(int device) const {
  const Presence presence = Presences[Device(device)];
  if (presence == Presence::ByMemory) return Memory.Byte(map::DeviceBlock(device)) != 0;
  return presence == Presence::Present;
}

void Panel::SetDeviceInput(int device, int input, bool closed) {
  CheckedSwitch(device, input);
  Touch(By::Hand, "button " + std::to_string(device) + " " + std::to_string(input + 1) +
                      (closed ? " press" : " release"));
  Runner().SetDeviceInput(device, input, closed);
}

int Panel::DeviceInputBits(int device) {
  return Runner().DeviceInputBits(device);
}

void Panel::SetDeviceLevel(int device, int level) {
  Device(device);
  Touch(By::Hand, "photocell " + std::to_string(device) + " " + std::to_string(level));
  Runner().SetPhotocell(device, level);
}

int Panel::DeviceLevel(int device) {
  return Runner().PhotocellLevel(device);
}

int Panel::DimmerLevel(int output) {
  return Runner().DimmerLevel(output);
}

QDateTime Panel::Time() {
  return DateTimeOf(Runner().Wall());
}

int Panel::Weekday() {
  return Runner().WeekdayToday();
}

void Panel::SetTime(const QDateTime& time, int weekdayShift) {
  Runner().SetWall(WallOf(time));
  Run.SetWeekdayShift(weekdayShift % 7);
}

}  // namespace simulator
