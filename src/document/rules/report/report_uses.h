#pragma once

#include <map>
#include <vector>

#include "document/rules/uses.h"

/// When a local input is active: "6:00A to 6:00P"; empty for always.
QString InputActive(const Project& project, int input);

/// When a timer runs: "45 min before sunset, Mon to Fri".
QString TimerRuns(const Project& project, int timer);

/// The uses of a project from both of their ends, in words. Lines of one item are parted by '\n'.
class ReportUses {
 public:
  explicit ReportUses(const Project& project);

  /// Whether it does more than to show a pilot.
  bool DoesAnything(const Item& user) const;

  /// "turns RELAY 01 FOYER, RELAY 05 to 08 on and off"
  QString WhatItDoes(const Item& user) const;

  /// "TIMER 03 (6:00 AM, Mon to Fri): turns it on": what acts directly, then "Through GROUP 07:
  /// ..." for the groups and presets that hold it, unless the same is done directly.
  QString WhatActsOnIt(const Item& used, bool several = false) const;

  /// The items, in order, many in a row as "RELAY 05 to 08" or "RELAY 01 FOYER to RELAY 08 HALL";
  /// with the times at which they act.
  QString Names(const std::vector<Item>& items, bool when = false) const;

 private:
  /// A use with its user and its words as places in the lists of all.
  struct Entry {
    const Use* Of;
    std::size_t User;
    std::size_t Words;
  };
  using Index = std::map<Item, std::vector<Entry>>;
  struct Told {
    QString Text;
    QString When;
    bool Named;
  };
  /// The ways in which one item does the same to another.
  struct Ways;

  static const std::vector<Entry>& In(const Index& index, const Item& item);
  std::vector<Ways> WaysTo(const Item& used) const;
  const Told& Tell(const Item& item) const;

  const Project& project_;
  std::vector<Use> uses_;
  std::vector<Item> users_;
  std::vector<QLatin1StringView> words_;
  Index byUser_;
  Index byUsed_;
  mutable std::map<Item, Told> told_;
};
