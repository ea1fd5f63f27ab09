#include "simulator/watch/log_lines.h"

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
      return {"moved ", "moves ", ""};
    case Change::Disabled:
      return {"disabled ", "disables ", ""};
    case Change::Enabled:
      return {"enabled ", "enables ", ""};
    case Change::Fires:
      break;
  }
  return {"", "", ""};
}

std::string ItemText(const Row& row, const Configuration& settings) {
  const bool ranOut =
      row.Item.What == Subject::Kind::Relay || row.Item.What == Subject::Kind::Dimmer;
  if (row.Item == row.Cause && !ranOut) return {};
  if (row.What == Change::Level) {
    return NamedText(row.Item, settings) + " to level " + std::to_string(row.Level);
  }
  if (row.Item.What != Subject::Kind::Relay) return NamedText(row.Item, settings);
  return row.Words.empty() ? Text(row.Item) : std::string(row.Words);
}

std::string Listed(const std::vector<std::string>& items) {
  std::string list;
  for (const std::string& item : items) list += (list.empty() ? "" : ", ") + item;
  return list;
}

}  // namespace

std::string LogLines::Sentence() const {
  using enum Subject::Kind;
  if (!Why->HasDoer()) {  // it ran out by itself
    const std::string text = Capitalized(Why->Words);
    return Done.empty() ? text : text + ": " + Done;
  }
  const std::string& deed = Done;
  const bool tellsAll = Why->Cause.What == Power || Why->Cause.What == Clock;
  if (deed.empty()) return Why->Words + (tellsAll ? "" : " fires");
  return Why->Words + " " + deed;
}

void LogLines::FinishDeed() {
  const Deed deed = std::exchange(Doing, {});
  if (deed.Verb.empty()) return;
  if (!Done.empty()) Done += "; ";
  const std::size_t count = deed.Items.size();
  if (Why->HasDoer() || count == 1) {
    Done += (Why->HasDoer() ? deed.Verb : "") + Listed(deed.Items) + deed.Ending;
  } else {
    Done += std::to_string(count) + " relays" + deed.Ending + ", " + Listed(deed.Items);
  }
}

void LogLines::Finish() {
  if (!Open) return;
  Open = false;
  FinishDeed();
  // Of a sweep that turns nothing off nothing is told.
  const bool idle = Done.empty() && Why->Cause.What == Subject::Kind::Sweep;
  if (!idle) Lines.push_back({Wall, Sentence()});
}

void LogLines::Take(const Row& row, const Configuration& settings) {
  const Form form = FormOf(row);
  const bool fires = row.What == Change::Fires;
  const SharedReason reason = Reasons.Take(row, settings);
  if (!fires && (*form.Verb == 0 || !Matters(row, settings))) return;
  const bool sameEnd = Why && !Why->HasDoer() && !reason->HasDoer() && Why->At == reason->At &&
                       Why->Words == reason->Words && Open;
  if (reason != Why && !sameEnd) {
    Finish();
    Done.clear();
    Wall = settings.Days.Wall(row.Time);
  }
  Why = reason;
  if (fires) {
    Open = true;
    return;
  }
  const char* verb = Tense == When::Past ? form.Verb : form.ComingVerb;
  const std::string item = ItemText(row, settings);
  if (Doing.Verb != verb || Doing.Ending != form.Ending) FinishDeed();
  Doing.Verb = verb;
  Doing.Ending = form.Ending;
  if (!item.empty()) Doing.Items.push_back(item);
  Open = true;
}

std::vector<LogLines::Line> LogLines::Fetch() {
  Finish();
  Why = nullptr;
  return std::exchange(Lines, {});
}

}  // namespace simulator
