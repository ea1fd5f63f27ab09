#include "simulator/window/time_field.h"

#include <QCoreApplication>
#include <QDateTimeEdit>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <optional>
#include <utility>

#include "simulator/engine/calendar.h"

namespace simulator {

namespace {

const QString Form = QStringLiteral("yyyy-MM-dd HH:mm");

std::optional<QDateTime> Read(const QString& text) {
  const QStringList words = text.simplified().split(QLatin1Char(' '));
  if (words.size() != 2) return std::nullopt;
  const QDate date = QDate::fromString(words[0], QStringLiteral("yyyy-M-d"));
  const QTime time = QTime::fromString(words[1], QStringLiteral("H:mm"));
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

}  // namespace

TimeField::TimeField(const QDateTime& time) : Parts(new QDateTimeEdit), Whole(new QLineEdit) {
  Parts->setDisplayFormat(Form);
  Parts->setTimeSpec(Qt::UTC);
  Parts->setDateTimeRange(
      QDateTime(QDate(Calendar::FirstYear, 1, 1), {}, Qt::UTC),
      QDateTime(QDate(Calendar::FirstYear + Calendar::Years - 1, 12, 31), QTime(23, 59), Qt::UTC));
  Parts->setDateTime(time);
  Parts->setCalendarPopup(true);
  Parts->setObjectName(QStringLiteral("wanted"));
  Whole->setObjectName(QStringLiteral("wholeTime"));
  for (QWidget* field : std::initializer_list<QWidget*>{Parts, Whole}) {
    field->setAccessibleName(QStringLiteral("Time to go to"));
    field->installEventFilter(this);
    addWidget(field);
  }
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  for (QLineEdit* line : {Parts->findChild<QLineEdit*>(), Whole}) {
    connect(line, &QLineEdit::returnPressed, this, [this] { Entered(); });
  }
}

QDateTime TimeField::Time() const {
  return Parts->dateTime();
}

bool TimeField::Typing() const {
  return currentWidget() == Whole;
}

void TimeField::Ask(const QDateTime& time) {
  Parts->setDateTime(time);
  Whole->setText(time.toString(Form));
  setCurrentWidget(Whole);
  Whole->setFocus(Qt::ShortcutFocusReason);
  Whole->selectAll();
}

bool TimeField::Take() {
  if (!Typing()) return true;
  const std::optional<QDateTime> time = Read(Whole->text());
  if (!time || *time < Parts->minimumDateTime() || *time > Parts->maximumDateTime()) {
    Tell(QStringLiteral("\"%1\" is no time as in 2026-11-27 14:05. The clock stays where it is.")
             .arg(Whole->text()));
    return false;
  }
  Parts->setDateTime(*time);
  setCurrentWidget(Parts);
  return true;
}

bool TimeField::FilterWhole(QEvent* event) {
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool goes = reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
    if (goes && Typing() && Read(Whole->text())) Take();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Escape) {
    setCurrentWidget(Parts);
    return true;
  }
  if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
  if (Take()) QCoreApplication::sendEvent(Parts, event);
  return true;
}

/// Behind a part that is full the field has moved on already: the sign that is typed then, as in
/// "2026-11-27 14:05", must not move on again.
bool TimeField::FilterParts(QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const QString text = static_cast<QKeyEvent*>(event)->text();
  if (text.isEmpty()) return false;
  const bool sign =
      text == QLatin1String("-") || text == QLatin1String(":") || text == QLatin1String(" ");
  if (std::exchange(JustFull, false) && sign) return true;
  const int part = Parts->currentSectionIndex();
  Parts->removeEventFilter(this);
  QCoreApplication::sendEvent(Parts, event);
  Parts->installEventFilter(this);
  JustFull = text[0].isDigit() && Parts->currentSectionIndex() != part;
  return true;
}

bool TimeField::eventFilter(QObject* object, QEvent* event) {
  return object == Whole ? FilterWhole(event) : FilterParts(event);
}

}  // namespace simulator
