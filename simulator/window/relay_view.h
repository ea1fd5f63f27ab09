#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "simulator/window/lamp_button.h"
#include "simulator/window/panel_view.h"

class QGridLayout;
class QVBoxLayout;

namespace simulator {

/// Relays of one use: a group's, those of no group, those that nothing switches.
struct RelayUse {
  int Group = -1;  // -1: `Title` alone
  QString Title;
  std::vector<int> Relays;

  bool operator==(const RelayUse&) const = default;
};

/// Each of the first `count` relays once, under the first group that it belongs to.
std::vector<RelayUse> RelaysByUse(const Configuration& settings, int count);

/// Relays as lamps below their groups, presets, and dimmer outputs as bars. A press switches by
/// hand.
class RelayView : public BuiltView {
 public:
  explicit RelayView(Panel& panel);
  void ShowSettings(const Configuration& settings) override;

 private:
  struct Shown {
    std::vector<RelayUse> Uses;
    std::vector<int> Presets;
    std::vector<int> Dimmers;
    std::vector<std::string> Names;
    bool operator==(const Shown&) const = default;
  };
  /// Items of one kind as buttons.
  struct Kind {
    const char* Name;  // as in "Relay"
    const std::array<std::string, Items>& Names;
    struct State {
      bool Lit;
      const char* Words;
    };
    std::function<State(const Engine&, int)> StateOf;
    std::function<void(int)> Press;
  };

  void Build(const Configuration& settings, QVBoxLayout& column);
  void AddButtons(QGridLayout& grid, const Kind& kind, const std::vector<int>& items,
                  int firstColumn);
  void AddDimmers(QGridLayout& grid);

  Shown Known;
};

}  // namespace simulator
