#include "simulator/rehearsal/plan.h"

#include <algorithm>

#include "simulator/memory/digits.h"

namespace simulator {

namespace {

constexpr int NameWidth = 110;
constexpr int DayWidth = 720;  // two minutes a unit
constexpr int RowHeight = 14;
constexpr int HeadHeight = 36;
constexpr int GapHeight = 18;
constexpr int HourWidth = DayWidth / 24;

std::string Escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&')
      result += "&amp;";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else
      result += c;
  }
  return result;
}

std::string Label(int x, int y, const std::string& text, const char* anchor = "start") {
  return "<text x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" text-anchor=\"" +
         anchor + "\">" + Escaped(text) + "</text>\n";
}

std::string Box(int x, int y, int width, int height, const char* style) {
  return "<rect x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" width=\"" +
         std::to_string(width) + "\" height=\"" + std::to_string(height) + "\" class=\"" + style +
         "\"/>\n";
}

/// Draws the days one below the other.
class Picture {
 public:
  Picture(const Engine& engine, const std::vector<Bar>& bars, Mask relays)
      : Panel(engine), Shown(relays) {
    for (const Bar& bar : bars) Bars[static_cast<std::size_t>(bar.Relay)].push_back(bar);
  }

  void Day(std::int64_t day) {
    const Date date = DateOf(day);
    const SunAndHours hours = Panel.HoursOf(day);
    std::string title = std::string(WeekdayNames.at(static_cast<std::size_t>(WeekdayOf(day)))) +
                        " " + std::to_string(date.Year) + "-" + TwoDigits(date.Month) + "-" +
                        TwoDigits(date.Day);
    const int rows = Top + HeadHeight;
    const int height = std::popcount(Shown) * RowHeight;
    std::string lines;
    const auto event = [&](const char* name, const std::optional<Instant>& at) {
      title += std::string("   ") + (at ? "" : "no ") + name;
      if (!at) return;
      const std::int64_t minute = Panel.Days().Wall(*at) / MinuteMs;
      title += " " + TwoDigits(static_cast<int>(minute / 60 % 24)) + ":" +
               TwoDigits(static_cast<int>(minute % 60));
      if (minute / DayMinutes == day) lines += Box(X(day, *at), rows, 1, height, name);
    };
    event("sunrise", hours.Sunrise);
    event("sunset", hours.Sunset);
    event("open", hours.Open);
    event("close", hours.Close);
    Text += Label(NameWidth, Top + 12, title);
    for (int hour = 0; hour <= 24; hour += 2) {
      Text += Label(NameWidth + hour * HourWidth, Top + 28, std::to_string(hour), "middle");
    }
    Text += Box(NameWidth, rows, DayWidth, height, "day");
    int row = 0;
    EachBit(Shown, [&](int relay) { Relay(day, relay, rows + RowHeight * row++); });
    Text += lines;
    Top = rows + height + GapHeight;
  }

  std::string Whole() const {
    const std::string width = std::to_string(NameWidth + DayWidth + 20);
    const std::string height = std::to_string(Top);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height +
           "\" font-family=\"sans-serif\" "
           "font-size=\"10\">\n<style>.day{fill:#eee}.on{fill:#e8a200}"
           ".sunrise{fill:#d04000}.sunset{fill:#7030a0}.open{fill:#108030}.close{fill:#1050c0}"
           "</style>\n" +
           Text + "</svg>\n";
  }

 private:
  int X(std::int64_t day, Instant at) const {
    const std::int64_t minutes = Panel.Days().Wall(at) / MinuteMs - day * DayMinutes;
    return NameWidth + static_cast<int>(std::clamp<std::int64_t>(minutes, 0, DayMinutes) *
                                        DayWidth / DayMinutes);
  }

  void Relay(std::int64_t day, int relay, int top) {
    const Instant from = Panel.Days().FromWallMinute(day * DayMinutes);
    const Instant to = Panel.Days().FromWallMinute((day + 1) * DayMinutes);
    const std::string& name = Panel.RelayName(relay);
    Text += Label(NameWidth - 6, top + 11, name.empty() ? TwoDigits(relay + 1) : name, "end");
    const std::vector<Bar>& bars = Bars[static_cast<std::size_t>(relay)];
    auto bar = std::partition_point(bars.begin(), bars.end(),
                                    [from](const Bar& one) { return one.To <= from; });
    for (; bar != bars.end() && bar->From < to; ++bar) {
      const int left = X(day, std::max(bar->From, from));
      const int right = bar->To >= to ? NameWidth + DayWidth : X(day, bar->To);
      Text += Box(left, top + 2, std::max(right - left, 1), RowHeight - 4, "on");
    }
  }

  const Engine& Panel;
  std::array<std::vector<Bar>, Items> Bars;  // of each relay, in order of time
  Mask Shown;
  int Top = 6;
  std::string Text;
};

}  // namespace

BarKeeper::BarKeeper(const Engine& engine) {
  EachBit(engine.Relays(), [&](int i) { Since[static_cast<std::size_t>(i)] = engine.Now(); });
}

void BarKeeper::Take(const Row& row) {
  if (row.Item.What != Subject::Kind::Relay) return;
  auto& since = Since[static_cast<std::size_t>(row.Item.Number)];
  if (row.What == Change::Off && since) {
    if (row.Time > *since) Bars.push_back({row.Item.Number, *since, row.Time});
    since.reset();
  } else if (row.What != Change::Off && !since) {
    since = row.Time;
  }
}

std::vector<Bar> BarKeeper::Until(Instant end) const {
  std::vector<Bar> bars = Bars;
  for (int i = 0; i < Items; ++i) {
    const auto& since = Since[static_cast<std::size_t>(i)];
    if (since && end > *since) bars.push_back({i, *since, end});
  }
  return bars;
}

std::vector<Bar> BarsAhead(const Engine& engine, Instant to) {
  Engine ahead = engine;
  BarKeeper keeper(ahead);
  ahead.SetSink([&keeper](const Row& row) { keeper.Take(row); });
  ahead.AdvanceTo(to);
  return keeper.Until(to);
}

std::string PlanSvg(const Engine& engine, const PanelMemory& memory, const std::vector<Bar>& bars,
                    std::int64_t first, std::int64_t last) {
  Mask relays = Bit(memory.Points()) - 1;
  for (const Bar& bar : bars) relays |= Bit(bar.Relay);
  Picture picture(engine, bars, relays);
  for (std::int64_t day = first; day <= last; ++day) picture.Day(day);
  return picture.Whole();
}

}  // namespace simulator
