#include "simulator/window/log_view.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>
#include <utility>

namespace simulator {

namespace {

constexpr int LongestLog = 2000;
const std::string NewSettings = "--- New settings hold from here ---";

}  // namespace

QString LineText(const LogLines::Line& line, const char* timeForm) {
  return DateTimeOf(line.Wall).toString(QString::fromLatin1(timeForm)) + QStringLiteral("  ") +
         QString::fromStdString(line.Sentence);
}

LogView::LogView(Panel& panel)
    : PanelView(panel),
      Log(new QPlainTextEdit),
      Runner(panel.Runner()),
      Settings(Runner.SharedSettings()) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(QStringLiteral("What Happ&ened"));
  caption->setBuddy(Log);
  column->addWidget(caption);
  Log->setObjectName(QStringLiteral("log"));
  Log->setAccessibleName(QStringLiteral("What happened"));
  Log->setReadOnly(true);
  Log->setTabChangesFocus(true);
  Log->setMaximumBlockCount(LongestLog);
  Log->setMinimumHeight(3 * fontMetrics().height());
  column->addWidget(Log, 1);
  // Lines that wrap anew, as the window becomes narrower, move the end as well.
  QScrollBar* bar = Log->verticalScrollBar();
  connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int end) {
    if (Follows) bar->setValue(end);
  });
  connect(bar, &QScrollBar::actionTriggered, this,
          [this, bar] { Follows = bar->sliderPosition() >= bar->maximum(); });
  connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) {
    if (Log->hasFocus() || value >= bar->maximum()) Follows = value >= bar->maximum();
  });
}

void LogView::MarkSettings() {
  std::shared_ptr<const Configuration> now = Runner.SharedSettings();
  if (std::exchange(Settings, now) == now) return;
  for (auto& line : Lines.Fetch()) Ready.push_back(std::move(line));
  // A download brings many, one after the other.
  if (!Ready.empty() && Ready.back().Sentence == NewSettings) Ready.pop_back();
  Ready.push_back({Runner.Wall(), NewSettings});
}

void LogView::Take(const Row& row) {
  MarkSettings();
  Lines.Take(row, *Settings);
}

void LogView::Append(const LogLines::Line& line) {
  if (std::exchange(LoggedDay, line.Wall / DayMs) != line.Wall / DayMs) {
    Log->appendPlainText(DateTimeOf(line.Wall).toString(QStringLiteral("dddd yyyy-MM-dd")));
  }
  Log->appendPlainText(LineText(line, "HH:mm:ss"));
}

void LogView::ShowStates() {
  for (auto& line : Lines.Fetch()) Ready.push_back(std::move(line));
  if (Ready.empty()) return;
  const bool follows = Follows;
  for (const LogLines::Line& line : std::exchange(Ready, {})) Append(line);
  Follows = follows;
  QScrollBar* bar = Log->verticalScrollBar();
  if (Follows) bar->setValue(bar->maximum());
}

}  // namespace simulator
