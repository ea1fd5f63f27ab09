#include "document/rules/check/check.h"

#include <QSet>
#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "panel/lists_in_words.h"
#include "panel/panel_record.h"

QString SeverityWord(Severity severity) {
  switch (severity) {
    case Severity::Error:
      return QStringLiteral("error");
    case Severity::Warning:
      return QStringLiteral("warning");
    case Severity::Note:
      break;
  }
  return QStringLiteral("note");
}

QString CountOf(int count, Severity severity) {
  return Counted(count, SeverityWord(severity));
}

QString CountOf(Severity severity, std::span<const Finding> findings) {
  const auto count = std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
    return finding.Level == severity;
  });
  return CountOf(static_cast<int>(count), severity);
}

int EffectsByItem::Place(const Item& item) {
  constexpr int numbers = DeviceCount + 1;
  if (item.Number < 0 || item.Number >= numbers || item.Part < 0 || item.Part >= DeviceInputCount) {
    return -1;
  }
  return (static_cast<int>(item.Kind) * numbers + item.Number) * DeviceInputCount + item.Part;
}

void EffectsByItem::Add(const Item& item, unsigned effects) {
  const int place = Place(item);
  if (place < 0) {
    others_[item] |= effects;
    return;
  }
  const auto at = static_cast<std::size_t>(place);
  if (at >= real_.size()) real_.resize(at + 1);
  real_[at] |= effects;
}

unsigned EffectsByItem::Of(const Item& item) const {
  const int place = Place(item);
  if (place < 0) return others_.value(item);
  const auto at = static_cast<std::size_t>(place);
  return at < real_.size() ? real_[at] : 0;
}

CheckScope::CheckScope(const Project& project, const CheckFacts& facts)
    : Of(project), Facts(facts), Points(InstalledPoints(project)), Uses(UsesOfProject(project)) {
  try {
    BuildPanelImage(project, {}, *Image);
  } catch (const RunTimeFailure& failure) {
    ImageTrouble = QString::fromUtf8(failure.what());
  }
  Reach all;
  Reach holding;
  Reach sweep;
  Item user;
  unsigned does = 0;
  for (const Use& use : Uses) {
    // Those of one user follow one another.
    if (use.User != user) {
      doesWith_.Add(user, std::exchange(does, 0));
      user = use.User;
    }
    does |= use.Effect;
    usedWith_.Add(use.Used, use.Effect);
    if (use.Used.Kind == ItemKind::Preset || use.Used.Kind == ItemKind::Timer) {
      UsesOfRuns.push_back(use);
    }
    if ((use.Effect & EffectHolds) == 0) continue;
    const bool group = use.User.Kind == ItemKind::Group;
    const auto holder = static_cast<std::size_t>(use.User.Number);
    const auto relay = static_cast<std::size_t>(use.Used.Number);
    (group ? inGroup_ : inPreset_)[holder][relay] |= group ? EffectOnOff : use.Effect & EffectOnOff;
  }
  doesWith_.Add(user, does);
  ItemSet parked;
  for (int timer = 0; timer < ItemCount; ++timer) {
    parked.set(static_cast<std::size_t>(timer), IsParked({ItemKind::Timer, timer}));
  }
  for (const Use& use : Uses) {
    if (use.User.Kind == ItemKind::Timer && parked[static_cast<std::size_t>(use.User.Number)])
      continue;
    ((use.Effect & EffectDisables) != 0 ? holding : all).Add(use);
    if (use.User.Kind == ItemKind::Panel) sweep.Add(use);
    const bool group = use.Used.Kind == ItemKind::Group;
    const bool run = use.Used.Kind == ItemKind::Preset && (use.Effect & EffectRuns) != 0;
    if ((group || run) && use.Used.Number >= 0 && use.Used.Number < ItemCount)
      (group ? switchedGroups_ : runPresets_).set(static_cast<std::size_t>(use.Used.Number));
  }
  for (const Use& use : UsesOfRuns) {
    if (use.User.Kind != ItemKind::DimmerOutput || use.Used.Number < 0) continue;
    const auto at = static_cast<std::size_t>(use.Used.Number);
    if (at < ItemCount) {
      (use.Used.Kind == ItemKind::Timer ? timersOfSlots_ : presetsOfSlots_).set(at);
    }
  }
  for (int number = 0; number < ItemCount; ++number) {
    const auto at = static_cast<std::size_t>(number);
    if (IsForKeys({ItemKind::Group, number})) all.Groups[at] = EffectOnOff;
    if (IsForKeys({ItemKind::Preset, number})) all.Presets[at] = EffectOnOff;
  }
  OnRelays = EffectsOf(all);
  Holding = EffectsOf(holding);
  BySweep = EffectsOf(sweep);
}

void CheckScope::Reach::Add(const Use& use) {
  const int number = use.Used.Number;
  if ((use.Effect & (EffectHolds | EffectFollows)) != 0 || number < 0 || number >= ItemCount)
    return;
  const auto at = static_cast<std::size_t>(number);
  if (use.Used.Kind == ItemKind::Relay) Relays[at] |= use.Effect & EffectOnOff;
  if (use.Used.Kind == ItemKind::Group) Groups[at] |= use.Effect & EffectOnOff;
  if (use.Used.Kind == ItemKind::Preset) Presets[at] = EffectOnOff;
}

/// Groups and presets act on the relays that they hold.
RelayEffects CheckScope::EffectsOf(const Reach& reach) const {
  RelayEffects effects = reach.Relays;
  for (std::size_t holder = 0; holder < ItemCount; ++holder) {
    for (std::size_t relay = 0; relay < ItemCount; ++relay) {
      effects[relay] |= (inGroup_[holder][relay] & reach.Groups[holder]) |
                        (inPreset_[holder][relay] & reach.Presets[holder]);
    }
  }
  return effects;
}

QString CheckScope::Sentence(const GatheredUses& uses) const {
  return Text(uses.User) + u' ' + uses.Words + u' ' + ListOf(Of, uses.Used);
}

std::vector<GatheredUses> CheckScope::Gather(const std::function<bool(const Item& used)>& wanted,
                                             unsigned effects) const {
  using enum ItemKind;
  constexpr int numbers = 64;  // a pilot's may be beyond all items
  QSet<Item> items;
  for (const ItemKind kind : {Relay, Group, Input, Timer, Preset}) {
    for (int number = 0; number < numbers; ++number) {
      const Item item{kind, number};
      if (wanted(item) && IsUsed(item, effects)) items.insert(item);
    }
  }
  std::vector<GatheredUses> rows;
  if (items.isEmpty()) return rows;
  std::size_t first = 0;  // of the user in hand
  for (const Use& use : Uses) {
    if ((use.Effect & effects) == 0 || !items.contains(use.Used)) continue;
    if (!rows.empty() && rows.back().User != use.User) first = rows.size();
    const auto row = std::find_if(
        rows.begin() + static_cast<std::ptrdiff_t>(first), rows.end(),
        [&](const GatheredUses& one) { return one.Used.front().Kind == use.Used.Kind; });
    if (row == rows.end()) {
      rows.push_back({use.User, {use.Used}, QString(use.Words), ScreenOf(use)});
      continue;
    }
    if (row->Used.back() != use.Used) row->Used.push_back(use.Used);
    if (row->Words != use.Words) row->Words = QStringLiteral("acts on");
  }
  return rows;
}

bool CheckScope::IsUsed(const Item& used, unsigned effects) const {
  return (usedWith_.Of(used) & effects) != 0;
}

bool CheckScope::DoesAnything(const Item& user, unsigned effects) const {
  return (doesWith_.Of(user) & effects) != 0;
}

bool CheckScope::DimmersFollow(const Item& timerOrPreset) const {
  const int number = timerOrPreset.Number;
  const bool timer = timerOrPreset.Kind == ItemKind::Timer;
  return number >= 0 && number < ItemCount &&
         (timer ? timersOfSlots_ : presetsOfSlots_)[static_cast<std::size_t>(number)];
}

bool CheckScope::HasDay(const Item& timer) const {
  constexpr Int16 allWeekdays = 0x7F;
  return Of.Panel.TimerHolidayMonth(timer.Number) != 0 ||
         (Of.Panel.TimerDays(timer.Number) & allWeekdays) != allWeekdays;
}

bool CheckScope::IsParked(const Item& timer) const {
  constexpr Int16 allBoxes = 0xFF;
  if (timer.Number < 0 || timer.Number >= ItemCount) return false;
  return !HasDay(timer) && (Of.Panel.TimerDays(timer.Number) & allBoxes) == allBoxes &&
         !IsUsed(timer, EffectRuns);
}

bool CheckScope::IsIdle(const Item& input) const {
  return !DoesAnything(input, ~unsigned{EffectFollows}) && !IsUsed(input, EffectFollows);
}

bool CheckScope::IsInstalled(const Item& relayOrInput) const {
  return relayOrInput.Number >= 0 && relayOrInput.Number < Points;
}

QString CheckScope::AreBeyondPoints(std::size_t count) const {
  const QLatin1String are(count == 1 ? "is" : "are");
  return Points == 0 ? are + QStringLiteral(" not installed, as no points are")
                     : QStringLiteral("%1 beyond the %2 installed points").arg(are).arg(Points);
}

bool CheckScope::IsForKeys(const Item& groupOrPreset) const {
  return !(groupOrPreset.Kind == ItemKind::Preset
               ? runPresets_
               : switchedGroups_)[static_cast<std::size_t>(groupOrPreset.Number)];
}

bool CheckScope::HoldsRelay(const Item& groupOrPreset) const {
  const int number = groupOrPreset.Number;
  if (number < 0 || number >= ItemCount) return false;
  const auto& table = groupOrPreset.Kind == ItemKind::Group ? inGroup_ : inPreset_;
  const RelayEffects& held = table[static_cast<std::size_t>(number)];
  return std::any_of(held.begin(), held.begin() + Points,
                     [](unsigned effect) { return effect != 0; });
}

std::vector<CheckRule> AllRules() {
  std::vector<CheckRule> all;
  for (const auto rules : {TransferRules(), CodeRules(), ControlRules(), RelayRules(), TimerRules(),
                           ClockRules(), NameRules(), DimmerRules()}) {
    all.insert(all.end(), rules.begin(), rules.end());
  }
  return all;
}

std::vector<Finding> CheckProject(const Project& project, const CheckFacts& facts) {
  const CheckScope scope(project, facts);
  std::vector<Finding> findings;
  for (const CheckRule& rule : AllRules()) {
    const auto tell = [&](const Item& where, const QString& sentence, const MendingPlace& place) {
      findings.push_back({rule.Level, rule.Name, where, sentence,
                          place.On == Screen::None ? rule.On : place.On, place.Of});
    };
    try {
      rule.Look(scope, tell);
    } catch (const RunTimeFailure&) {
      // A damaged number that no rule can read stops the download or the document, as told.
    }
  }
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return std::tie(a.Level, a.Where) < std::tie(b.Level, b.Where);
  });
  return findings;
}
