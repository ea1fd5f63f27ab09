#pragma once

#include <QDateTime>
#include <QStackedWidget>
#include <functional>

class QDateTimeEdit;
class QLineEdit;

namespace simulator {

/// A time to go to: stepped and typed part by part, or typed as a whole when it is asked for.
class TimeField : public QStackedWidget {
 public:
  explicit TimeField(const QDateTime& time);

  /// Takes the focus with the whole time selected. What is typed then is read as a whole.
  void Ask(const QDateTime& time);
  /// Takes over what is typed; when it is no time tells so, and nothing changes.
  bool Take();
  QDateTime Time() const;

  /// Called for Enter.
  std::function<void()> Entered;
  std::function<void(const QString&)> Tell;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool Typing() const;
  bool FilterWhole(QEvent* event);
  bool FilterParts(QEvent* event);

  QDateTimeEdit* Parts;
  QLineEdit* Whole;
  bool JustFull = false;  // a part that was typed, so that the next one is at its turn
};

}  // namespace simulator
