#include "simulator/window/log_lines.h"

#include <utility>

namespace simulator {

namespace {

/// What is done to an item before and after its name; no verb for what follows from other rows.
struct Form {
  const char* Verb;  // of what has happened
  const char* ComingVerb;
  const char* Ending;
};

Form FormOf(const Row& row) {
  using enum Subject::Kind;
  switch (row.Item.What) {
    case Group:
    case Preset:
    case Pilot:
    case DevicePilot:
      return {"", "", ""};
    case Input:
    case DeviceInput:
      if (row.What == Change::On) return {"closed", "closes", ""};
      if (row.What == Change::Off) return {"opened", "opens", ""};
      break;
    default:
      break;
  }
  switch (row.What) {
    case Change::On:
      return {"turned ", "turns ", " on"};
    case Change::Off:
      return {"turned ", "turns ", " off"};
    case Change::Blinks:
      return {"made ", "makes ", " blink"};
    case Change::Level:
      return {"moved ", "moves ", " to level "};
    case Change::Disabled:
      return {"disabled ", "disables ", ""};
    case Change::Enabled:
      return {"enabled ", "enables ", ""};
    case Change::Fires:
      break;
  }
  return {"", "", ""};
}

std::string ItemText(const Row& row) {
  if (row.Item == row.Cause && row.Item.What != Subject::Kind::Relay) return {};
  const bool named = row.Item.What == Subject::Kind::Relay && !row.Words.empty();
  return named ? std::string(row.Words) : Text(row.Item);
}

}  // namespace

void LogLines::Finish() {
  if (!Open) return;
  Open = false;
  using enum Subject::Kind;
  std::string deed = Doing.Verb + Doing.Items + Doing.Ending;
  const bool tellsAll = Cause.Cause.What == Power || Cause.Cause.What == Clock;
  if (deed.empty() && !tellsAll) deed = "fires";
  Lines.push_back({Wall, Why + (deed.empty() ? "" : " ") + deed});
}

void LogLines::Take(const Row& row, const Calendar& days) {
  const Form form = FormOf(row);
  const bool fires = row.What == Change::Fires;
  if (!fires && *form.Verb == 0) return;
  // A switch that opens after it has set something does not do so in that thing's name.
  const bool itself = row.Item == row.Cause && Cause.Item.What != Subject::Kind::None &&
                      Cause.What == Change::Fires;
  if (fires || itself || row.Time != Cause.Time || !(row.Cause == Cause.Cause)) {
    Finish();
    Cause = row;
    Wall = days.Wall(row.Time);
    Why = Text(row.Cause);
    if (fires && row.Item.What != Subject::Kind::None) Why += ", " + Text(row.Item);
    if (fires && !row.Words.empty()) Why += " (" + std::string(row.Words) + ")";
    Doing = {};
    Open = fires;
    if (fires) return;
  }
  const char* verb = Tense == When::Past ? form.Verb : form.ComingVerb;
  std::string ending = form.Ending;
  if (row.What == Change::Level) ending += std::to_string(row.Level);
  if (Open && Doing.Verb == verb && Doing.Ending == ending) {
    Doing.Items += ", " + ItemText(row);
    return;
  }
  if (!Doing.Verb.empty()) Finish();
  Doing = {verb, ItemText(row), ending};
  Open = true;
}

std::vector<LogLines::Line> LogLines::Fetch() {
  Finish();
  return std::exchange(Lines, {});
}

}  // namespace simulator
