#pragma once

#include <QPointer>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "simulator/window/fold_box.h"
#include "simulator/window/lamp_button.h"
#include "simulator/window/panel_view.h"

class QVBoxLayout;

namespace simulator {

class TileLayout;

/// Relays of one use: a group's, those of no group, those that nothing switches.
struct RelayUse {
  int Group = -1;  // -1: `Title` alone
  QString Title;
  std::vector<int> Relays;
  bool Folded = false;

  bool operator==(const RelayUse&) const = default;
};

/// All groups that have relays or a name of their own, each with all its relays; then relays of no
/// group. Of those beyond the first `count` what nothing uses is folded away.
std::vector<RelayUse> RelaysByUse(const Configuration& settings, int count);

/// Relays as lamps below their groups, presets and timers, and dimmer outputs as bars. A press
/// switches by hand.
class RelayView : public BuiltView {
 public:
  RelayView(Panel& panel, Narrator& narrator);
  void ShowSettings(const Configuration& settings) override;

 private:
  struct Shown {
    std::vector<RelayUse> Uses;
    std::vector<int> Presets;
    std::vector<int> Timers;
    std::vector<int> Dimmers;
    std::vector<std::string> Names;
    bool operator==(const Shown&) const = default;
  };
  /// Items of one kind as buttons.
  struct Kind {
    Subject::Kind What;
    const char* Name;  // as in "Relay"
    const std::array<std::string, Items>& Names;
    struct State {
      bool Lit;
      const char* Words;
    };
    std::function<State(const Engine&, int)> StateOf;
    std::function<void(int)> Press;
  };
  struct Kinds;

  void Build(const Configuration& settings, QVBoxLayout& column);
  void AddUse(QVBoxLayout& column, const RelayUse& use, const Kinds& kinds);
  QWidget* GroupSwitches(const RelayUse& use, const Kind& groups);
  LampButton* Button(const Kind& kind, int item);
  void AddButtons(TileLayout& tiles, const Kind& kind, const std::vector<int>& items);
  void AddDimmers(QVBoxLayout& column);

  Shown Known;
  QPointer<FoldBox> Unused;
  bool UnusedOpen = false;
};

}  // namespace simulator
