#include "simulator/watch/bars.h"

namespace simulator {

std::optional<int> BarRowOf(const Subject& item) {
  switch (item.What) {
    case Subject::Kind::Relay:
      return item.Number;
    case Subject::Kind::Dimmer:
      return Items + item.Number * OutputsADimmer + item.Sub;
    case Subject::Kind::Pilot:
      return Items + DimmerOutputs + item.Number;
    case Subject::Kind::DevicePilot:
      return Items + DimmerOutputs + SwitchOf(item.Number, item.Sub);
    default:
      return std::nullopt;
  }
}

Subject ItemOfBarRow(int row) {
  if (row < Items) return {Subject::Kind::Relay, row, 0};
  const int output = row - Items;
  if (output < DimmerOutputs) {
    return {Subject::Kind::Dimmer, output / OutputsADimmer, output % OutputsADimmer};
  }
  const int pilot = output - DimmerOutputs;
  if (pilot < Items) return {Subject::Kind::Pilot, pilot, 0};
  return {Subject::Kind::DevicePilot, DeviceOf(pilot), InputOf(pilot)};
}

BarKeeper::BarKeeper(const Engine& engine) {
  const Instant now = engine.Now();
  EachBit(engine.Relays(), [&](int relay) {
    Going[relay] = {now, FullLevel, Has(engine.BlinkingRelays(), relay), {}};
  });
  for (int output = 0; output < DimmerOutputs; ++output) {
    const bool fitted = engine.Settings().Dimmers.Each[static_cast<std::size_t>(output)].Fitted;
    const int level = fitted ? GoalLevel(engine.Inside(), output) : 0;
    if (level != 0) Going[Items + output] = {now, level, false, {}};
  }
  for (const PilotSetting& pilot : engine.Settings().Inputs.Pilots) {
    if (!PilotIsLit(engine.Inside(), pilot.Switch)) continue;
    Going[Items + DimmerOutputs + pilot.Switch] = {now, FullLevel, false, {}};
  }
}

void BarKeeper::Close(int row, Instant at, const SharedReason& why) {
  const auto open = Going.find(row);
  if (open == Going.end()) return;
  const Open& was = open->second;
  if (at > was.Since) Bars.push_back({row, was.Since, at, was.Level, was.Blinks, was.Began, why});
  Going.erase(open);
}

void BarKeeper::Take(const Row& row, const Configuration& settings) {
  const SharedReason& why = Reasons.Take(row, settings);
  const auto place = BarRowOf(row.Item);
  if (!place || row.What == Change::Fires) return;
  int level = row.What == Change::Off ? 0 : FullLevel;
  if (row.What == Change::Level) level = row.Level;
  const bool blinks = row.What == Change::Blinks;
  const auto open = Going.find(*place);
  if (open != Going.end() && open->second.Level == level && open->second.Blinks == blinks) return;
  Close(*place, row.Time, why);
  if (level != 0) Going[*place] = {row.Time, level, blinks, why};
}

std::vector<Bar> BarKeeper::Until(Instant end) const {
  std::vector<Bar> bars = Bars;
  for (const auto& [row, open] : Going) {
    if (end > open.Since)
      bars.push_back({row, open.Since, end, open.Level, open.Blinks, open.Began, {}});
  }
  return bars;
}

std::vector<Bar> BarsAhead(const Engine& engine, Instant to) {
  Engine ahead = engine;
  BarKeeper keeper(ahead);
  ahead.SetSink([&](const Row& row) { keeper.Take(row, ahead.Settings()); });
  ahead.AdvanceTo(to);
  return keeper.Until(to);
}

std::vector<Bar> BarsAfresh(const Engine& engine, Instant from, Instant to) {
  Engine other = engine;
  BarKeeper keeper;
  other.SetSink([&](const Row& row) { keeper.Take(row, other.Settings()); });
  other.PowerOn(from);
  other.AdvanceTo(to);
  return keeper.Until(to);
}

std::vector<Bar> Joined(std::vector<Bar> past, const std::vector<Bar>& ahead) {
  std::map<int, std::size_t> goingOn;
  for (std::size_t i = 0; i < past.size(); ++i) {
    if (!past[i].Ended) goingOn[past[i].Row] = i;
  }
  for (const Bar& bar : ahead) {
    const auto before = goingOn.find(bar.Row);
    Bar* last = before == goingOn.end() ? nullptr : &past[before->second];
    const bool same = last && last->To == bar.From && last->Level == bar.Level &&
                      last->Blinks == bar.Blinks && !bar.Began;
    if (same) {
      last->To = bar.To;
      last->Ended = bar.Ended;
    } else {
      past.push_back(bar);
    }
  }
  return past;
}

}  // namespace simulator
