#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include "simulator/watch/running.h"
#include "simulator/window/panel_view.h"

class QTreeWidget;

namespace simulator {

/// What runs, holds or is in force now, with the time that is left.
class WatchView : public PanelView {
 public:
  WatchView(Panel& panel, Narrator& narrator);
  void ShowSettings(const Configuration&) override {}
  void ShowStates() override;

 private:
  /// Gives each line the height of its words.
  void FitLines();
  /// The same once the list knows its width.
  void FitLater() { Fits.start(0); }

  Narrator& Story;
  QTreeWidget* List;
  std::vector<Running> Known;
  QElapsedTimer Made;
  QTimer Fits;
};

}  // namespace simulator
