#pragma once

#include <cstdint>
#include <vector>

#include "panel/items.h"
#include "schedule/rules/timer_moments.h"

// When timers have relays on.

using RelaySet = std::uint64_t;  ///< A bit a relay.

template <typename Holds>
RelaySet RelaysThat(Holds holds) {
  RelaySet set = 0;
  for (int relay = 0; relay < ItemCount; ++relay) {
    if (holds(relay)) set |= RelaySet{1} << relay;
  }
  return set;
}
/// The members of a group.
RelaySet RelaysOfGroup(const PanelRecordType& panel, int group);

constexpr int NoTimer = -1;

/// What is switched at a moment. What is turned both off and on is on.
struct Switching {
  WallMinute At;
  RelaySet Off;
  RelaySet On;
  int Timer = NoTimer;  ///< By which.
};

/// What timers switch as they fire, themselves and through their groups and presets.
std::vector<Switching> SwitchingsOf(const Project& project,
                                    const std::vector<TimerMoment>& moments);

struct LitSpan {
  WallMinute From;
  WallMinute To;
  int OnBy = NoTimer;
  int OffBy = NoTimer;  ///< None where it lasts.

  /// Whichever timers it is by.
  bool operator==(const LitSpan& other) const { return From == other.From && To == other.To; }
};

/// Relays that are on at the same times.
struct LitTogether {
  std::vector<Item> Relays;
  std::vector<LitSpan> Spans;
};

/// Of the first `relays` relays those that are on between two minutes, by switchings in the order
/// of time that begin before. A relay that goes back by itself stays on for no evening and is none.
std::vector<LitTogether> LitBetween(const PanelRecordType& panel, int relays,
                                    const std::vector<Switching>& switchings, WallMinute begin,
                                    WallMinute end);
