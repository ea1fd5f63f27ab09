#include "schedule/rules/timer_words.h"

#include <QLocale>
#include <QStringList>

#include "panel/panel_record.h"
#include "schedule/rules/timer_moments.h"

namespace {

constexpr int TurnsOn = 1;
constexpr int TurnsOff = 2;

/// "HALLS, OFFICES and STORE", or "HALLS, OFFICES and 4 more".
QString Names(const Project& project, const std::vector<Item>& items) {
  constexpr std::size_t most = 3;
  QStringList names;
  for (const Item& item : items) {
    const QString own = OwnName(project, item);
    names << (own.isEmpty() ? ItemCode(item) : own);
  }
  const auto left = static_cast<qsizetype>(items.size() - std::min(items.size(), most - 1));
  if (items.size() > most) {
    names.resize(most - 1);
    names << QStringLiteral("%1 more").arg(left);
  }
  if (names.size() < 2) return names.join(QString());
  const QString last = names.takeLast();
  return names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

/// The items of a kind to which the timer does what the code says.
template <typename CodeOf>
std::vector<Item> ItemsWith(ItemKind kind, CodeOf codeOf, int code) {
  std::vector<Item> items;
  for (int number = 0; number < ItemCount; ++number) {
    if (codeOf(number) == code) items.push_back({kind, number});
  }
  return items;
}

template <typename CodeOf>
QString Switched(const Project& project, ItemKind kind, CodeOf codeOf) {
  const QString on = Names(project, ItemsWith(kind, codeOf, TurnsOn));
  const QString off = Names(project, ItemsWith(kind, codeOf, TurnsOff));
  if (on.isEmpty()) return off.isEmpty() ? QString() : QStringLiteral("turns %1 off").arg(off);
  return QStringLiteral("turns %1 on").arg(on) +
         (off.isEmpty() ? QString() : QStringLiteral(", %1 off").arg(off));
}

}  // namespace

std::vector<TimerAct> ActsOfTimer(const Project& project, int timer) {
  const PanelRecordType& panel = project.Panel;
  std::vector<TimerAct> acts = {
      {Switched(project, ItemKind::Relay,
                [&](int relay) { return panel.TimerRelayControl(timer, relay); }),
       Screen::TimerToRelayControl},
      {Switched(project, ItemKind::Group,
                [&](int group) { return panel.TimerGroupControl(timer, group); }),
       Screen::TimerToGroupControl}};
  const QString presets = Names(
      project,
      ItemsWith(
          ItemKind::Preset,
          [&](int preset) { return panel.TimerPresetControl(timer, preset) != 0 ? 1 : 0; }, 1));
  if (!presets.isEmpty()) {
    acts.push_back({QStringLiteral("activates ") + presets, Screen::TimerToPresetControl});
  }
  std::erase_if(acts, [](const TimerAct& act) { return act.Words.isEmpty(); });
  return acts;
}

QString NextInWords(const Project& project, int timer, const QDateTime& now) {
  const auto next = TimerMoments(project, TimerMoments::Days::Real,
                                 TimerSet().set(static_cast<std::size_t>(timer)))
                        .Next(timer, now);
  if (!next) return {};
  const QDate day = next->Day();
  constexpr int minutesOfHour = 60;
  const QTime time(next->MinuteOfDay() / minutesOfHour, next->MinuteOfDay() % minutesOfHour);
  constexpr int daysOfWeek = 7;
  const QString format = now.date().daysTo(day) < daysOfWeek ? QStringLiteral("ddd")
                         : day.year() == now.date().year()   ? QStringLiteral("MMM d,")
                                                             : QStringLiteral("MMM d yyyy,");
  return QLocale::c().toString(day, format) + u' ' +
         QLocale::c().toString(time, QStringLiteral("h:mm AP"));
}
