#include <QString>

#include "ratio.h"
#include "simulator/rehearsal/rehearsal.h"

// A year of a full panel, against the bare work of writing what changes in it.

using namespace simulator;

namespace {

constexpr double YearOutputLimitMs = 1000;

/// 48 timers of every kind, each with relays, a group and a preset; all relays blink before they go
/// off; the sweep comes every hour.
PanelMemory FullPanel() {
  PanelMemory memory = SmallInstallation();
  memory.SetByte(map::IOCount, 8);
  memory.SetByte(map::IOCount + 1, 4);
  for (int i = 0; i < 6; ++i) memory.SetByte(map::OffHoursSweepRelay + i, 255);
  for (int i = 0; i < Items; ++i) {
    constexpr int blink = 1;
    constexpr std::array events{24, 56, 88, 120, 152, 184, 216, 248};  // before sunrise, ...
    memory.SetByte(map::RelayTimerType + i, blink);
    const bool relative = i % 3 == 0;
    memory.SetByte(map::TimerTimeType + i,
                   relative ? events[static_cast<std::size_t>(i / 3) % events.size()] : i / 2);
    memory.SetByte(map::TimerTime + i, relative ? i * 5 : i);
    memory.SetByte(map::TimerDays + i, i % 5 == 0 ? 0x41 : 0);
    memory.SetCode(map::TimerGroupControl, i % 12, i, 1 + i % 2);
    memory.SetCode(map::TimerPresetControl, i, i, 1);
    for (int relay = 0; relay < Items; ++relay) {
      memory.SetCode(map::GroupRelayInclude, relay, relay / 4, 1);
      memory.SetCode(map::PresetRelayControl, relay, i, (relay * 7 + i * 5) / 3 % 3);
      memory.SetCode(map::TimerRelayControl, relay, i, (relay + i) % 8 == 0 ? 1 : 0);
    }
    constexpr int pushButton = 1;
    memory.SetByte(map::InputType + i, pushButton);
    memory.SetCode(map::InputGroupControl, i % 12, i, OnAndOff);
  }
  return memory;
}

/// Ten times a day a contact closes or opens.
std::vector<ScriptedAct> Presses(std::int64_t first, std::int64_t last) {
  constexpr int acts = 10;
  std::vector<ScriptedAct> script;
  for (std::int64_t day = first; day <= last; ++day) {
    for (int i = 0; i < acts; ++i) {
      const int input = (static_cast<int>(day) * acts + i) / 2 % Items;
      script.push_back({day * DayMs + (7 * 60 + i * 71) * MinuteMs, [input, i](Engine& engine) {
                          engine.SetContact(input, Contact::On, i % 2 == 0);
                        }});
    }
  }
  return script;
}

RehearsalOptions Days(const char* range) {
  RehearsalOptions options;
  ParseRange(range, options);
  options.Script = Presses(options.FirstDay, options.LastDay);
  return options;
}

struct RelayChange {
  int Relay;
  Change What;
};

/// Runs the days as a rehearsal does; with `changes` every change of a relay is recorded.
void Run(const PanelMemory& memory, const RehearsalOptions& options,
         std::vector<RelayChange>* changes = nullptr) {
  Engine engine(memory);
  if (changes != nullptr) {
    engine.SetSink([changes](const Row& row) {
      if (row.Item.What == Subject::Kind::Relay) changes->push_back({row.Item.Number, row.What});
    });
  }
  engine.PowerOn(engine.Days().FromWall(options.FirstDay * DayMs));
  for (const ScriptedAct& act : options.Script) {
    engine.AdvanceTo(engine.Days().FromWall(act.Wall));
    act.Do(engine);
  }
  engine.AdvanceTo(engine.Days().FromWall((options.LastDay + 1) * DayMs) - 1);
  Keep(&engine);
}

}  // namespace

int main() {
  const PanelMemory memory = FullPanel();
  const RehearsalOptions year = Days("2026-01-01..2026-12-31");
  const RehearsalOptions month = Days("2026-01-01..2026-01-31");

  const double first = BestMicroseconds([&] { Run(memory, year); }, 1);
  std::vector<RelayChange> changes;
  Run(memory, year, &changes);
  std::printf("%zu changes of relays in the year\n", changes.size());
  std::array<Change, Items> relays{};
  const auto write = [&] {
    for (const RelayChange& change : changes) {
      relays[static_cast<std::size_t>(change.Relay)] = change.What;
    }
    Keep(relays.data());
  };
  constexpr int runs = 30;
  const double bare = BestMicroseconds(write, runs);
  const double ofYear = BestMicroseconds([&] { Run(memory, year); }, runs);
  const double ofMonth = BestMicroseconds([&] { Run(memory, month); }, runs);

  std::size_t written = 0;
  const double withOutput = BestMicroseconds(
      [&] { Rehearse(memory, year, [&](std::string_view text) { written += text.size(); }); }, 5);

  RatioReport report;
  report.Tell("the first year, with the sun", first / 1000);
  report.Line("a year without output", ofYear, "writing its changes", bare, 20);
  report.Line("a year without output", ofYear, "12.5 of its Januaries", 12.5 * ofMonth, 1);
  report.Within("a year with its output", withOutput / 1000, YearOutputLimitMs);
  return written == 0 ? 1 : report.ExitCode();
}
