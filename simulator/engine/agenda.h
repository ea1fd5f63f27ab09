#pragma once

#include <optional>
#include <vector>

#include "simulator/engine/row.h"
#include "simulator/memory/mask.h"

namespace simulator {

enum class Due { WarningOver, TimeOver, PulseOver, PulseBack, OverrideOver, Photocell, Dimmer };

/// Something that comes by itself: relays whose time is over, a photocell that has got somewhere,
/// a dimmer output that reverts.
struct Pending {
  Instant At = 0;
  Due What = Due::WarningOver;
  Mask Relays = 0;
  int Number = 0;  // of the photocell's device or the dimmer output
  Actor Begun;
};

/// What is pending, by time; what is due at the same instant comes in the order in which it began.
class Agenda {
 public:
  /// Nothing that speaks of relays and has none is taken in.
  void Add(const Pending& pending);
  std::optional<Instant> Next() const;
  /// The next one, which must be there.
  Pending Take();

  /// All of it, the next one last.
  const std::vector<Pending>& All() const { return Queue; }

  /// What waits for these relays does no more, but pulses of `pulsing` come to their end.
  void ForgetRelays(Mask relays, Mask pulsing);
  /// Of a photocell or a dimmer output.
  void Forget(Due due, int number);
  Mask RelaysWaiting(Due due) const;
  /// The present moves, and the remaining times stay.
  void Move(std::int64_t way);

 private:
  std::vector<Pending> Queue;  // the next one last
};

}  // namespace simulator
