#pragma once

#include <functional>
#include <vector>

#include "simulator/window/lamp_button.h"
#include "simulator/window/panel_view.h"

class QVBoxLayout;

namespace simulator {

/// What is pressed on the walls of the building: local inputs, stations with as many buttons as
/// they have, input modules, photocells. A button is held as long as it is pressed; one of a switch
/// that stays closed stays down until the next press.
class SwitchView : public BuiltView {
 public:
  SwitchView(Panel& panel, Narrator& narrator);
  void ShowSettings(const Configuration& settings) override;

 private:
  /// A contact that a button closes.
  struct Place {
    int Device = 0;  // 0: a local input
    int Input = 0;
    Contact Which = Contact::On;
    InputKind Kind = InputKind::None;
    QString Text;
    QString What;  // it does
    bool operator==(const Place&) const = default;
  };
  /// What hangs in one place.
  struct Box {
    QString Title;
    int Photocell = 0;  // device
    std::vector<Place> Places;
    bool operator==(const Box&) const = default;
  };

  std::vector<Box> BoxesOf(const Configuration& settings) const;
  LampButton* Button(const Place& place);
  void AddPhotocell(QVBoxLayout& column, const Box& box);
  void Close(const Place& place, bool closed);

  std::vector<Box> Known;
};

}  // namespace simulator
