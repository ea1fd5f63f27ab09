#include "simulator/window/clock_view.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "simulator/watch/reason.h"
#include "simulator/window/time_field.h"

namespace simulator {

namespace {

/// No second that the field does not show, and no time that is past.
QDateTime NextMinute(const QDateTime& time) {
  const std::int64_t minutes = (time.toMSecsSinceEpoch() + MinuteMs - 1) / MinuteMs;
  return DateTimeOf(minutes * MinuteMs);
}

}  // namespace

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
      Wanted(new TimeField(NextMinute(panel.Time()))),
      Daylight(new QCheckBox(QStringLiteral("Sunl&ight"))) {
  Time->setObjectName(QStringLiteral("time"));
  QFont large = Time->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  Time->setFont(large);
  Hours->setObjectName(QStringLiteral("hours"));
  Hours->setMinimumWidth(1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(Time);
  column->addWidget(Hours);
  auto* row = new QHBoxLayout;
  AddSpeeds(*row);
  AddButton(*row, "&Next Event", "nextEvent", [this] { NextEvent(); });
  Daylight->setObjectName(QStringLiteral("daylight"));
  Daylight->setAccessibleName(QStringLiteral("Daylight follows the sun"));
  Daylight->setToolTip(
      QStringLiteral("Daylight follows the sun: photocells get a clear day's light"));
  connect(Daylight, &QCheckBox::clicked, this, [this](bool on) { FollowSun(on); });
  row->addWidget(Daylight);
  row->addStretch(1);
  column->addLayout(row);
  row = new QHBoxLayout;
  AddWanted(*row);
  Cut = AddButton(*row, "Power C&ut", "powerCut", [this] { SetPower(false); });
  Restore = AddButton(*row, "Power &On", "powerOn", [this] { SetPower(true); });
  row->addStretch(1);
  column->addLayout(row);
}

QPushButton* ClockView::AddButton(QBoxLayout& row, const char* caption, const char* name,
                                  std::function<void()> press) {
  auto* button = new QPushButton(QString::fromLatin1(caption));
  button->setObjectName(QString::fromLatin1(name));
  button->setMinimumWidth(NarrowWidth(*button));
  connect(button, &QPushButton::clicked, this, [press = std::move(press)] { press(); });
  row.addWidget(button);
  return button;
}

void ClockView::AddSpeeds(QBoxLayout& row) {
  for (const ClockSpeed& speed : ClockSpeeds) {
    auto* button = new QToolButton;
    button->setText(QString::fromLatin1(speed.Short));
    button->setAccessibleName(QString::fromLatin1(speed.Caption));
    button->setToolTip(button->accessibleName());
    button->setObjectName(QStringLiteral("speed%1").arg(speed.Factor));
    button->setCheckable(true);
    // In dark colors a style hardly marks it.
    button->setStyleSheet(QStringLiteral(
        "QToolButton:checked { background: palette(highlight); color: palette(highlighted-text);"
        " border: 2px solid palette(highlight); border-radius: 3px; }"
        "QToolButton:checked:focus { border-color: palette(window-text); }"));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    button->setChecked(speed.Factor == Source.Pace().Speed());
    Speeds->addButton(button, speed.Factor);
    row.addWidget(button);
  }
  connect(Speeds, &QButtonGroup::idClicked, this, [this](int factor) { SetSpeed(factor); });
}

void ClockView::AddWanted(QBoxLayout& row) {
  Wanted->Tell = [this](const QString& words) { Tell(words); };
  row.addWidget(Wanted);
  const auto go = [this] {
    if (Wanted->Take()) GoTo(Wanted->Time());
  };
  Wanted->Entered = go;
  AddButton(row, "&Go There", "go", go);
}

void ClockView::ShowStates() {
  Cut->setEnabled(Source.Powered());
  Restore->setEnabled(!Source.Powered());
  Daylight->setChecked(Source.Runner().FollowsSun());
  const QDateTime time = Source.Time();
  const std::int64_t second = time.toSecsSinceEpoch();
  constexpr std::int64_t daySeconds = DayMs / SecondMs;
  const bool sameDay = second / daySeconds == ToldSecond / daySeconds;
  if (second == ToldSecond) return;
  ToldSecond = second;
  Time->setText(time.toString(QStringLiteral("dddd yyyy-MM-dd HH:mm:ss")));
  if (sameDay) return;
  Engine& runner = Source.Runner();
  const QString hours = HoursText(runner.HoursOf(second / daySeconds), runner.Days());
  Hours->setText(QString::fromStdString(Capitalized(hours.toStdString())));
}

void ClockView::SetSpeed(int factor) {
  Source.Pace().SetSpeed(factor);
  Speeds->button(factor)->setChecked(true);
}

void ClockView::NextEvent() {
  const bool found = Source.Pace().Step();
  Tell(found ? QString() : QStringLiteral("Nothing happens within a year."));
}

void ClockView::SetPower(bool on) {
  Source.SetPower(on);
  Tell(on ? QStringLiteral("Power is back.")
          : QStringLiteral("Power is cut: all is dark until Power On."));
  ShowStates();
  // The button that was pressed can be pressed no more.
  if (!focusWidget() || !focusWidget()->isEnabled()) (on ? Cut : Restore)->setFocus();
}

void ClockView::FollowSun(bool follows) {
  Source.Runner().FollowSun(follows);
  ShowStates();
}

void ClockView::AskTime() {
  Wanted->Ask(NextMinute(Source.Time()));
}

}  // namespace simulator
