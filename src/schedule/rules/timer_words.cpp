#include "schedule/rules/timer_words.h"

#include <QLocale>
#include <QStringList>

#include "panel/dimmer_fields.h"
#include "panel/panel_record.h"

namespace {

constexpr int TurnsOn = 1;
constexpr int TurnsOff = 2;

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
  const QString on = NamesInShort(project, ItemsWith(kind, codeOf, TurnsOn));
  const QString off = NamesInShort(project, ItemsWith(kind, codeOf, TurnsOff));
  if (on.isEmpty()) return off.isEmpty() ? QString() : QStringLiteral("turns %1 off").arg(off);
  return QStringLiteral("turns %1 on").arg(on) +
         (off.isEmpty() ? QString() : QStringLiteral(", %1 off").arg(off));
}

/// The outputs of enabled dimmers that a slot has follow the timer.
std::vector<Item> OutputsOfTimer(const Project& project, int timer) {
  std::vector<Item> outputs;
  for (int device = 0; device < DimmerDeviceCount; ++device) {
    if (!DimmerEnabled(project.Dimmers, device)) continue;
    for (int output = 0; output < DimmerOutputCount; ++output) {
      const DimmerOutput fields(project.Dimmers, device, output);
      for (int slot = 0; slot < ControlSlotCount; ++slot) {
        if (fields(dim::ControlType, slot) != ControlTimer ||
            fields(dim::ControlNumber, slot) != timer) {
          continue;
        }
        outputs.push_back({ItemKind::DimmerOutput, device, output});
        break;
      }
    }
  }
  return outputs;
}

}  // namespace

QString NamesInShort(const Project& project, const std::vector<Item>& items) {
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

std::vector<TimerAct> ActsOfTimer(const Project& project, int timer) {
  const PanelRecordType& panel = project.Panel;
  const Item own{ItemKind::Timer, timer};
  std::vector<TimerAct> acts = {
      {Switched(project, ItemKind::Relay,
                [&](int relay) { return panel.TimerRelayControl(timer, relay); }),
       Screen::TimerToRelayControl, own},
      {Switched(project, ItemKind::Group,
                [&](int group) { return panel.TimerGroupControl(timer, group); }),
       Screen::TimerToGroupControl, own}};
  const QString presets = NamesInShort(
      project,
      ItemsWith(
          ItemKind::Preset,
          [&](int preset) { return panel.TimerPresetControl(timer, preset) != 0 ? 1 : 0; }, 1));
  if (!presets.isEmpty()) {
    acts.push_back({QStringLiteral("activates ") + presets, Screen::TimerToPresetControl, own});
  }
  const std::vector<Item> outputs = OutputsOfTimer(project, timer);
  if (!outputs.empty()) {
    acts.push_back({QStringLiteral("sets ") + NamesInShort(project, outputs), Screen::DimmerOutput,
                    outputs.front()});
  }
  std::erase_if(acts, [](const TimerAct& act) { return act.Words.isEmpty(); });
  return acts;
}

QString ActsInWords(const Project& project, int timer) {
  QStringList words;
  for (const TimerAct& act : ActsOfTimer(project, timer)) words << act.Words;
  return words.isEmpty() ? QStringLiteral("-") : words.join(QStringLiteral("; "));
}

QString MomentInWords(const TimerMoment& moment, const QDateTime& now) {
  const QDate day = moment.Day();
  constexpr int minutesOfHour = 60;
  const QTime time(moment.MinuteOfDay() / minutesOfHour, moment.MinuteOfDay() % minutesOfHour);
  constexpr int daysOfWeek = 7;
  const QString format = now.date().daysTo(day) < daysOfWeek ? QStringLiteral("ddd")
                         : day.year() == now.date().year()   ? QStringLiteral("MMM d,")
                                                             : QStringLiteral("MMM d yyyy,");
  return QLocale::c().toString(day, format) + u' ' +
         QLocale::c().toString(time, QStringLiteral("h:mm AP"));
}

QString NextInWords(const Project& project, int timer, const QDateTime& now) {
  const auto next = TimerMoments(project, TimerMoments::Days::Real,
                                 TimerSet().set(static_cast<std::size_t>(timer)))
                        .Next(timer, now);
  return next ? MomentInWords(*next, now) : QString();
}
