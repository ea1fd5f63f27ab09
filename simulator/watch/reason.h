#pragma once

#include <map>
#include <memory>
#include <string>

#include "simulator/engine/engine.h"

namespace simulator {

/// The name that an item has in the settings, if it is one of its own.
std::string OwnName(const Subject& subject, const Configuration& settings);
/// As in "TIMER 03 DUSK", "FL 01 INPUT 2 STATION 1".
std::string NamedText(const Subject& subject, const Configuration& settings);
/// As in "LOBBY, HALL"; relays without a name of their own as "RELAY 05".
std::string RelayList(Mask relays, const Configuration& settings);
/// As in "16:45" or "16:45:10", with the day in front where it is not `today`'s.
std::string ShortTime(Instant at, Instant today, const Calendar& days);

/// With a capital, as a sentence begins.
std::string Capitalized(std::string text);

/// Why something happened.
struct Reason {
  Instant At = 0;
  Subject Cause;
  std::string Words;  // as in "TIMER 03 DUSK (at sunset)", "warning over (SWEEP of 21:00)"

  /// A time that ran out by itself has no doer.
  bool HasDoer() const {
    return Cause.What != Subject::Kind::Relay && Cause.What != Subject::Kind::Dimmer;
  }
  /// To put behind a time, as in " by SWEEP", ", warning over".
  std::string Ending() const { return (HasDoer() ? " by " : ", ") + Words; }
};
using SharedReason = std::shared_ptr<const Reason>;

/// Follows an engine's rows and tells the reason of the last one. What one cause does at one time
/// has one reason.
class ReasonKeeper {
 public:
  const SharedReason& Take(const Row& row, const Configuration& settings);

 private:
  SharedReason Known;
  std::map<Subject, SharedReason> RanOut;  // at the instant of the last row
  std::string Firing;                      // words of the cause's last row that fires
  Subject Fired;                           // what it told: a preset, a timer
};

/// A change of an item, and why.
struct Happening {
  Instant At = 0;
  Change What = Change::Off;
  int Level = 0;
  SharedReason Why;
};

/// As in "on", "level 40"; of presets "set" and "not set", of switches "closes" and "opens".
std::string ChangeText(const Subject& item, const Happening& happening);

/// The last change of each item; of timers when they fired last.
class LastChanges {
 public:
  void Take(const Row& row, const Configuration& settings);
  const Happening* Of(const Subject& item) const;
  const SharedReason& LastReason() const { return Last; }

 private:
  ReasonKeeper Reasons;
  SharedReason Last;
  std::map<Subject, Happening> Known;
};

/// What a row is about: its item, or the timer that fires.
inline const Subject& AboutWhat(const Row& row) {
  return row.Cause.What == Subject::Kind::Timer && row.What == Change::Fires ? row.Cause : row.Item;
}

}  // namespace simulator
