#pragma once

#include "simulator/window/panel_view.h"

namespace simulator {

class LampButton;

/// The panel's front: display, LEDs and keys.
class FrontView : public PanelView {
 public:
  explicit FrontView(Panel& panel);
  void ShowSettings(const Configuration&) override {}
  void ShowStates() override;

 private:
  class Glass;
  class Leds;
  Glass* Display;
  Leds* Lights;
};

}  // namespace simulator
