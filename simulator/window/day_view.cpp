#include "simulator/window/day_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "simulator/rehearsal/rehearsal.h"
#include "simulator/watch/reason.h"
#include "simulator/watch/why.h"
#include "simulator/window/clock_view.h"

namespace simulator {

namespace {

constexpr int WeekDays = 7;

std::int64_t DayNumber(const QDate& date) {
  return QDate(1970, 1, 1).daysTo(date);
}

QString EndingOf(const SharedReason& why) {
  return why ? QString::fromStdString(why->Ending()) : QString();
}

QString SinceText(Instant at, Instant today, const Calendar& days) {
  return QString::fromStdString(ShortTime(at, today, days));
}

}  // namespace

DayView::DayView(Panel& panel)
    : PanelView(panel),
      Day(DateEdit("Date of the picture", "pictureDate")),
      OtherDay(DateEdit("Date to compare with", "otherDate")),
      Week(new QRadioButton(QStringLiteral("&Week"))),
      Dimmers(new QCheckBox(QStringLiteral("Dimmers"))),
      Pilots(new QCheckBox(QStringLiteral("Pilots"))),
      Beside(new QComboBox),
      Note(new QLabel),
      Picture(new DayPicture),
      History(panel.Runner()),
      Since(panel.Runner().Now()),
      Seen(Since),
      Current(panel.Memory) {
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  AddDates(*row);
  row->addStretch(1);
  column->addLayout(row);
  row = new QHBoxLayout;
  AddChoices(*row);
  AddLegend(*row);
  column->addLayout(row);
  Note->setObjectName(QStringLiteral("pictureNote"));
  Note->setWordWrap(true);
  column->addWidget(Note);
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(Picture);
  scroll->viewport()->setAutoFillBackground(false);
  Picture->setAutoFillBackground(false);
  column->addWidget(scroll, 1);
  Picture->Tell = [this](auto&&... told) { Tell(told...); };
  Picture->Choose = [this](std::int64_t wall) { GoTo(DateTimeOf(wall)); };
}

QDateEdit* DayView::DateEdit(const char* words, const char* name) {
  auto* edit = new QDateEdit;
  edit->setDisplayFormat(QStringLiteral("ddd yyyy-MM-dd"));
  edit->setCalendarPopup(true);
  edit->setDateRange(QDate(Calendar::FirstYear, 1, 2),
                     QDate(Calendar::FirstYear + Calendar::Years - 1, 12, 24));
  edit->setDate(Source.Time().date());
  edit->setMinimumWidth(edit->sizeHint().width() + fontMetrics().horizontalAdvance(u'0'));
  edit->setAccessibleName(QString::fromLatin1(words));
  edit->setObjectName(QString::fromLatin1(name));
  connect(edit, &QDateEdit::dateChanged, this, [this] { Renew(); });
  return edit;
}

void DayView::AddDates(QBoxLayout& row) {
  const auto addButton = [this, &row](const char* caption, const char* words, auto press) {
    auto* button = new QToolButton;
    button->setText(QString::fromLatin1(caption));
    button->setAccessibleName(QString::fromLatin1(words));
    button->setToolTip(QString::fromLatin1(words));
    connect(button, &QToolButton::clicked, this, press);
    row.addWidget(button);
  };
  const auto step = [this](int sign) {
    Day->setDate(Day->date().addDays(qint64{sign} * (Week->isChecked() ? WeekDays : 1)));
  };
  addButton("<", "Earlier", [step] { step(-1); });
  row.addWidget(Day);
  addButton(">", "Later", [step] { step(1); });
  addButton("Today", "The panel's date", [this] { GoToToday(); });
  auto* oneDay = new QRadioButton(QStringLiteral("&Day"));
  oneDay->setChecked(true);
  Week->setObjectName(QStringLiteral("week"));
  connect(Week, &QRadioButton::toggled, this, [this] { Renew(); });
  row.addWidget(oneDay);
  row.addWidget(Week);
  Dimmers->setObjectName(QStringLiteral("pictureDimmers"));
  Pilots->setObjectName(QStringLiteral("picturePilots"));
  for (QCheckBox* box : {Dimmers, Pilots}) {
    connect(box, &QCheckBox::toggled, this, [this] { Renew(); });
    row.addWidget(box);
  }
}

void DayView::AddChoices(QBoxLayout& row) {
  Beside->setObjectName(QStringLiteral("compare"));
  Beside->setAccessibleName(QStringLiteral("Compare with"));
  Beside->addItems({QStringLiteral("Nothing beside it"), QStringLiteral("Beside another date"),
                    QStringLiteral("Beside the settings before")});
  OtherDay->setDate(Day->date().addDays(-1));
  OtherDay->setVisible(false);
  connect(Beside, &QComboBox::currentIndexChanged, this, [this] {
    OtherDay->setVisible(Compared() == Compare::OtherDay);
    Renew();
  });
  row.addWidget(Beside);
  row.addWidget(OtherDay);
}

void DayView::AddLegend(QBoxLayout& row) {
  QStringList parts;
  const auto add = [&parts](const QString& color, const char* sign, const char* word) {
    parts << QStringLiteral("<nobr><span style=\"color:%1\">%2</span>%3</nobr>")
                 .arg(color, QString::fromLatin1(sign), QString::fromLatin1(word));
  };
  add(QStringLiteral("#e8a200"), "&#9608;&nbsp;", "On");
  add(QStringLiteral("#d04010"), "&#9618;&nbsp;", "Warning");
  for (int kind = 0; kind < static_cast<int>(DayLineNames.size()); ++kind) {
    add(DayLineColor(kind).name(), "&#9612;", DayLineNames[static_cast<std::size_t>(kind)]);
  }
  add(QStringLiteral("#d01060"), "&#9644;&nbsp;", "Differs");
  auto* legend = new QLabel(parts.join(QStringLiteral("&nbsp; ")));
  legend->setObjectName(QStringLiteral("legend"));
  legend->setWordWrap(true);
  legend->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row.addWidget(legend, 1);
}

void DayView::Renew() {
  if (!Made.isValid()) return;  // still being built
  Stale = true;
  Made.invalidate();
  ShowStates();
}

DayView::Compare DayView::Compared() const {
  return static_cast<Compare>(Beside->currentIndex());
}

void DayView::ShowSettings(const Configuration&) {
  if (Source.Memory.Content() != Current.Content()) Before = std::exchange(Current, Source.Memory);
  Stale = true;
}

void DayView::Take(const Row& row) {
  const bool far = row.Time < Seen || row.Time > Seen + PanelClock::FarMs - DayMs;
  if (row.Cause.What == Subject::Kind::Power && far) {  // a jump to where power comes anew
    History = BarKeeper();
    Since = row.Time;
  }
  Seen = row.Time;
  History.Take(row, Source.Settings());
  Stale = true;
}

void DayView::GoToToday() {
  Day->setDate(Source.Time().date());
}

DayView::Range DayView::RangeFrom(std::int64_t first) {
  const Calendar& calendar = Source.Runner().Days();
  const int days = Week->isChecked() ? WeekDays : 1;
  return {first, days, calendar.FromWall(first * DayMs), calendar.FromWall((first + days) * DayMs)};
}

DayView::Range DayView::Shown() {
  return RangeFrom(DayNumber(Day->date()));
}

DayView::Found DayView::BarsOf(const Range& range) {
  const Engine& runner = Source.Runner();
  const bool before = Compared() == Compare::SettingsBefore;  // both from power on
  if (before || range.To <= Since || range.From > runner.Now() + PanelClock::FarMs) {
    return {BarsAfresh(runner, range.From, range.To), true};
  }
  const std::vector<Bar> past = History.Until(runner.Now());
  if (range.To <= runner.Now()) return {past, false};
  return {Joined(past, BarsAhead(runner, range.To)), false};
}

DayView::Found DayView::OtherBarsOf(const Range& range) {
  if (Compared() == Compare::OtherDay) return BarsOf(range);
  if (!Before) return {};
  Engine engine(*Before);
  engine.FollowSun(Source.Runner().FollowsSun());
  return {BarsAfresh(engine, range.From, range.To), true};
}

/// The bars of a row within the days, by the wall clock moved by `shift`.
DayPlan::Stretches DayView::StretchesOf(const std::vector<Bar>& bars, int row, const Range& range,
                                        std::int64_t shift) const {
  const Calendar& calendar = Source.Settings().Days;
  DayPlan::Stretches stretches;
  for (const Bar& bar : bars) {
    if (bar.Row != row || bar.To <= range.From || bar.From >= range.To) continue;
    const std::int64_t last = (range.First + range.Days) * DayMs;
    const std::int64_t end = bar.To >= range.To ? last : calendar.Wall(bar.To);
    const std::int64_t start = calendar.Wall(std::max(bar.From, range.From));
    stretches.push_back({start + shift, end + shift, bar.Level, bar.Blinks, EndingOf(bar.Began),
                         EndingOf(bar.Ended)});
    if (bar.From < range.From) stretches.back().Since = SinceText(bar.From, range.From, calendar);
  }
  return stretches;
}

QString DayView::NoteOf(const Range& range, DayPlan& plan) {
  Engine& runner = Source.Runner();
  const Calendar& calendar = runner.Days();
  QString note;
  for (int day = 0; day < range.Days; ++day) {
    const SunAndHours hours = runner.HoursOf(range.First + day);
    if (range.Days == 1) note = HoursText(hours, calendar);
    const std::array events{hours.Sunrise, hours.Sunset, hours.Open, hours.Close};
    for (std::size_t kind = 0; kind < events.size(); ++kind) {
      // Beyond a polar circle the sun may rise on the day before or after.
      if (!events[kind] || *events[kind] < range.From || *events[kind] >= range.To) continue;
      plan.Lines.push_back({calendar.Wall(*events[kind]), static_cast<int>(kind)});
    }
  }
  return note;
}

DayPlan DayView::PlanOf(const Range& range) {
  const Configuration& settings = Source.Runner().Settings();
  DayPlan plan;
  plan.FirstDay = range.First;
  plan.Days = range.Days;
  const Found found = BarsOf(range);
  Range otherRange = range;
  Found other;
  if (Compared() == Compare::OtherDay) otherRange = RangeFrom(DayNumber(OtherDay->date()));
  if (Compared() != Compare::Nothing) {
    other = OtherBarsOf(otherRange);
    plan.OtherName = Compared() == Compare::OtherDay
                         ? OtherDay->date().toString(QStringLiteral("ddd yyyy-MM-dd"))
                         : QStringLiteral("Settings before");
  }
  Mask relays = (Bit(ShownPoints(Source)) - 1) | UsedRelays(settings);
  for (const Bar& bar : found.Bars) {
    if (bar.Row < Items) relays |= Bit(bar.Row);
  }
  for (const int row : RowsOfPlan(settings, relays, {Dimmers->isChecked(), Pilots->isChecked()})) {
    DayPlan::ItemRow item;
    item.Row = row;
    const Subject subject = ItemOfBarRow(row);
    item.Name = row < Items ? NumberedName("Relay", row,
                                           settings.Names.Relay[static_cast<std::size_t>(row)])
                            : QString::fromStdString(NamedText(subject, settings));
    item.On = StretchesOf(found.Bars, row, range, 0);
    if (!plan.OtherName.isEmpty()) {
      const std::int64_t shift = (range.First - otherRange.First) * DayMs;
      item.Other = StretchesOf(other.Bars, row, otherRange, shift);
      item.Differs = DifferenceOf(item.On, item.Other);
    }
    plan.Items.push_back(std::move(item));
  }
  QString note = NoteOf(range, plan);
  const auto add = [&note](const QString& words) {
    note += QLatin1String(note.isEmpty() ? "" : "; ") + words;
  };
  if (Compared() == Compare::SettingsBefore && !Before) {
    add(QStringLiteral("the settings have not changed"));
  }
  if (found.Fresh || other.Fresh) add(QStringLiteral("as if power came at the first midnight"));
  Note->setText(QString::fromStdString(Capitalized(note.toStdString())));
  return plan;
}

std::string DayView::PlanFile() {
  const Range range = Shown();
  return PlanSvg(Source.Runner(), Source.Memory, BarsOf(range).Bars, range.First,
                 range.First + range.Days - 1, {Dimmers->isChecked(), Pilots->isChecked()});
}

std::string DayView::BurnHoursFile() {
  const Range range = Shown();
  std::vector<Bar> bars = BarsOf(range).Bars;
  for (Bar& bar : bars) {
    bar.From = std::clamp(bar.From, range.From, range.To);
    bar.To = std::clamp(bar.To, range.From, range.To);
  }
  return BurnHours(Source.Runner().Settings(), bars);
}

void DayView::ShowStates() {
  const Engine& runner = Source.Runner();
  if (runner.Now() < Seen) {  // the clock was set back
    History = BarKeeper(runner);
    Since = runner.Now();
    Stale = true;
  }
  Seen = runner.Now();
  const QDate today = Source.Time().date();
  const QDate before = std::exchange(Today, today);
  if (before != today && Day->date() == before) Day->setDate(today);
  if (!isVisible()) return;
  Picture->ShowNow(runner.Wall());
  const qint64 leastMs = Source.Pace().Speed() > 60 ? 1500 : 500;  // looking ahead takes its time
  if (!Stale || (Made.isValid() && Made.elapsed() < leastMs)) return;
  Made.start();
  Stale = false;
  Picture->Show(PlanOf(Shown()));
}

}  // namespace simulator
