#pragma once

#include <QDateTime>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "simulator/engine/engine.h"
#include "simulator/engine/panel_clock.h"
#include "simulator/engine/panel_front.h"

namespace simulator {

/// A panel without its wire: memory, outputs, inputs, devices, front. Numbers of relays, groups,
/// inputs, timers and presets run from 0 to 47, of devices from 1 to 64, of a device's inputs
/// from 0 to 7; one outside throws std::out_of_range. Belongs to one thread.
class Panel {
 public:
  using By = Subject::Kind;

  explicit Panel(const PanelMemory& memory = SmallInstallation(), Clock computer = &ComputersTime);
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  PanelMemory Memory;
  PanelFront Front{*this};
  std::string Firmware;  // padded or cut to two rows on the wire and the display
  int AddOnType = 0;     // one hex digit on the wire, 0..15
  int AddOnRevision = 0;
  std::string FirmwareText() const;

  /// What runs the memory, brought up to the present. Everything that the panel shows is its state.
  Engine& Runner();
  /// What its memory says, without bringing anything up to the present.
  const Configuration& Settings() const { return Run.Settings(); }
  /// How its time goes.
  PanelClock& Pace() { return TheClock; }

  bool Relay(int relay);
  void SetRelay(int relay, bool on, By by = By::Hand);
  void SetAllRelays(bool on, By by = By::Hand);

  /// On when the group has relays and all of them are on.
  bool Group(int group);
  void SetGroup(int group, bool on, By by = By::Hand);

  /// '2' when the preset controls no relay, '1' when every relay it controls is as it wants it,
  /// '0' otherwise.
  char PresetState(int preset);
  void SetPreset(int preset, By by = By::Hand);
  /// Writes the states of the installed relays into the preset; the others keep their codes.
  void CapturePreset(int preset);
  /// Does at once what the timer does when it fires.
  void ForceTimer(int timer, By by = By::Hand);

  /// Cut, the panel is dark and answers nothing until power comes back.
  void SetPower(bool on);
  bool Powered() { return Runner().Powered(); }

  /// Called for whatever a hand does, in the words of a script, as in "tap 3" without its time.
  std::function<void(const std::string& words)> Touched;

  /// Installed points, 0..48, by the I/O counts in memory.
  int Points() const { return Memory.Points(); }

  /// Closes or opens a contact of a local input and does what the input's type says.
  void SetContact(int input, Contact contact, bool closed);
  /// Bit 0: the On contact is closed; bit 1: the Off contact.
  int InputState(int input);

  enum class Presence {
    ByMemory,  // answers when memory gives it a type
    Present,
    Dropped,
  };
  void SetPresence(int device, Presence presence);
  bool DevicePresent(int device) const;
  void SetDeviceInput(int device, int input, bool closed);
  int DeviceInputBits(int device);
  /// 0..255; reported by devices that are present.
  void SetDeviceLevel(int device, int level);
  int DeviceLevel(int device);

  /// Level byte of a dimmer output, device * 4 + output, 0..47.
  int DimmerLevel(int output);

  /// The panel's date and time; the year's century is 20.
  QDateTime Time();
  /// 0 Sunday .. 6 Saturday. The panel keeps the weekday that it was given, right or wrong.
  int Weekday();
  void SetTime(const QDateTime& time, int weekdayShift = 0);

 private:
  void Touch(By by, const std::string& words) const;

  Engine Run;
  PanelClock TheClock;
  std::array<Presence, Devices + 1> Presences{};
};

}  // namespace simulator
