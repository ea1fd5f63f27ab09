#include <algorithm>
#include <array>

#include "document/rules/report/report_chapters.h"
#include "document/rules/text/doc_sections.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/fields.h"
#include "panel/format.h"
#include "panel/pilot_code.h"
#include "panel/setting.h"
#include "panel/time_values.h"

// The chapters of the panel and its items.

namespace {

/// "Blink alert time" of "blink alert time".
QString AsCaption(QString phrase) {
  if (!phrase.isEmpty()) phrase[0] = phrase[0].toUpper();
  return phrase;
}

/// A timed-on input with its minutes.
QString InputTypeAndTime(const Project& project, const Item& input, int minutes) {
  const QString word = InputTypeWord(project, input);
  return word == WordText(InputTypes, static_cast<int>(InputKind::TimedOn))
             ? QStringLiteral("%1 %2 min").arg(word).arg(minutes)
             : word;
}

/// The points of each node that has some: "32, 01 to 32".
void AddNodes(const Project& project, ReportChapter& chapter) {
  int last = 0;
  for (int node = 0; node < NodeCount; ++node) {
    const int points = project.Panel.IOCount(node) * PointsOfBlock;
    if (points == 0) continue;
    chapter.Rows.push_back({{QStringLiteral("I/O of node %1").arg(node + 1),
                             QStringLiteral("%1, %2 to %3")
                                 .arg(points)
                                 .arg(TwoDigits(last + 1), TwoDigits(last + points))}});
    last += points;
  }
}

/// A bus input's pilot that no other item switches.
QString StaticPilot(const FennlinkRecord& device, int input) {
  const Int16 pilot = device.DevicePilot(input);
  const bool lit = device.DeviceType != DeviceTypePhotocell && PilotSource(pilot) == 0 &&
                   PilotNumber(pilot) % 2 != 0;
  return lit ? QStringLiteral("has a pilot that is always on") : QString();
}

/// A row an item, of which much is told: close together.
ReportChapter ItemChapter(const char* title, const QStringList& columns,
                          const std::vector<int>& widths) {
  ReportChapter chapter{QString::fromLatin1(title), columns, widths};
  chapter.Small = chapter.RunOn = true;
  return chapter;
}

QString JoinLines(const QStringList& lines) {
  QStringList told = lines;
  told.removeAll(QString());
  return told.join(u'\n');
}

}  // namespace

QString WordText(WordTable table, int code) {
  return ToUnicode(Word(table, code));
}

ReportChapter PanelChapter(const Project& project) {
  ReportChapter chapter{QStringLiteral("Panel"), {"Setting", "Value"}, {54, 46}};
  chapter.Halved = true;
  const Screen module = AddOnModuleOf(project.Panel.AddOnModuleType).On;
  const auto add = [&](const Setting& setting) {
    const QString words = WordsOf(project, setting);
    if (words.isEmpty()) return;
    // The phrase of a sweep's setting stands below its area in a comparison.
    const bool sweep = AreaOf(setting) == u"Sweeps";
    const QString phrase = PhraseOf(project, setting);
    chapter.Rows.push_back(
        {{AsCaption(sweep ? QStringLiteral("sweep ") + phrase : phrase), words}});
  };
  ForEachPanelField(project.Panel, [&](const FieldFacts& facts, const auto&) {
    if (facts.Name.Value == QLatin1StringView("IOCount")) AddNodes(project, chapter);
    if (facts.Spare != nullptr) add({&facts, nullptr, {0, SpareItem, 0}});
    if (facts.First.Value.Counts != Axis::Of::Nothing) return;
    const Screen on = facts.Where.Value.On;
    const bool ofModule = facts.Area.Value == QLatin1StringView("Add-on module");
    if (!ofModule || on == module) add({&facts, nullptr, {}});
  });
  return chapter;
}

ReportChapter RelayChapter(const Project& project, const ReportUses& uses) {
  const auto& panel = project.Panel;
  const bool channels =
      std::any_of(panel.DMXChannel.elements.begin(), panel.DMXChannel.elements.begin() + ItemCount,
                  [](Int16 channel) { return channel != 0; });
  ReportChapter chapter =
      ItemChapter("Relays", {"Relay", "Power on", "Type", "What acts on it"}, {17, 8, 8, 67});
  if (channels) {
    chapter.Columns.insert(3, QStringLiteral("DMX"));
    chapter.Widths = {17, 8, 8, 5, 62};
  }
  std::vector<Item> alike;  // Relays in a row of which the same is told are one row.
  QStringList told;
  for (int relay = 0; relay < InstalledPoints(project); ++relay) {
    const Item item{ItemKind::Relay, relay};
    const QString acts = uses.WhatActsOnIt(item);
    const Int16 channel = panel.DMXChannel(relay);
    if (acts.isEmpty() && OwnName(project, item).isEmpty() && channel == 0) continue;
    QStringList cells = {QString(), WordText(RelayPowerOnTypes, panel.RelayPowerOnType(relay)),
                         WordText(RelayTimerTypes, panel.RelayTimerType(relay))};
    if (channels) cells << (channel == 0 ? QString() : QString::number(channel));
    cells << acts;
    if (cells != told) {
      alike.clear();
      chapter.Rows.push_back({cells});
      told = cells;
    } else if (alike.size() == 1) {
      chapter.Rows.back().Cells.back() = uses.WhatActsOnIt(item, true);
    }
    alike.push_back(item);
    // In a narrow column each begins a line, and may be parted.
    chapter.Rows.back().Cells[0] = uses.Names(alike)
                                       .replace(QStringLiteral(", "), QStringLiteral(",\n"))
                                       .replace(QChar::Nbsp, u' ');
  }
  return chapter;
}

namespace {

/// A row for each group or preset that holds or is used.
ReportChapter HolderChapter(const Project& project, const ReportUses& uses, ItemKind kind,
                            ReportChapter chapter) {
  for (int number = 0; number < ItemCount; ++number) {
    const Item item{kind, number};
    const QString does = uses.WhatItDoes(item);
    const QString acts = uses.WhatActsOnIt(item);
    if (does.isEmpty() && acts.isEmpty()) continue;
    chapter.Rows.push_back({{ItemText(project, item), does, acts}});
  }
  return chapter;
}

}  // namespace

ReportChapter GroupChapter(const Project& project, const ReportUses& uses) {
  return HolderChapter(
      project, uses, ItemKind::Group,
      ItemChapter("Groups", {"Group", "What it does", "What acts on it"}, {17, 33, 50}));
}

ReportChapter InputChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter =
      ItemChapter("Inputs", {"Input", "Type", "Active", "What it does"}, {17, 13, 9, 61});
  for (int input = 0; input < InstalledPoints(project); ++input) {
    const Item item{ItemKind::Input, input};
    if (!uses.DoesAnything(item) && OwnName(project, item).isEmpty()) continue;
    const QString active = InputActive(project, input);
    chapter.Rows.push_back(
        {{ItemText(project, item),
          InputTypeAndTime(project, item, project.Panel.InputTimedOnTime(input)),
          active.isEmpty() ? QStringLiteral("always") : active, uses.WhatItDoes(item)}});
  }
  return chapter;
}

ReportChapter DeviceChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter =
      ItemChapter("Bus Devices", {"Input", "Type", "What it does"}, {20, 16, 64});
  for (int number = 1; number <= DeviceCount; ++number) {
    const FennlinkRecord& device = project.Devices(number);
    const FennlinkDeviceType& type = FennlinkDevice(device.DeviceType);
    if (type.InputCount == 0) continue;
    const std::size_t heading = chapter.Rows.size();
    chapter.Rows.push_back({{ItemText(project, {ItemKind::Device, number}) + QStringLiteral(", ") +
                             ToUnicode(type.ListText)},
                            true});
    for (int part = 0; part < type.InputCount; ++part) {
      const Item item{ItemKind::DeviceInput, number, part};
      const QString does = JoinLines({uses.WhatItDoes(item), StaticPilot(device, part)});
      if (does.isEmpty()) continue;
      const auto level = [&](DeviceInputArray FennlinkRecord::*member) {
        return WordsOf(project, {&FactsOf(member), nullptr, {number, part, 0}});
      };
      const QString kind = device.DeviceType == DeviceTypePhotocell
                               ? QStringLiteral("off at %1, on at %2")
                                     .arg(level(&FennlinkRecord::DeviceOffLevel),
                                          level(&FennlinkRecord::DeviceOnLevel))
                               : InputTypeAndTime(project, item, device.DeviceTimedOnTime(part));
      chapter.Rows.push_back({{ItemText(project, item), kind, does}});
    }
    if (chapter.Rows.size() == heading + 1) {
      chapter.Rows.push_back({{ItemText(project, {ItemKind::Device, number}), QString(),
                               QStringLiteral("none of its inputs does anything")}});
    }
  }
  return chapter;
}

ReportChapter TimerChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter =
      ItemChapter("Timers", {"Timer", "When", "What it does", "What acts on it"}, {17, 35, 30, 18});
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const QString does = uses.WhatItDoes(item);
    const QString acts = uses.WhatActsOnIt(item);
    if (does.isEmpty() && acts.isEmpty()) continue;
    chapter.Rows.push_back({{ItemText(project, item), TimerRuns(project, timer), does, acts}});
  }
  return chapter;
}

ReportChapter PresetChapter(const Project& project, const ReportUses& uses) {
  return HolderChapter(
      project, uses, ItemKind::Preset,
      ItemChapter("Presets", {"Preset", "What it does", "What acts on it"}, {17, 57, 26}));
}

ReportChapter SweepChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{QStringLiteral("Off Hours Sweep"), {"Interval", "What it does"}, {21, 79}};
  const QString does = uses.WhatItDoes({});
  if (does.isEmpty()) return chapter;
  chapter.Rows.push_back(
      {{WordText(OffHoursSweepIntervals, project.Panel.OffHoursSweepInterval), does}});
  return chapter;
}

ReportChapter OpenCloseChapter(const Project& project) {
  std::vector<DocumentTable> tables;
  DocumentText text(&tables);
  DocOpenCloseTimesSchedule(text, project);
  ReportChapter chapter{
      QStringLiteral("Open And Close Times"), {"Day", "Open", "Close"}, {52, 24, 24}};
  chapter.Halved = true;
  for (const DocumentTable& table : tables) {
    QString first;
    for (const auto& row : table.Rows) {
      QStringList times = {ToUnicode(row[1].Text), ToUnicode(row[2].Text)};
      if (times[0] == times[1]) times = {QStringLiteral("closed"), QString()};
      const QString day = ToUnicode(row[0].Text);
      if (row[1].Type != DocumentCell::Kind::Time) {
        first.clear();
        continue;
      }
      // Days in a row with the same times are one.
      if (!first.isEmpty() && chapter.Rows.back().Cells.mid(1) == times) {
        chapter.Rows.back().Cells[0] = first + QStringLiteral(" to ") + day;
        continue;
      }
      first = day;
      chapter.Rows.push_back({QStringList{day} + times});
    }
  }
  return chapter;
}
