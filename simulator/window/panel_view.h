#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <tuple>
#include <vector>

#include "simulator/window/narrator.h"

class QPushButton;
class QVBoxLayout;

namespace simulator {

/// A part of the window. It reads what it shows from the panel and keeps nothing of it.
class PanelView : public QWidget {
 public:
  /// The memory has changed: names, what there is, what it does.
  virtual void ShowSettings(const Configuration& settings) = 0;
  /// Brings the states up to the panel's present.
  virtual void ShowStates() = 0;

 protected:
  explicit PanelView(Panel& panel) : Source(panel) {}

  Panel& Source;
};

/// A view of things that the settings tell of: built anew when these have changed, each thing with
/// a shower of its state.
class BuiltView : public PanelView {
 public:
  void ShowStates() override;

 protected:
  BuiltView(Panel& panel, Narrator& narrator);

  /// Begins anew with an empty column.
  QVBoxLayout& BuildAnew();

  Narrator& Story;
  std::vector<std::function<void(const Engine&)>> Showers;
  /// Of what changes only when the narrator has looked ahead anew.
  std::vector<std::function<void(const Engine&)>> SlowShowers;

 private:
  QVBoxLayout* Place;
  QWidget* Content = nullptr;
  std::uint64_t ShownLooks = 0;
  std::tuple<std::uint64_t, std::uint64_t, bool> ShownSeen;
  QElapsedTimer Shown;
};

/// How many relays and inputs are shown: the installed points, or all if memory tells of none.
inline int ShownPoints(const Panel& panel) {
  return panel.Points() > 0 ? panel.Points() : Items;
}

/// As in "07 LOBBY"; without a name of its own the word and the number.
QString NumberedName(const char* word, int item, const std::string& name);
/// As in "Relay 07 LOBBY", from a numbered name.
QString SpokenName(const char* word, const QString& numbered);
/// Of a button with just the room for its caption.
int NarrowWidth(const QPushButton& button);
/// Plain text as a tool tip that wraps.
QString Wrapped(const QString& words);

}  // namespace simulator
