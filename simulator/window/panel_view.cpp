#include "simulator/window/panel_view.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "simulator/memory/digits.h"

namespace simulator {

BuiltView::BuiltView(Panel& panel, Narrator& narrator)
    : PanelView(panel), Story(narrator), Place(new QVBoxLayout(this)) {}

QVBoxLayout& BuiltView::BuildAnew() {
  Showers.clear();
  SlowShowers.clear();
  Shown.invalidate();
  ShownLooks = 0;
  delete Content;
  Content = new QWidget;
  Place->addWidget(Content);
  auto* column = new QVBoxLayout(Content);
  column->setContentsMargins(0, 0, 0, 0);
  return *column;
}

void BuiltView::ShowStates() {
  if (!isVisible()) return;
  const Engine& runner = Source.Runner();
  constexpr qint64 restingMs = 200;  // what changes without a row, changes slowly
  const std::tuple seen(Story.Taken(), Story.Looks(), runner.FollowsSun());
  const bool same = std::exchange(ShownSeen, seen) == seen;
  if (same && Shown.isValid() && Shown.elapsed() < restingMs) return;
  Shown.start();
  for (const auto& show : Showers) show(runner);
  if (std::exchange(ShownLooks, Story.Looks()) == Story.Looks()) return;
  for (const auto& show : SlowShowers) show(runner);
}

QString NumberedName(const char* word, int item, const std::string& name) {
  const QString number = QString::fromStdString(TwoDigits(item + 1));
  QString unnamed = QString::fromLatin1(word) + QLatin1Char(' ') + number;
  const QString shown = QString::fromStdString(name);
  if (shown.isEmpty() || shown.compare(unnamed, Qt::CaseInsensitive) == 0) return unnamed;
  return number + QLatin1Char(' ') + shown;
}

QString SpokenName(const char* word, const QString& numbered) {
  const QString kind = QString::fromLatin1(word);
  return numbered.startsWith(kind) ? numbered : kind + QLatin1Char(' ') + numbered;
}

int NarrowWidth(const QPushButton& button) {
  return button.fontMetrics().horizontalAdvance(button.text() + QStringLiteral("  "));
}

QString Wrapped(const QString& words) {
  return QStringLiteral("<p>%1</p>").arg(words.toHtmlEscaped());
}

}  // namespace simulator
