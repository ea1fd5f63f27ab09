#pragma once

#include <QDateTime>
#include <functional>

#include "simulator/window/panel_view.h"

class QListWidget;

namespace simulator {

/// The next events in words.
class ComingView : public PanelView {
 public:
  ComingView(Panel& panel, Narrator& narrator);
  void ShowSettings(const Configuration&) override {}
  void ShowStates() override;

  /// Called for an event of the list that is chosen.
  std::function<void(const QDateTime&)> GoTo;

 private:
  Narrator& Story;
  QListWidget* Coming;
  std::uint64_t ShownLooks = 0;
};

}  // namespace simulator
