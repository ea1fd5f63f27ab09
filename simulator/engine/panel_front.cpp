#include "simulator/engine/panel_front.h"

#include <algorithm>
#include <array>

#include "simulator/engine/panel.h"
#include "simulator/memory/digits.h"

namespace simulator {

namespace {

// The panel's own glyphs, codes below 8.
constexpr char Pointer = 1;
constexpr char LampLit = 2;
constexpr char LampDark = 3;

std::string DisplayRow(std::string text) {
  text.resize(PanelFront::RowLength, ' ');
  return text;
}

/// Memory that holds no text shows as blanks, not as glyphs.
std::string AsBlanks(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

}  // namespace

void PanelFront::Press(int keys) {
  if (!Owner.Powered()) return;
  if ((keys & Chord) == Chord) {
    Shown = Page::Firmware;
    return;
  }
  constexpr std::array order{Page::Home, Page::Relays, Page::Groups, Page::Presets};
  const auto at = std::find(order.begin(), order.end(), Shown);
  const auto page = at == order.end() ? 0 : static_cast<std::size_t>(at - order.begin());
  const std::size_t step = (keys & Next) != 0 ? 1 : order.size() - 1;
  if ((keys & (Next | Previous)) != 0) {
    Shown = order[(page + step) % order.size()];
    Selected = 0;
  }
  if ((keys & Exit) != 0) Shown = Page::Home;
  if ((keys & Up) != 0) Selected = std::max(Selected - 1, 0);
  if ((keys & Down) != 0) Selected = std::max(std::min(Selected + 1, PageItems() - 1), 0);
  if ((keys & Enter) != 0) ChooseSelected();
}

int PanelFront::PageItems() const {
  if (Shown == Page::Relays) return Owner.Points();
  return Shown == Page::Groups || Shown == Page::Presets ? Items : 0;
}

void PanelFront::ChooseSelected() {
  if (Shown == Page::Home) {
    Shown = Page::Relays;
    Selected = 0;
  } else if (Selected >= PageItems()) {
    return;
  } else if (Shown == Page::Relays) {
    Owner.SetRelay(Selected, !Owner.Relay(Selected));
  } else if (Shown == Page::Groups) {
    Owner.SetGroup(Selected, !Owner.Group(Selected));
  } else {
    Owner.SetPreset(Selected);
  }
}

std::string PanelFront::Display() const {
  if (!Owner.Powered()) return std::string(std::size_t{Rows} * RowLength, ' ');
  switch (Shown) {
    case Page::Home:
      return HomePage();
    case Page::Firmware:
      return AsBlanks(Owner.FirmwareText()) + DisplayRow("") + DisplayRow("Exit: home");
    default:
      return ListPage();
  }
}

std::string PanelFront::HomePage() const {
  const QDateTime time = Owner.Time();
  const int hour = time.time().hour();
  int lit = 0;
  for (int relay = 0; relay < Items; ++relay) lit += Owner.Relay(relay) ? 1 : 0;
  return DisplayRow(AsBlanks(Owner.Memory.Text(map::PanelName, map::PanelNameLength))) +
         DisplayRow(std::string(WeekdayNames.at(static_cast<std::size_t>(Owner.Weekday()))) + " " +
                    TwoDigits(time.date().month()) + "/" + TwoDigits(time.date().day()) + "/" +
                    TwoDigits(time.date().year() % 100)) +
         DisplayRow(TwoDigits((hour + 11) % 12 + 1, ' ') + ":" + TwoDigits(time.time().minute()) +
                    ":" + TwoDigits(time.time().second()) + (hour < 12 ? " AM" : " PM")) +
         DisplayRow(std::string(1, lit > 0 ? LampLit : LampDark) + " Relays on: " + TwoDigits(lit));
}

std::string PanelFront::ListPage() const {
  constexpr int listRows = 3;
  struct List {
    const char* Title;
    int Names;
    std::function<bool(int)> Lit;
  };
  const List list =
      Shown == Page::Relays
          ? List{"Relays", map::RelayName, [this](int i) { return Owner.Relay(i); }}
      : Shown == Page::Groups
          ? List{"Groups", map::GroupName, [this](int i) { return Owner.Group(i); }}
          : List{"Presets", map::PresetName, [this](int i) { return Owner.PresetState(i) == '1'; }};
  std::string text = DisplayRow(list.Title);
  const int first = Selected / listRows * listRows;
  for (int i = first; i < first + listRows; ++i) {
    if (i >= PageItems()) {
      text += DisplayRow("");
      continue;
    }
    const std::string name = Owner.Memory.Text(list.Names + i * map::NameLength, map::NameLength);
    text += DisplayRow(std::string(1, i == Selected ? Pointer : ' ') + TwoDigits(i + 1) + " " +
                       AsBlanks(name) + " " + (list.Lit(i) ? LampLit : LampDark));
  }
  return text;
}

int PanelFront::LitLeds() const {
  return static_cast<int>(Owner.Runner().Relays() & ((Mask{1} << Leds) - 1));
}

}  // namespace simulator
