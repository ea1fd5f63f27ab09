#include "simulator/window/events_view.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace simulator {

namespace {

constexpr std::size_t EventsAhead = 10;
constexpr std::int64_t LookAheadMs = 8 * DayMs;
constexpr int LongestLog = 2000;
constexpr int WallRole = Qt::UserRole;

QString LineText(const LogLines::Line& line, const char* timeForm) {
  return DateTimeOf(line.Wall).toString(QString::fromLatin1(timeForm)) + QStringLiteral("  ") +
         QString::fromStdString(line.Sentence);
}

/// What happens next if nobody touches anything.
std::vector<LogLines::Line> LinesAhead(const Engine& runner) {
  Engine ahead = runner;
  LogLines writer(LogLines::When::Coming);
  ahead.SetSink([&](const Row& row) { writer.Take(row, ahead.Days()); });
  std::vector<LogLines::Line> lines;
  const Instant last = runner.Now() + LookAheadMs;
  while (lines.size() < EventsAhead && ahead.NextInstant() <= last) {
    ahead.AdvanceTo(ahead.NextInstant());
    for (auto& line : writer.Fetch()) lines.push_back(std::move(line));
  }
  lines.resize(std::min(lines.size(), EventsAhead));
  return lines;
}

}  // namespace

EventsView::EventsView(Panel& panel)
    : PanelView(panel), Coming(new QListWidget), Log(new QPlainTextEdit), Days(panel.Memory) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(QStringLiteral("&Coming (Enter goes there)"));
  caption->setBuddy(Coming);
  column->addWidget(caption);
  Coming->setObjectName(QStringLiteral("coming"));
  Coming->setAccessibleName(QStringLiteral("Coming"));
  Coming->setWordWrap(true);
  Coming->setAlternatingRowColors(true);
  connect(Coming, &QListWidget::itemActivated, this,
          [this](const QListWidgetItem* item) { GoTo(item->data(WallRole).toDateTime()); });
  column->addWidget(Coming, 1);
  caption = new QLabel(QStringLiteral("What &Happened"));
  caption->setBuddy(Log);
  column->addWidget(caption);
  Log->setObjectName(QStringLiteral("log"));
  Log->setAccessibleName(QStringLiteral("What happened"));
  Log->setReadOnly(true);
  Log->setTabChangesFocus(true);
  Log->setMaximumBlockCount(LongestLog);
  column->addWidget(Log, 1);
}

void EventsView::ShowSettings(const Configuration& settings) {
  Days = settings.Days;
  Stale = true;
}

void EventsView::Take(const Row& row) {
  Lines.Take(row, Days);
  Stale = true;
}

void EventsView::ShowStates() {
  const auto lines = Lines.Fetch();
  QScrollBar& bar = *Log->verticalScrollBar();
  const bool atEnd = bar.value() == bar.maximum();
  for (const LogLines::Line& line : lines) {
    if (std::exchange(LoggedDay, line.Wall / DayMs) != line.Wall / DayMs) {
      Log->appendPlainText(DateTimeOf(line.Wall).toString(QStringLiteral("dddd yyyy-MM-dd")));
    }
    Log->appendPlainText(LineText(line, "HH:mm:ss"));
  }
  if (atEnd && !lines.empty()) bar.setValue(bar.maximum());
  constexpr qint64 leastMs = 250;  // looking ahead takes its time
  if (!Stale || (Made.isValid() && Made.elapsed() < leastMs)) return;
  Made.start();
  Stale = false;
  ShowComing(LinesAhead(Source.Runner()));
}

void EventsView::ShowComing(const std::vector<LogLines::Line>& lines) {
  const int row = std::max(Coming->currentRow(), 0);
  const auto count = static_cast<int>(lines.size());
  while (Coming->count() > count) delete Coming->takeItem(0);
  while (Coming->count() < count) Coming->addItem(QString());
  for (int i = 0; i < count; ++i) {
    const LogLines::Line& line = lines[static_cast<std::size_t>(i)];
    QListWidgetItem* item = Coming->item(i);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setText(LineText(line, "ddd HH:mm:ss"));
    item->setData(WallRole, DateTimeOf(line.Wall));
  }
  if (lines.empty()) {
    auto* nothing = new QListWidgetItem(QStringLiteral("Nothing within eight days."), Coming);
    nothing->setFlags(Qt::NoItemFlags);
  }
  Coming->setCurrentRow(std::min(row, count - 1), QItemSelectionModel::NoUpdate);
}

}  // namespace simulator
