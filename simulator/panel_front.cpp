#include <algorithm>

#include "simulator/digits.h"
#include "simulator/panel.h"

namespace simulator {

namespace {

constexpr int RowLength = 20;

// The panel's own glyphs, codes below 8.
constexpr char Pointer = 1;
constexpr char LampLit = 2;
constexpr char LampDark = 3;

enum Key { Up = 0x01, Down = 0x02, Enter = 0x04, Exit = 0x08, Previous = 0x10, Next = 0x20 };
constexpr int Chord = Previous | Next;

std::string DisplayRow(std::string text) {
  text.resize(RowLength, ' ');
  return text;
}

/// Memory that holds no text shows as blanks, not as glyphs.
std::string Shown(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

}  // namespace

void Panel::PressKeys(int bits) {
  if ((bits & Chord) == Chord) {
    Shown = Page::Firmware;
    return;
  }
  constexpr std::array order{Page::Home, Page::Relays, Page::Groups, Page::Presets};
  const auto at = std::find(order.begin(), order.end(), Shown);
  const auto page = at == order.end() ? 0 : static_cast<std::size_t>(at - order.begin());
  const std::size_t step = (bits & Next) != 0 ? 1 : order.size() - 1;
  if ((bits & (Next | Previous)) != 0) {
    Shown = order[(page + step) % order.size()];
    Selected = 0;
  }
  if ((bits & Exit) != 0) Shown = Page::Home;
  if ((bits & Up) != 0) Selected = std::max(Selected - 1, 0);
  if ((bits & Down) != 0) Selected = std::max(std::min(Selected + 1, PageItems() - 1), 0);
  if ((bits & Enter) != 0) EnterKey();
}

int Panel::PageItems() const {
  if (Shown == Page::Relays) return Points();
  return Shown == Page::Groups || Shown == Page::Presets ? Items : 0;
}

void Panel::EnterKey() {
  if (Shown == Page::Home) {
    Shown = Page::Relays;
    Selected = 0;
  } else if (Selected >= PageItems()) {
    return;
  } else if (Shown == Page::Relays) {
    SetRelay(Selected, !Relay(Selected));
  } else if (Shown == Page::Groups) {
    SetGroup(Selected, !Group(Selected));
  } else {
    SetPreset(Selected);
  }
}

std::string Panel::Display() {
  switch (Shown) {
    case Page::Home:
      return HomePage();
    case Page::Firmware: {
      std::string text = Firmware;
      text.resize(FirmwareSize, ' ');
      return simulator::Shown(text) + DisplayRow("") + DisplayRow("Exit: home");
    }
    default:
      return ListPage();
  }
}

std::string Panel::HomePage() {
  static constexpr const char* days[]{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  const QDateTime time = Time();
  const int hour = time.time().hour();
  int lit = 0;
  for (int relay = 0; relay < Items; ++relay) lit += Relay(relay) ? 1 : 0;
  return DisplayRow(simulator::Shown(Memory.Text(map::PanelName, map::PanelNameLength))) +
         DisplayRow(std::string(days[Weekday()]) + " " + TwoDigits(time.date().month()) + "/" +
                    TwoDigits(time.date().day()) + "/" + TwoDigits(time.date().year() % 100)) +
         DisplayRow(TwoDigits((hour + 11) % 12 + 1, ' ') + ":" + TwoDigits(time.time().minute()) +
                    ":" + TwoDigits(time.time().second()) + (hour < 12 ? " AM" : " PM")) +
         DisplayRow(std::string(1, lit > 0 ? LampLit : LampDark) + " Relays on: " + TwoDigits(lit));
}

std::string Panel::ListPage() {
  constexpr int listRows = 3;
  struct List {
    const char* Title;
    int Names;
    std::function<bool(int)> Lit;
  };
  const List list =
      Shown == Page::Relays ? List{"Relays", map::RelayName, [this](int i) { return Relay(i); }}
      : Shown == Page::Groups
          ? List{"Groups", map::GroupName, [this](int i) { return Group(i); }}
          : List{"Presets", map::PresetName, [this](int i) { return PresetState(i) == '1'; }};
  std::string text = DisplayRow(list.Title);
  const int first = Selected / listRows * listRows;
  for (int i = first; i < first + listRows; ++i) {
    if (i >= PageItems()) {
      text += DisplayRow("");
      continue;
    }
    const std::string name = Memory.Text(list.Names + i * map::NameLength, map::NameLength);
    text += DisplayRow(std::string(1, i == Selected ? Pointer : ' ') + TwoDigits(i + 1) + " " +
                       simulator::Shown(name) + " " + (list.Lit(i) ? LampLit : LampDark));
  }
  return text;
}

}  // namespace simulator
