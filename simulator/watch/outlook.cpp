#include "simulator/watch/outlook.h"

#include <algorithm>

namespace simulator {

Outlook::Outlook(const Engine& engine, std::size_t lines) {
  Engine ahead = engine;
  LogLines writer(LogLines::When::Coming);
  ReasonKeeper reasons;
  ahead.SetSink([&](const Row& row) {
    const SharedReason& why = reasons.Take(row, ahead.Settings());
    if (Coming.size() < lines) writer.Take(row, ahead.Settings());
    std::vector<Happening>& next = Next[AboutWhat(row)];
    if (next.size() < 2) next.push_back({row.Time, row.What, row.Level, why});
  });
  const Instant last = engine.Now() + WithinMs;
  while (ahead.NextInstant() <= last) {
    ahead.AdvanceTo(ahead.NextInstant());
    if (Coming.size() >= lines) continue;
    for (auto& line : writer.Fetch()) Coming.push_back(std::move(line));
  }
  Coming.resize(std::min(Coming.size(), lines));
}

std::vector<Happening> Outlook::Of(const Subject& item) const {
  const auto found = Next.find(item);
  return found == Next.end() ? std::vector<Happening>() : found->second;
}

}  // namespace simulator
