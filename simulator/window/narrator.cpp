#include "simulator/window/narrator.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>
#include <utility>

#include "simulator/watch/why.h"
#include "simulator/window/panel_view.h"

namespace simulator {

namespace {

bool IsAbout(const Row& row, const Subject& item) {
  const Subject& about = AboutWhat(row);
  if (item.What == Subject::Kind::Photocell) {
    return about.What == Subject::Kind::DeviceInput && about.Number == item.Number;
  }
  return about == item && (row.What != Change::Fires || item.What == Subject::Kind::Timer);
}

/// What waits and what holds, to see whether a press has begun or ended something.
std::vector<std::pair<Instant, Mask>> Underway(const Engine& engine) {
  const EngineState& state = engine.Inside();
  std::vector<std::pair<Instant, Mask>> list{{0, state.Relays.Held},
                                             {0, state.Relays.HeldOn},
                                             {0, state.Inputs.Disabled},
                                             {0, state.Days.DisabledTimers}};
  for (const Pending& pending : state.Coming.All()) list.emplace_back(pending.At, pending.Relays);
  for (const InputState::Occupant& occupant : state.Inputs.Occupants) {
    list.emplace_back(occupant.Switch, occupant.Relays);
  }
  return list;
}

}  // namespace

Narrator::Narrator(Panel& panel) : Source(panel), Runner(panel.Runner()) {}

void Narrator::Take(const Row& row) {
  ++RowsTaken;
  Past.Take(row, Runner.Settings());
  const bool itself = row.Item == row.Cause || row.Item.What == Subject::Kind::None;
  if (!itself && row.What != Change::Fires) ++Effects;
  constexpr std::size_t most = 32 << 20;
  if (Written.size() > most) Written.erase(0, Written.find('\n', most / 2) + 1);
  RowWriter(Runner.Days()).Append(Written, row);
  Stale = true;
}

void Narrator::Refresh() {
  LookAhead();
  if (!Stale && Words) TellFollowed();
}

void Narrator::LookAhead() {
  // Looking ahead takes its time, and at high speed somebody watches the lamps.
  const qint64 leastMs = Source.Pace().Speed() > 60 ? 1000 : 250;
  if (!Stale || (Made.isValid() && Made.elapsed() < leastMs)) return;
  Made.start();
  Stale = false;
  Coming = Outlook(Source.Runner(), LinesAhead);
  ++AheadLooks;
}

QString Narrator::Why(const Subject& item) {
  return QString::fromStdString(simulator::Why(item, Source.Runner(), Past, Coming));
}

QString Narrator::NextOf(const Subject& item) {
  const std::vector<Happening> next = Coming.Of(item);
  if (next.empty()) return {};
  const bool timer = item.What == Subject::Kind::Timer;
  const std::string what = timer ? std::string() : ChangeText(item, next[0]) + " ";
  return QString::fromStdString(what + ShortTime(next[0].At, Runner.Now(), Runner.Days()));
}

void Narrator::Explain(QWidget* widget, const Subject& item) {
  Items.insert(widget, item);
  widget->installEventFilter(this);
  connect(widget, &QObject::destroyed, this, [this](QObject* gone) { Items.remove(gone); });
}

void Narrator::Press(const Subject& item, const std::function<void()>& act) {
  Engine& runner = Source.Runner();
  const auto underway = Underway(runner);
  const std::uint64_t effects = Effects;
  act();
  const bool nothing = effects == Effects && underway == Underway(runner);
  Tell(nothing ? QString::fromStdString(WhyNothing(item, runner)) : QString());
  Stale = true;
  Made.invalidate();
}

void Narrator::RunUntilChanged(const Subject& item) {
  const bool found = Source.Pace().Step([&item](const Row& row) { return IsAbout(row, item); });
  Moved();
  Tell(found ? Why(item)
             : QStringLiteral("%1 does not change within a year.")
                   .arg(QString::fromStdString(NamedText(item, Runner.Settings()))));
}

void Narrator::Follow(QWidget* widget, Telling words, const std::optional<QPoint>& tipAt) {
  if (!words && widget != Followed) return;
  Followed = widget;
  Words = std::move(words);
  Told.clear();
  if (!Words) {
    Followed.clear();
    return TellWhy(QString());
  }
  TellFollowed();
  if (!tipAt) return;
  TipAt = *tipAt;
  QToolTip::showText(TipAt, Wrapped(Told), widget);
}

void Narrator::ForgetHidden() {
  if (Followed && !Followed->isVisible()) Follow(Followed, {});
}

void Narrator::TellFollowed() {
  const bool inTip = QToolTip::isVisible() && QToolTip::text() == Wrapped(Told);
  const QString words = Words();
  if (words == Told) return;
  Told = words;
  TellWhy(Told);
  if (!Followed) return;
  if (Followed->hasFocus()) Followed->setAccessibleDescription(Told);
  if (inTip) QToolTip::showText(TipAt, Wrapped(Told), Followed);
}

void Narrator::OpenMenu(QWidget* widget, const QPoint& at) {
  auto* menu = new QMenu(widget);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("itemMenu"));
  menu->addAction(QStringLiteral("&Run Until It Changes"), this,
                  [this, item = Items.value(widget)] { RunUntilChanged(item); });
  menu->popup(at);
}

bool Narrator::eventFilter(QObject* object, QEvent* event) {
  auto* widget = static_cast<QWidget*>(object);
  const auto why = [this, item = Items.value(object)] { return Why(item); };
  switch (event->type()) {
    case QEvent::ToolTip:
      Follow(widget, why, static_cast<QHelpEvent*>(event)->globalPos());
      return true;
    case QEvent::FocusIn:
      Follow(widget, why);
      break;
    case QEvent::ContextMenu: {
      const auto* asked = static_cast<QContextMenuEvent*>(event);
      const bool byKey = asked->reason() == QContextMenuEvent::Keyboard;
      OpenMenu(widget, byKey ? widget->mapToGlobal(widget->rect().center()) : asked->globalPos());
      return true;
    }
    default:
      break;
  }
  return QObject::eventFilter(object, event);
}

}  // namespace simulator
