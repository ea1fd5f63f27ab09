#pragma once

#include <string>

namespace simulator {

class Panel;

/// A panel's front: pages on its display, keys, LEDs.
class PanelFront {
 public:
  static constexpr int Rows = 4;
  static constexpr int RowLength = 20;
  static constexpr int Leds = 6;

  explicit PanelFront(Panel& panel) : Owner(panel) {}

  enum Key {
    Up = 0x01,
    Down = 0x02,
    Enter = 0x04,
    Exit = 0x08,
    Previous = 0x10,
    Next = 0x20,
    Chord = Previous | Next,  // shows the firmware text
  };
  /// Keys, a bit a key.
  void Press(int keys);
  /// All rows' characters; codes below 8 are the panel's own glyphs.
  std::string Display() const;
  /// Bit i is LED i, lit while relay i is on, i 0..5.
  int LitLeds() const;

 private:
  enum class Page { Home, Relays, Groups, Presets, Firmware };
  std::string HomePage() const;
  std::string ListPage() const;
  int PageItems() const;
  void ChooseSelected();

  Panel& Owner;
  Page Shown = Page::Home;
  int Selected = 0;
};

}  // namespace simulator
