#include "simulator/window/relay_view.h"

#include <QDateTime>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <utility>

namespace simulator {

namespace {

constexpr int RelayColumns = 4;

Mask SwitchedRelays(const Configuration& settings) {
  Mask used = settings.Hours.Swept;
  for (const TimerSetting& timer : settings.Timers) used |= timer.Relays.All();
  for (const Outcome& preset : settings.Presets) used |= preset.All();
  for (const SwitchSetting& setting : settings.Inputs.Each) {
    if (setting.Kind != InputKind::None && SpeaksOfRelays(setting.Kind)) used |= setting.All();
  }
  return used;
}

bool BlinkPhase(const QDateTime& computer) {
  constexpr qint64 phaseMs = 400;
  return computer.toMSecsSinceEpoch() / phaseMs % 2 == 0;
}

QString LevelText(int level) {
  return QStringLiteral("%1 (%2 %)").arg(level).arg((level * 100 + FullLevel / 2) / FullLevel);
}

}  // namespace

std::vector<RelayUse> RelaysByUse(const Configuration& settings, int count) {
  std::vector<RelayUse> uses;
  Mask left = Bit(count) - 1;
  const auto add = [&](int group, const QString& title, Mask relays) {
    RelayUse use{group, title, {}};
    EachBit(relays & left, [&](int relay) { use.Relays.push_back(relay); });
    left &= ~relays;
    if (!use.Relays.empty()) uses.push_back(use);
  };
  for (int group = 0; group < Items; ++group) {
    const auto at = static_cast<std::size_t>(group);
    add(group, NumberedName("Group", group, settings.Names.Group[at]), settings.Groups[at]);
  }
  const QString others = uses.empty() ? QStringLiteral("Relays") : QStringLiteral("In No Group");
  add(-1, others, SwitchedRelays(settings));
  add(-1, QStringLiteral("Not Switched By Anything"), left);
  return uses;
}

RelayView::RelayView(Panel& panel) : BuiltView(panel) {}

void RelayView::ShowSettings(const Configuration& settings) {
  Shown shown;
  shown.Uses = RelaysByUse(settings, ShownPoints(Source));
  for (int i = 0; i < Items; ++i) {
    if (settings.Presets[static_cast<std::size_t>(i)].All() != 0) shown.Presets.push_back(i);
  }
  for (int i = 0; i < DimmerOutputs; ++i) {
    if (settings.Dimmers.Each[static_cast<std::size_t>(i)].Fitted) shown.Dimmers.push_back(i);
  }
  for (const auto* names : {&settings.Names.Relay, &settings.Names.Group, &settings.Names.Preset}) {
    shown.Names.insert(shown.Names.end(), names->begin(), names->end());
  }
  if (shown == Known) return;  // a button keeps its focus
  Known = shown;
  Build(settings, BuildAnew());
  ShowStates();
}

void RelayView::Build(const Configuration& settings, QVBoxLayout& column) {
  using State = Kind::State;
  const auto onOff = [](bool on) { return State{on, on ? "on" : "off"}; };
  const Kind relays{"Relay", settings.Names.Relay,
                    [this, onOff](const Engine& runner, int relay) {
                      const bool blinks = Has(runner.BlinkingRelays(), relay);
                      return blinks ? State{BlinkPhase(Source.Pace().Computer()), "blinks"}
                                    : onOff(runner.Relay(relay));
                    },
                    [this](int relay) { Source.SetRelay(relay, !Source.Relay(relay)); }};
  const Kind groups{"Group", settings.Names.Group,
                    [onOff](const Engine& runner, int group) { return onOff(runner.Group(group)); },
                    [this](int group) { Source.SetGroup(group, !Source.Group(group)); }};
  const Kind presets{"Preset", settings.Names.Preset,
                     [](const Engine& runner, int preset) {
                       const bool set = runner.Preset(preset).value_or(false);
                       return State{set, set ? "set" : "not set"};
                     },
                     [this](int preset) { Source.SetPreset(preset); }};
  const auto addBox = [&column](const QString& title) -> QGridLayout& {
    auto* box = new QGroupBox(title);
    column.addWidget(box);
    return *new QGridLayout(box);
  };
  for (const RelayUse& use : Known.Uses) {
    const bool grouped = use.Group >= 0;
    QGridLayout& grid = addBox(grouped ? QString() : use.Title);
    if (grouped) AddButtons(grid, groups, {use.Group}, 0);
    AddButtons(grid, relays, use.Relays, grouped ? 1 : 0);
  }
  if (!Known.Presets.empty())
    AddButtons(addBox(QStringLiteral("Presets")), presets, Known.Presets, 0);
  if (!Known.Dimmers.empty()) AddDimmers(addBox(QStringLiteral("Dimmer Outputs")));
  column.addStretch(1);
}

void RelayView::AddButtons(QGridLayout& grid, const Kind& kind, const std::vector<int>& items,
                           int firstColumn) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const int item = items[i];
    const QString name = NumberedName(kind.Name, item, kind.Names[static_cast<std::size_t>(item)]);
    auto* button = new LampButton(name);
    button->setAccessibleName(SpokenName(kind.Name, name));
    button->setObjectName(QString::fromLatin1(kind.Name).toLower() + QString::number(item + 1));
    connect(button, &QAbstractButton::clicked, this, [this, press = kind.Press, item] {
      press(item);
      ShowStates();
    });
    Showers.emplace_back([button, stateOf = kind.StateOf, item](const Engine& runner) {
      const Kind::State state = stateOf(runner, item);
      button->SetLamp(state.Lit, QLatin1String(state.Words));
    });
    const auto at = static_cast<int>(i);
    grid.addWidget(button, at / RelayColumns, firstColumn + at % RelayColumns);
  }
  for (int i = 0; i < firstColumn + RelayColumns; ++i) grid.setColumnStretch(i, 1);
}

void RelayView::AddDimmers(QGridLayout& grid) {
  for (std::size_t i = 0; i < Known.Dimmers.size(); ++i) {
    const int output = Known.Dimmers[i];
    const QString name = QStringLiteral("Dimmer %1 Output %2")
                             .arg(output / OutputsADimmer + 1)
                             .arg(output % OutputsADimmer + 1);
    auto* bar = new QProgressBar;
    bar->setRange(0, FullLevel);
    bar->setAccessibleName(name);
    bar->setObjectName(QStringLiteral("dimmer%1").arg(output + 1));
    const auto row = static_cast<int>(i) / 2;
    const int place = static_cast<int>(i) % 2 * 2;
    grid.addWidget(new QLabel(name), row, place);
    grid.addWidget(bar, row, place + 1);
    grid.setColumnStretch(place + 1, 1);
    Showers.emplace_back([bar, output, told = -1](const Engine& runner) mutable {
      const int level = runner.DimmerLevel(output);
      if (std::exchange(told, level) == level) return;
      bar->setFormat(LevelText(level));
      bar->setValue(level);
    });
  }
}

}  // namespace simulator
