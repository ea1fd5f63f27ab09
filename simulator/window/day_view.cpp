#include "simulator/window/day_view.h"

#include <QDateEdit>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "simulator/window/clock_view.h"

namespace simulator {

namespace {

constexpr int WeekDays = 7;

std::int64_t DayNumber(const QDate& date) {
  return QDate(1970, 1, 1).daysTo(date);
}

}  // namespace

DayView::DayView(Panel& panel)
    : PanelView(panel),
      Day(new QDateEdit),
      Week(new QRadioButton(QStringLiteral("&Week"))),
      Note(new QLabel),
      AtMark(new QLabel),
      Picture(new DayPicture),
      History(panel.Runner()),
      Since(panel.Runner().Now()) {
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  const auto addButton = [this, row](const char* caption, const char* words, auto press) {
    auto* button = new QToolButton;
    button->setText(QString::fromLatin1(caption));
    button->setAccessibleName(QString::fromLatin1(words));
    button->setToolTip(QString::fromLatin1(words));
    connect(button, &QToolButton::clicked, this, press);
    row->addWidget(button);
  };
  const auto step = [this](int sign) {
    Day->setDate(Day->date().addDays(qint64{sign} * (Week->isChecked() ? WeekDays : 1)));
  };
  addButton("<", "Earlier", [step] { step(-1); });
  Day->setDisplayFormat(QStringLiteral("ddd yyyy-MM-dd"));
  Day->setCalendarPopup(true);
  Day->setDateRange(QDate(Calendar::FirstYear, 1, 2),
                    QDate(Calendar::FirstYear + Calendar::Years - 1, 12, 24));
  Day->setDate(panel.Time().date());
  Day->setMinimumWidth(Day->sizeHint().width() + fontMetrics().horizontalAdvance(u'0'));
  Day->setAccessibleName(QStringLiteral("Date of the picture"));
  Day->setObjectName(QStringLiteral("pictureDate"));
  row->addWidget(Day);
  addButton(">", "Later", [step] { step(1); });
  addButton("Today", "The panel's date", [this] { GoToToday(); });
  auto* oneDay = new QRadioButton(QStringLiteral("&Day"));
  oneDay->setChecked(true);
  Week->setObjectName(QStringLiteral("week"));
  row->addWidget(oneDay);
  row->addWidget(Week);
  row->addStretch(1);
  for (int kind = 0; kind < static_cast<int>(DayLineNames.size()); ++kind) {
    const auto at = static_cast<std::size_t>(kind);
    auto* line =
        new QLabel(QStringLiteral("<span style=\"color:%1\">&#9612;</span>%2")
                       .arg(DayLineColor(kind).name(), QString::fromLatin1(DayLineNames[at])));
    row->addWidget(line);
  }
  column->addLayout(row);
  Note->setObjectName(QStringLiteral("pictureNote"));
  column->addWidget(Note);
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(Picture);
  scroll->viewport()->setAutoFillBackground(false);
  Picture->setAutoFillBackground(false);
  column->addWidget(scroll, 1);
  AtMark->setWordWrap(true);
  AtMark->setObjectName(QStringLiteral("atMark"));
  column->addWidget(AtMark);

  const auto refresh = [this] {
    Stale = true;
    Made.invalidate();
    ShowStates();
  };
  connect(Day, &QDateEdit::dateChanged, this, refresh);
  connect(Week, &QRadioButton::toggled, this, refresh);
  Picture->Tell = [this](const QString& words) { AtMark->setText(words); };
  Picture->Choose = [this](std::int64_t wall) { GoTo(DateTimeOf(wall)); };
}

void DayView::ShowSettings(const Configuration& settings) {
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    Names[at] = NumberedName("Relay", i, settings.Names.Relay[at]);
  }
  Stale = true;
}

void DayView::Take(const Row& row) {
  if (row.Cause.What == Subject::Kind::Power && row.Time < Seen) {  // time has gone back
    History = BarKeeper();
    Since = row.Time;
  }
  Seen = row.Time;
  History.Take(row);
  Stale = true;
}

void DayView::GoToToday() {
  Day->setDate(Source.Time().date());
}

std::vector<Bar> DayView::BarsOf(Instant from, Instant to, bool& fresh) {
  const Engine& runner = Source.Runner();
  fresh = to <= Since || from > runner.Now() + PanelClock::FarMs;
  if (fresh) {
    Engine other = runner;
    other.PowerOn(from);
    return BarsAhead(other, to);
  }
  std::vector<Bar> bars = History.Until(runner.Now());
  if (to > runner.Now()) {
    const std::vector<Bar> ahead = BarsAhead(runner, to);
    bars.insert(bars.end(), ahead.begin(), ahead.end());
  }
  return bars;
}

DayPlan DayView::PlanOf(std::int64_t first, int days) {
  Engine& runner = Source.Runner();
  const Calendar& calendar = runner.Days();
  const Instant from = calendar.FromWall(first * DayMs);
  const Instant to = calendar.FromWall((first + days) * DayMs);
  DayPlan plan;
  plan.FirstDay = first;
  plan.Days = days;
  bool fresh = false;
  const std::vector<Bar> bars = BarsOf(from, to, fresh);
  Mask relays = Bit(ShownPoints(Source)) - 1;
  for (const Bar& bar : bars) relays |= Bit(bar.Relay);
  std::array<std::size_t, Items> rows{};
  EachBit(relays, [&](int relay) {
    rows[static_cast<std::size_t>(relay)] = plan.Relays.size();
    plan.Relays.push_back({Names[static_cast<std::size_t>(relay)], {}});
  });
  for (const Bar& bar : bars) {
    if (bar.To <= from || bar.From >= to) continue;
    const std::int64_t end = bar.To >= to ? (first + days) * DayMs : calendar.Wall(bar.To);
    auto& on = plan.Relays[rows[static_cast<std::size_t>(bar.Relay)]].On;
    const std::int64_t start = calendar.Wall(std::max(bar.From, from));
    // What has begun goes on.
    if (!on.empty() && on.back().To == start) {
      on.back().To = end;
    } else {
      on.push_back({start, end});
    }
  }
  QString note;
  for (int day = 0; day < days; ++day) {
    const SunAndHours hours = runner.HoursOf(first + day);
    if (days == 1) note = HoursText(hours, calendar);
    const std::array events{hours.Sunrise, hours.Sunset, hours.Open, hours.Close};
    for (std::size_t kind = 0; kind < events.size(); ++kind) {
      // Beyond a polar circle the sun may rise on the day before or after.
      if (!events[kind] || *events[kind] < from || *events[kind] >= to) continue;
      plan.Lines.push_back({calendar.Wall(*events[kind]), static_cast<int>(kind)});
    }
  }
  if (fresh) {
    note += QLatin1String(note.isEmpty() ? "" : "; ") +
            QStringLiteral("as if power came at the first midnight");
  }
  Note->setText(note);
  return plan;
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
  constexpr qint64 leastMs = 500;  // looking ahead takes its time
  if (!Stale || (Made.isValid() && Made.elapsed() < leastMs)) return;
  Made.start();
  Stale = false;
  Picture->Show(PlanOf(DayNumber(Day->date()), Week->isChecked() ? WeekDays : 1));
}

}  // namespace simulator
