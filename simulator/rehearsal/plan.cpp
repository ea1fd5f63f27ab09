#include "simulator/rehearsal/plan.h"

#include <algorithm>
#include <map>
#include <utility>

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
  Picture(const Engine& engine, const std::vector<Bar>& bars, std::vector<int> rows)
      : Panel(engine), Shown(std::move(rows)) {
    for (const Bar& bar : bars) Bars[bar.Row].push_back(bar);
  }

  void Day(std::int64_t day) {
    const Date date = DateOf(day);
    const SunAndHours hours = Panel.HoursOf(day);
    std::string title = std::string(WeekdayNames.at(static_cast<std::size_t>(WeekdayOf(day)))) +
                        " " + std::to_string(date.Year) + "-" + TwoDigits(date.Month) + "-" +
                        TwoDigits(date.Day);
    const int rows = Top + HeadHeight;
    const int height = static_cast<int>(Shown.size()) * RowHeight;
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
    int top = rows;
    for (const int row : Shown) {
      Item(day, row, top);
      top += RowHeight;
    }
    Text += lines;
    Top = rows + height + GapHeight;
  }

  /// What the colors mean, below the days.
  void Legend() {
    int x = NameWidth;
    const auto add = [&](const char* style, const char* words, int width) {
      constexpr int textWidth = 76;
      constexpr int boxWidth = 14;
      Text += Box(x + boxWidth - width, Top, width, RowHeight - 4, style);
      Text += Label(x + boxWidth + 4, Top + 9, words);
      x += boxWidth + textWidth;
    };
    const auto has = [this](int first, int last) {
      return std::any_of(Shown.begin(), Shown.end(),
                         [=](int row) { return row >= first && row < last; });
    };
    constexpr int wide = 14;
    add("on", "on", wide);
    add("blinks", "warning", wide);
    if (has(Items, Items + DimmerOutputs)) add("level", "dimmer level", wide);
    if (has(Items + DimmerOutputs, BarRows)) add("pilot", "pilot lit", wide);
    for (const char* line : {"sunrise", "sunset", "open", "close"}) add(line, line, 2);
    Top += RowHeight + GapHeight / 2;
  }

  std::string Whole() const {
    const std::string width = std::to_string(NameWidth + DayWidth + 20);
    const std::string height = std::to_string(Top);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height +
           "\" font-family=\"sans-serif\" "
           "font-size=\"10\">\n<defs><pattern id=\"stripes\" width=\"4\" height=\"4\" "
           "patternUnits=\"userSpaceOnUse\"><rect width=\"2\" height=\"4\" fill=\"#b04000\"/>"
           "</pattern></defs>\n"
           "<style>.day{fill:#eee}.on{fill:#e8a200}.blinks{fill:url(#stripes)}"
           ".level{fill:#3a8fb7}.pilot{fill:#4a9a4a}"
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

  std::string NameOf(int row) const {
    if (row >= Items) return simulator::Text(ItemOfBarRow(row));
    const std::string& name = Panel.RelayName(row);
    return name.empty() ? TwoDigits(row + 1) : name;
  }

  void Item(std::int64_t day, int row, int top) {
    const Instant from = Panel.Days().FromWallMinute(day * DayMinutes);
    const Instant to = Panel.Days().FromWallMinute((day + 1) * DayMinutes);
    Text += Label(NameWidth - 6, top + 11, NameOf(row), "end");
    const std::vector<Bar>& bars = Bars[row];
    auto bar = std::partition_point(bars.begin(), bars.end(),
                                    [from](const Bar& one) { return one.To <= from; });
    for (; bar != bars.end() && bar->From < to; ++bar) {
      const int left = X(day, std::max(bar->From, from));
      const int right = bar->To >= to ? NameWidth + DayWidth : X(day, bar->To);
      constexpr int whole = RowHeight - 4;
      const int height = (bar->Level * whole + FullLevel - 1) / FullLevel;
      Text += Box(left, top + 2 + whole - height, std::max(right - left, 1), height, StyleOf(*bar));
    }
  }

  static const char* StyleOf(const Bar& bar) {
    if (bar.Blinks) return "blinks";
    if (bar.Row < Items) return "on";
    return bar.Row < Items + DimmerOutputs ? "level" : "pilot";
  }

  const Engine& Panel;
  std::map<int, std::vector<Bar>> Bars;  // of each row, in order of time
  std::vector<int> Shown;
  int Top = 6;
  std::string Text;
};

}  // namespace

std::vector<int> RowsOfPlan(const Configuration& settings, Mask relays, PlanRows wanted) {
  std::vector<int> rows;
  EachBit(relays, [&](int relay) { rows.push_back(relay); });
  for (int output = 0; wanted.Dimmers && output < DimmerOutputs; ++output) {
    if (settings.Dimmers.Each[static_cast<std::size_t>(output)].Fitted) {
      rows.push_back(Items + output);
    }
  }
  if (!wanted.Pilots) return rows;
  for (const PilotSetting& pilot : settings.Inputs.Pilots) {
    if (pilot.What != PilotSetting::Kind::Static) {
      rows.push_back(Items + DimmerOutputs + pilot.Switch);
    }
  }
  return rows;
}

std::string PlanSvg(const Engine& engine, const PanelMemory& memory, const std::vector<Bar>& bars,
                    std::int64_t first, std::int64_t last, PlanRows wanted) {
  Mask relays = Bit(memory.Points()) - 1;
  for (const Bar& bar : bars) {
    if (bar.Row < Items) relays |= Bit(bar.Row);
  }
  Picture picture(engine, bars, RowsOfPlan(engine.Settings(), relays, wanted));
  for (std::int64_t day = first; day <= last; ++day) picture.Day(day);
  picture.Legend();
  return picture.Whole();
}

}  // namespace simulator
