#pragma once

#include <vector>

#include "simulator/watch/reason.h"

namespace simulator {

/// What a picture of days has rows for: relays, dimmer outputs, pilots.
constexpr int BarRows = Items + DimmerOutputs + Switches;
/// The row of an item; nothing for others.
std::optional<int> BarRowOf(const Subject& item);
Subject ItemOfBarRow(int row);

/// An item that is on for a while, blinks before it goes off, or stands at a level.
struct Bar {
  int Row = 0;  // a relay's is its number
  Instant From = 0;
  Instant To = 0;
  int Level = FullLevel;
  bool Blinks = false;
  SharedReason Began;  // nothing: before anybody looked
  SharedReason Ended;  // nothing: it goes on
};

/// Gathers from an engine's rows when its items are on, in order of their ends.
class BarKeeper {
 public:
  BarKeeper() = default;  // of items that are all off
  explicit BarKeeper(const Engine& engine);

  void Take(const Row& row, const Configuration& settings);
  /// All of them, with those that are still on ending at `end`.
  std::vector<Bar> Until(Instant end) const;

 private:
  struct Open {
    Instant Since = 0;
    int Level = 0;
    bool Blinks = false;
    SharedReason Began;
  };
  void Close(int row, Instant at, const SharedReason& why);

  std::vector<Bar> Bars;
  std::map<int, Open> Going;
  ReasonKeeper Reasons;
};

/// What the items will do from an engine's present on, `inputs` left as they are.
std::vector<Bar> BarsAhead(const Engine& engine, Instant to);

/// The same as if power came at `from`.
std::vector<Bar> BarsAfresh(const Engine& engine, Instant from, Instant to);

/// What has been and what will be, put together where they meet.
std::vector<Bar> Joined(std::vector<Bar> past, const std::vector<Bar>& ahead);

}  // namespace simulator
