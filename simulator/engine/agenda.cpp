#include "simulator/engine/agenda.h"

#include <algorithm>

namespace simulator {

namespace {

bool HasLostItsRelays(const Pending& pending) {
  return pending.Relays == 0 && pending.What != Due::Photocell && pending.What != Due::Dimmer;
}

}  // namespace

void Agenda::Add(const Pending& pending) {
  if (HasLostItsRelays(pending)) return;
  const auto place =
      std::lower_bound(Queue.begin(), Queue.end(), pending,
                       [](const Pending& a, const Pending& b) { return a.At > b.At; });
  Queue.insert(place, pending);
}

std::optional<Instant> Agenda::Next() const {
  return Queue.empty() ? std::nullopt : std::optional(Queue.back().At);
}

Pending Agenda::Take() {
  const Pending next = Queue.back();
  Queue.pop_back();
  return next;
}

void Agenda::ForgetRelays(Mask relays, Mask pulsing) {
  if (relays == 0 || Queue.empty()) return;
  for (Pending& pending : Queue) {
    pending.Relays &= ~(pending.What == Due::PulseOver ? relays & ~pulsing : relays);
  }
  std::erase_if(Queue, HasLostItsRelays);
}

void Agenda::Forget(Due due, int number) {
  std::erase_if(Queue, [&](const Pending& pending) {
    return pending.What == due && pending.Number == number;
  });
}

Mask Agenda::RelaysWaiting(Due due) const {
  Mask relays = 0;
  for (const Pending& pending : Queue) {
    if (pending.What == due) relays |= pending.Relays;
  }
  return relays;
}

void Agenda::Move(std::int64_t way) {
  for (Pending& pending : Queue) {
    pending.At += way;
    pending.Begun.Since += way;
  }
}

}  // namespace simulator
