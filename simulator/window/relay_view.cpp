#include "simulator/window/relay_view.h"

#include <QDateTime>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "simulator/watch/why.h"
#include "simulator/window/tile_layout.h"

namespace simulator {

namespace {

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
  Mask grouped = 0;
  const auto add = [&uses](const QString& title, Mask relays, int group = -1, bool folded = false) {
    RelayUse use{group, title, {}, folded};
    EachBit(relays, [&](int relay) { use.Relays.push_back(relay); });
    if (group >= 0 || !use.Relays.empty()) uses.push_back(use);
  };
  for (int group = 0; group < Items; ++group) {
    const auto at = static_cast<std::size_t>(group);
    const bool named = !OwnName({Subject::Kind::Group, group, 0}, settings).empty();
    if (settings.Groups[at] == 0 && !named) continue;
    grouped |= settings.Groups[at];
    add(NumberedName("Group", group, settings.Names.Group[at]), settings.Groups[at], group);
  }
  const Mask points = Bit(count) - 1;
  const Mask switched = UsedRelays(settings) & ~grouped;
  const Mask idle = AllItems & ~switched & ~grouped;
  add(uses.empty() ? QStringLiteral("Relays") : QStringLiteral("In No Group"), switched);
  add(QStringLiteral("Not Switched By Anything"), idle & points);
  add(QStringLiteral("Relays Beyond The Points"), idle & ~points, -1, true);
  return uses;
}

struct RelayView::Kinds {
  Kind Relays, Groups, Presets, Timers;
};

RelayView::RelayView(Panel& panel, Narrator& narrator) : BuiltView(panel, narrator) {}

void RelayView::ShowSettings(const Configuration& settings) {
  Shown shown;
  shown.Uses = RelaysByUse(settings, ShownPoints(Source));
  for (int i = 0; i < Items; ++i) {
    if (settings.Presets[static_cast<std::size_t>(i)].All() != 0) shown.Presets.push_back(i);
    if (settings.Timers[static_cast<std::size_t>(i)].Used) shown.Timers.push_back(i);
  }
  for (int i = 0; i < DimmerOutputs; ++i) {
    if (settings.Dimmers.Each[static_cast<std::size_t>(i)].Fitted) shown.Dimmers.push_back(i);
  }
  for (const auto* names : {&settings.Names.Relay, &settings.Names.Group, &settings.Names.Preset,
                            &settings.Names.Timer}) {
    shown.Names.insert(shown.Names.end(), names->begin(), names->end());
  }
  if (shown == Known) return;  // a button keeps its focus
  Known = shown;
  UnusedOpen = Unused && Unused->IsOpen();
  Build(settings, BuildAnew());
  ShowStates();
}

void RelayView::Build(const Configuration& settings, QVBoxLayout& column) {
  using State = Kind::State;
  const auto onOff = [](bool on) { return State{on, on ? "on" : "off"}; };
  const Kinds kinds{
      {Subject::Kind::Relay, "Relay", settings.Names.Relay,
       [this, onOff](const Engine& runner, int relay) {
         const bool blinks = Has(runner.BlinkingRelays(), relay);
         return blinks ? State{BlinkPhase(Source.Pace().Computer()), "blinks"}
                       : onOff(runner.Relay(relay));
       },
       [this](int relay) { Source.SetRelay(relay, !Source.Relay(relay)); }},
      {Subject::Kind::Group, "Group", settings.Names.Group,
       [onOff](const Engine& runner, int group) { return onOff(runner.Group(group)); },
       [this](int group) { Source.SetGroup(group, !Source.Group(group)); }},
      {Subject::Kind::Preset, "Preset", settings.Names.Preset,
       [](const Engine& runner, int preset) {
         const bool set = runner.Preset(preset).value_or(false);
         return State{set, set ? "set" : "not set"};
       },
       [this](int preset) { Source.SetPreset(preset); }},
      {Subject::Kind::Timer, "Timer", settings.Names.Timer,
       [](const Engine&, int) {
         return State{false, ""};
       },
       [this](int timer) { Source.ForceTimer(timer); }}};
  for (const RelayUse& use : Known.Uses) AddUse(column, use, kinds);
  const auto addBox = [&](const char* title, const Kind& kind, const std::vector<int>& items) {
    if (items.empty()) return;
    auto* box = new QGroupBox(QString::fromLatin1(title));
    auto* tiles = new TileLayout;
    (new QVBoxLayout(box))->addLayout(tiles);
    AddButtons(*tiles, kind, items);
    column.addWidget(box);
  };
  addBox("Presets", kinds.Presets, Known.Presets);
  addBox("Timers (a press forces one)", kinds.Timers, Known.Timers);
  if (!Known.Dimmers.empty()) AddDimmers(column);
  column.addStretch(1);
}

void RelayView::AddUse(QVBoxLayout& column, const RelayUse& use, const Kinds& kinds) {
  const bool grouped = use.Group >= 0;
  auto* box = new QGroupBox(grouped || use.Folded ? QString() : use.Title);
  auto* row = new QHBoxLayout(box);
  auto* tiles = new TileLayout;
  if (grouped) row->addWidget(GroupSwitches(use, kinds.Groups), 0, Qt::AlignTop);
  row->addLayout(tiles, 1);
  AddButtons(*tiles, kinds.Relays, use.Relays);
  if (!use.Folded) {
    column.addWidget(box);
    return;
  }
  Unused = new FoldBox(use.Title, box, UnusedOpen);
  column.addWidget(Unused);
}

/// A group's lamp, which turns all on unless all are, above what turns all on and off.
QWidget* RelayView::GroupSwitches(const RelayUse& use, const Kind& groups) {
  auto* place = new QWidget;
  auto* grid = new QGridLayout(place);
  grid->setContentsMargins(0, 0, 0, 0);
  LampButton* lamp = Button(groups, use.Group);
  grid->addWidget(lamp, 0, 0, 1, 2);
  SlowShowers.emplace_back([lamp, group = use.Group](const Engine& runner) {
    const Mask members = runner.Settings().Groups[static_cast<std::size_t>(group)];
    lamp->SetNote(members == 0 ? QStringLiteral("no relays")
                               : QStringLiteral("%1 of %2 on")
                                     .arg(std::popcount(members & runner.Relays()))
                                     .arg(std::popcount(members)));
  });
  const Subject item{Subject::Kind::Group, use.Group, 0};
  for (const bool on : {true, false}) {
    auto* button = new QPushButton(on ? QStringLiteral("On") : QStringLiteral("Off"));
    button->setAccessibleName(SpokenName("Group", use.Title) + QLatin1Char(' ') + button->text());
    button->setObjectName(lamp->objectName() + button->text().toLower());
    button->setMinimumWidth(NarrowWidth(*button));
    Story.Explain(button, item);
    connect(button, &QPushButton::clicked, this, [this, item, on] {
      Story.Press(item, [&] { Source.SetGroup(item.Number, on); });
      ShowStates();
    });
    grid->addWidget(button, 1, on ? 0 : 1);
  }
  return place;
}

LampButton* RelayView::Button(const Kind& kind, int item) {
  const bool isTimer = kind.What == Subject::Kind::Timer;
  const QString name = NumberedName(kind.Name, item, kind.Names[static_cast<std::size_t>(item)]);
  auto* button = new LampButton(name, isTimer ? LampButton::Kind::NoLamp : LampButton::Kind::Lamp);
  button->setAccessibleName(SpokenName(kind.Name, name));
  button->setObjectName(QString::fromLatin1(kind.Name).toLower() + QString::number(item + 1));
  const Subject subject{kind.What, item, 0};
  Story.Explain(button, subject);
  connect(button, &QAbstractButton::clicked, this, [this, press = kind.Press, subject] {
    Story.Press(subject, [&] { press(subject.Number); });
    ShowStates();
  });
  Showers.emplace_back([button, stateOf = kind.StateOf, subject](const Engine& runner) {
    const Kind::State state = stateOf(runner, subject.Number);
    button->SetLamp(state.Lit, QLatin1String(state.Words));
    button->SetSign(QString::fromStdString(SignOf(subject, runner)));
  });
  return button;
}

void RelayView::AddButtons(TileLayout& tiles, const Kind& kind, const std::vector<int>& items) {
  for (const int item : items) {
    LampButton* button = Button(kind, item);
    SlowShowers.emplace_back([this, button, what = kind.What, item](const Engine&) {
      button->SetNote(Story.NextOf({what, item, 0}));
    });
    tiles.addWidget(button);
  }
}

void RelayView::AddDimmers(QVBoxLayout& column) {
  auto* box = new QGroupBox(QStringLiteral("Dimmer Outputs"));
  auto* tiles = new TileLayout;
  (new QVBoxLayout(box))->addLayout(tiles);
  column.addWidget(box);
  for (const int output : Known.Dimmers) {
    const QString name = QStringLiteral("Dimmer %1 Output %2")
                             .arg(output / OutputsADimmer + 1)
                             .arg(output % OutputsADimmer + 1);
    auto* bar = new QProgressBar;
    bar->setRange(0, FullLevel);
    bar->setFocusPolicy(Qt::TabFocus);
    bar->setAccessibleName(name);
    bar->setObjectName(QStringLiteral("dimmer%1").arg(output + 1));
    Story.Explain(bar, {Subject::Kind::Dimmer, output / OutputsADimmer, output % OutputsADimmer});
    auto* place = new QWidget;
    auto* both = new QVBoxLayout(place);
    both->setContentsMargins(0, 0, 0, 0);
    both->setSpacing(0);
    both->addWidget(new QLabel(name));
    both->addWidget(bar);
    tiles->addWidget(place);
    Showers.emplace_back([bar, output, told = -1](const Engine& runner) mutable {
      const int level = runner.DimmerLevel(output);
      if (std::exchange(told, level) == level) return;
      bar->setFormat(LevelText(level));
      bar->setValue(level);
    });
  }
}

}  // namespace simulator
