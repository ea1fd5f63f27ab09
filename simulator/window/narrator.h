#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>

#include "simulator/engine/panel.h"
#include "simulator/watch/outlook.h"

namespace simulator {

/// Words that are asked for again and again.
using Telling = std::function<QString()>;

/// What the window knows of the panel's past and future. Widgets that stand for an item are
/// explained by it: hovered or walked to they tell why, a press of which nothing comes tells why,
/// and their menu runs the clock until the item changes.
class Narrator : public QObject {
 public:
  static constexpr std::size_t LinesAhead = 10;

  explicit Narrator(Panel& panel);

  void Take(const Row& row);
  /// Looks ahead anew where something has happened, and brings what it tells up to that.
  void Refresh();
  void SettingsChanged() { Stale = true; }

  const Outlook& Ahead() const { return Coming; }
  /// Counts the rows that have come.
  std::uint64_t Taken() const { return RowsTaken; }
  /// Counts how often it was made anew.
  std::uint64_t Looks() const { return AheadLooks; }
  QString Why(const Subject& item);
  /// The next change in short, as in "off 21:00"; empty if there is none.
  QString NextOf(const Subject& item);
  /// All rows as the rows of a rehearsal, the oldest left out where they become too many.
  std::string Rows() const { return RowWriter::Header.data() + Written; }

  void Explain(QWidget* widget, const Subject& item);
  /// From now on tells this of the widget, and anew whenever the words change; with a place also in
  /// a tip there; without words no longer.
  void Follow(QWidget* widget, Telling words, const std::optional<QPoint>& tipAt = {});
  /// Tells no more of what has gone from sight.
  void ForgetHidden();
  void Press(const Subject& item, const std::function<void()>& act);
  /// Goes to the next change of the item.
  void RunUntilChanged(const Subject& item);

  std::function<void(const QString&)> TellWhy;  // of what it follows
  std::function<void(const QString&)> Tell;     // news
  std::function<void()> Moved;                  // the clock

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void LookAhead();
  void TellFollowed();
  void OpenMenu(QWidget* widget, const QPoint& at);

  Panel& Source;
  Engine& Runner;  // without bringing it up to the present
  LastChanges Past;
  Outlook Coming;
  std::string Written;
  QHash<QObject*, Subject> Items;
  QPointer<QWidget> Followed;
  Telling Words;  // of what it follows
  QString Told;
  QPoint TipAt;
  bool Stale = true;
  std::uint64_t AheadLooks = 0;
  std::uint64_t RowsTaken = 0;
  std::uint64_t Effects = 0;  // rows that more than a contact came of
  QElapsedTimer Made;
};

}  // namespace simulator
