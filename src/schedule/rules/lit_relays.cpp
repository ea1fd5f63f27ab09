#include "schedule/rules/lit_relays.h"

#include <algorithm>
#include <array>

namespace {

/// A relay of a type from this one on goes back by itself.
constexpr int FirstTypeThatReturns = 2;

/// What a timer does with code 1, on, or 2, off.
RelaySet SwitchedBy(const PanelRecordType& panel, int timer, Int16 code) {
  RelaySet set =
      RelaysThat([&](int relay) { return panel.TimerRelayControl(timer, relay) == code; });
  for (int i = 0; i < ItemCount; ++i) {
    if (panel.TimerGroupControl(timer, i) == code) set |= RelaysOfGroup(panel, i);
    if (panel.TimerPresetControl(timer, i) != 0) {
      set |= RelaysThat([&](int relay) { return panel.PresetRelayControl(i, relay) == code; });
    }
  }
  return set;
}

using SpansOfRelays = std::array<std::vector<LitSpan>, ItemCount>;

SpansOfRelays SpansOf(const std::vector<Switching>& switchings, WallMinute begin, WallMinute end) {
  SpansOfRelays spans;
  std::array<LitSpan, ItemCount> open{};
  RelaySet lit = 0;
  const auto each = [](RelaySet relays, auto visit) {
    for (std::size_t relay = 0; relay < ItemCount; ++relay) {
      if ((relays >> relay & 1) != 0) visit(relay);
    }
  };
  const auto goOff = [&](RelaySet relays, WallMinute at, int timer) {
    each(relays, [&](std::size_t relay) {
      const LitSpan span{std::max(open[relay].From, begin), std::min(at, end), open[relay].OnBy,
                         at < end ? timer : NoTimer};
      if (span.From < span.To) spans[relay].push_back(span);
    });
  };
  for (const Switching& switching : switchings) {
    const RelaySet going = lit & switching.Off & ~switching.On;
    const RelaySet coming = switching.On & ~lit;
    goOff(going, switching.At, switching.Timer);
    each(coming, [&](std::size_t relay) {
      open[relay] = {switching.At, switching.At, switching.Timer};
    });
    lit = (lit & ~going) | coming;
  }
  goOff(lit, end, NoTimer);
  return spans;
}

}  // namespace

RelaySet RelaysOfGroup(const PanelRecordType& panel, int group) {
  return RelaysThat([&](int relay) { return panel.GroupRelayInclude(group, relay) != 0; });
}

std::vector<Switching> SwitchingsOf(const Project& project,
                                    const std::vector<TimerMoment>& moments) {
  std::array<Switching, ItemCount> byTimer{};
  for (int timer = 0; timer < ItemCount; ++timer) {
    byTimer[static_cast<std::size_t>(timer)] = {0, SwitchedBy(project.Panel, timer, 2),
                                                SwitchedBy(project.Panel, timer, 1), timer};
  }
  std::vector<Switching> switchings;
  for (const TimerMoment& moment : moments) {
    switchings.push_back(byTimer[static_cast<std::size_t>(moment.Timer)]);
    switchings.back().At = moment.At;
  }
  return switchings;
}

std::vector<LitTogether> LitBetween(const PanelRecordType& panel, int relays,
                                    const std::vector<Switching>& switchings, WallMinute begin,
                                    WallMinute end) {
  const SpansOfRelays spans = SpansOf(switchings, begin, end);
  std::vector<LitTogether> alike;
  for (int relay = 0; relay < relays; ++relay) {
    const auto& own = spans[static_cast<std::size_t>(relay)];
    if (own.empty() || panel.RelayTimerType(relay) >= FirstTypeThatReturns) continue;
    auto known = std::find_if(alike.begin(), alike.end(),
                              [&](const LitTogether& other) { return other.Spans == own; });
    if (known == alike.end()) known = alike.insert(alike.end(), LitTogether{{}, own});
    known->Relays.push_back({ItemKind::Relay, relay});
  }
  return alike;
}
