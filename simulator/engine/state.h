#pragma once

#include <array>
#include <bitset>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/engine/agenda.h"
#include "simulator/engine/configuration.h"

namespace simulator {

/// Gets the rows of an engine. It stays with the engine that it was given to: a copy has none.
class Listener {
 public:
  using Sink = std::function<void(const Row&)>;

  Listener() = default;
  Listener(const Listener&) {}
  Listener& operator=(const Listener&) { return *this; }
  ~Listener() = default;

  void Set(Sink sink) { Call = std::move(sink); }
  bool IsThere() const { return Call != nullptr; }
  void Hear(const Row& row) const {
    if (Call) Call(row);
  }

 private:
  Sink Call;
};

struct RelayState {
  /// What was on as a switch that holds the status began to.
  struct Status {
    int Switch = 0;
    Mask On = 0;
  };
  Mask Told = 0;    // on by what was told last
  Mask Held = 0;    // by output overrides, whatever is told
  Mask HeldOn = 0;  // of these, on
  Mask Output = 0;
  Mask Warned = 0;               // going off after a warning
  Mask AtCut = 0;                // on as the power failed
  std::vector<Status> Statuses;  // the first that began stands before the others
};

struct InputState {
  /// A contact that stays closed as long as somebody is there.
  struct Occupant {
    int Switch = 0;
    Mask Relays = 0;  // that it has turned on, and nobody off
  };
  std::array<std::uint8_t, Items> Contacts{};  // a bit a contact
  std::array<std::uint8_t, Devices + 1> DeviceContacts{};
  std::array<bool, Devices + 1> Silent{};
  std::vector<Occupant> Occupants;
  Mask Disabled = 0;
};

struct PhotocellState {
  struct Light {  // in thousandths of a level, on its way
    std::int64_t From = 0;
    std::int64_t To = 0;
    Instant Since = 0;
  };
  std::array<Light, Devices + 1> Lights{};
  std::optional<Instant> NextDaylight;  // when it changes; nothing while hands set the light
  std::bitset<Switches> Unheard;        // to tell their light, whatever they told before
  Instant HeardFrom = 0;                // when those begin to
};

/// Of one output.
struct DimmerState {
  enum class Goal { Base, Tracking, Fixed };
  Goal Towards = Goal::Base;
  int Level = 0;  // of a fixed goal
  int From = 0;   // where it came from
  Instant Since = 0;
  std::int64_t FadeMs = 0;
  int Slot = -1;         // the one that has the word
  bool Reverts = false;  // to what was before it
  Goal GoalBefore = Goal::Base;
  int LevelBefore = 0;
};

struct DayState {
  int WeekdayShift = 0;            // by which the panel's weekday differs from the calendar's
  Instant Undone = 0;              // what is planned before this has happened
  std::vector<std::int64_t> Plan;  // instant and order of what the days bring, sorted
  std::size_t PlanHead = 0;
  std::optional<Instant> NextSweep;
  bool IsOpen = true;
  Mask DisabledTimers = 0;
};

/// What the listener was told last.
struct ShownState {
  Mask Blinking = 0;
  Mask Groups = 0;
  Mask Presets = 0;
  std::vector<bool> Pilots;
  std::array<int, DimmerOutputs> Levels{};
  bool LevelsChange = false;  // perhaps
};

/// All that an engine is made of: a value, a copy of which runs on by itself. Each part has the
/// file of functions that changes it.
struct EngineState {
  std::shared_ptr<const Configuration> Settings;
  Instant Now = 0;
  bool Powered = true;
  Actor Acting;
  Agenda Coming;
  Listener Out;
  RelayState Relays;
  InputState Inputs;
  PhotocellState Photocells;
  std::array<DimmerState, DimmerOutputs> Dimmers{};
  DayState Days;
  ShownState Shown;

  /// The wall clock, milliseconds since 1970.
  std::int64_t Wall() const { return Settings->Days.Wall(Now); }
  void Tell(const Subject& cause, const Subject& item, Change what, std::string_view words,
            int level = 0) const {
    Out.Hear({Now, cause, item, what, level, words, Acting});
  }
  /// Somebody or something begins to act: what comes of it later is theirs.
  void Begin(const Subject& who) { Acting = {who, Now}; }
  void Await(Instant at, Due what, Mask relays, int number = 0) {
    Coming.Add({at, what, relays, number, Acting});
  }
  void TellFires(const Subject& cause, std::string_view words) const {
    Tell(cause, {}, Change::Fires, words);
  }
};

}  // namespace simulator
