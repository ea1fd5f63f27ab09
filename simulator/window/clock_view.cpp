#include "simulator/window/clock_view.h"

#include <QButtonGroup>
#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace simulator {

QString HoursText(const SunAndHours& hours, const Calendar& days) {
  QStringList texts;
  const auto add = [&](const char* name, const std::optional<Instant>& at) {
    const QString word = QString::fromLatin1(name);
    texts << (at ? word + DateTimeOf(days.Wall(*at)).toString(QStringLiteral(" HH:mm"))
                 : QStringLiteral("no ") + word);
  };
  add("sunrise", hours.Sunrise);
  add("sunset", hours.Sunset);
  add("open", hours.Open);
  add("close", hours.Close);
  return texts.join(QLatin1String(", "));
}

ClockView::ClockView(Panel& panel)
    : PanelView(panel),
      Time(new QLabel),
      Hours(new QLabel),
      Speeds(new QButtonGroup(this)),
      Wanted(new QDateTimeEdit) {
  Time->setObjectName(QStringLiteral("time"));
  QFont large = Time->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  Time->setFont(large);
  Hours->setObjectName(QStringLiteral("hours"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(Time);
  column->addWidget(Hours);
  auto* row = new QHBoxLayout;
  for (const ClockSpeed& speed : ClockSpeeds) {
    auto* button = new QRadioButton(QString::fromLatin1(speed.Caption));
    button->setObjectName(QStringLiteral("speed%1").arg(speed.Factor));
    button->setChecked(speed.Factor == panel.Pace().Speed());
    Speeds->addButton(button, speed.Factor);
    row->addWidget(button);
  }
  row->addStretch(1);
  connect(Speeds, &QButtonGroup::idClicked, this, [this](int factor) { SetSpeed(factor); });
  column->addLayout(row);
  row = new QHBoxLayout;
  auto* next = new QPushButton(QStringLiteral("&Next Event"));
  next->setObjectName(QStringLiteral("nextEvent"));
  connect(next, &QPushButton::clicked, this, [this] { NextEvent(); });
  row->addWidget(next);
  Wanted->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm"));
  Wanted->setTimeSpec(Qt::UTC);
  Wanted->setDateTimeRange(
      QDateTime(QDate(Calendar::FirstYear, 1, 1), {}, Qt::UTC),
      QDateTime(QDate(Calendar::FirstYear + Calendar::Years - 1, 12, 31), QTime(23, 59), Qt::UTC));
  Wanted->setDateTime(panel.Time());
  Wanted->setCalendarPopup(true);
  Wanted->setAccessibleName(QStringLiteral("Time to go to"));
  Wanted->setObjectName(QStringLiteral("wanted"));
  row->addWidget(Wanted);
  auto* go = new QPushButton(QStringLiteral("&Go There"));
  go->setObjectName(QStringLiteral("go"));
  connect(go, &QPushButton::clicked, this, [this] { GoTo(Wanted->dateTime()); });
  row->addWidget(go);
  row->addStretch(1);
  column->addLayout(row);
}

void ClockView::ShowStates() {
  const QDateTime time = Source.Time();
  const std::int64_t second = time.toSecsSinceEpoch();
  constexpr std::int64_t daySeconds = DayMs / SecondMs;
  const bool sameDay = second / daySeconds == ToldSecond / daySeconds;
  if (second == ToldSecond) return;
  ToldSecond = second;
  Time->setText(time.toString(QStringLiteral("dddd yyyy-MM-dd HH:mm:ss")));
  if (sameDay) return;
  Engine& runner = Source.Runner();
  Hours->setText(HoursText(runner.HoursOf(second / daySeconds), runner.Days()));
}

void ClockView::SetSpeed(int factor) {
  Source.Pace().SetSpeed(factor);
  Speeds->button(factor)->setChecked(true);
}

void ClockView::NextEvent() {
  const bool found = Source.Pace().Step();
  Tell(found ? QString() : QStringLiteral("Nothing happens within a year."));
}

void ClockView::AskTime() {
  Wanted->setDateTime(Source.Time());
  Wanted->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace simulator
