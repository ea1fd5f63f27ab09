#pragma once

#include <compare>
#include <string>
#include <string_view>

#include "simulator/engine/calendar.h"

namespace simulator {

/// A thing of the panel that starts something or that something happens to. Numbers from 0, of
/// devices from 1.
struct Subject {
  enum class Kind {
    None,
    Power,
    Host,
    Hand,
    Sweep,
    Clock,
    Timer,
    Relay,
    Group,
    Preset,
    Input,
    Pilot,
    Photocell,    // device
    DeviceInput,  // device, input
    DevicePilot,  // device, input
    Dimmer,       // device from 0, output
  };
  Kind What = Kind::None;
  int Number = 0;
  int Sub = 0;

  // NOLINTNEXTLINE(modernize-use-nullptr): takes the 0 that orders compare with for a pointer.
  auto operator<=>(const Subject&) const = default;
};

enum class Change { On, Off, Blinks, Level, Disabled, Enabled, Fires };

/// Who began something, and when.
struct Actor {
  Subject Who;
  Instant Since = 0;
};

/// One thing that happened. `Words` is good only while it is handed over. `Begun` tells who began
/// what is now over, where the cause is an item whose own time runs out.
struct Row {
  Instant Time = 0;
  Subject Cause;
  Subject Item;
  Change What = Change::Fires;
  int Level = 0;  // 0..255
  std::string_view Words;
  Actor Begun = {};
};

/// As in "TIMER 03", "FL 1A INPUT 2", "DIMMER 3 OUTPUT 1", "-".
std::string Text(const Subject& subject);
/// As in "on", "level 127".
std::string Text(Change change, int level);

/// As in "2026-03-02T06:52:00-05:00".
std::string TimeText(const Calendar& calendar, Instant instant);

/// Writes rows as lines of tab-separated UTF-8, with what neighbouring rows share done once.
class RowWriter {
 public:
  explicit RowWriter(const Calendar& calendar) : Days(calendar) {}

  static constexpr std::string_view Header = "Time\tCause\tItem\tChange\tWords\n";
  void Append(std::string& text, const Row& row);

 private:
  const Calendar& Days;
  Instant Known = -1;
  std::string KnownText;
  Subject KnownCause;
  std::string KnownCauseText = "-";
};

}  // namespace simulator
