#include "document/rules/report/report.h"

#include <QFileInfo>
#include <algorithm>
#include <map>

#include "dimmer/rules/response_curve.h"
#include "document/rules/check/check.h"
#include "document/rules/text/doc_file.h"
#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/format.h"
#include "panel/input_actions.h"
#include "panel/program_state.h"
#include "panel/time_values.h"
#include "panel/words.h"

namespace {

QString WordText(WordTable table, int code) {
  return ToUnicode(Word(table, code));
}

/// "turns RELAY 01, RELAY 02 on and off" of "turns on and off".
QString WordsAround(const QString& words, const QString& used) {
  const QString verb = words.section(u' ', 0, 0);
  const bool parted =
      QStringList{"turns", "switches", "sweeps", "holds"}.contains(verb) && verb != words;
  return parted ? verb + u' ' + used + words.mid(verb.size()) : words + u' ' + used;
}

/// Items under words, in the order in which the words came.
class WordLists {
 public:
  void Add(const QString& words, const Item& item) { List(words).push_back(item); }

  /// Takes out what the other has under the same words. Both are put in order.
  void Remove(WordLists& other) {
    Sort();
    other.Sort();
    for (auto& [words, items] : lists_) {
      std::vector<Item> left;
      const std::vector<Item>& gone = other.List(words);
      std::set_difference(items.begin(), items.end(), gone.begin(), gone.end(),
                          std::back_inserter(left));
      items = std::move(left);
    }
  }

  /// One line for all items of the same words.
  template <typename Line>
  QStringList Lines(const Project& project, Line line) {
    Sort();
    QStringList lines;
    for (const auto& [words, items] : lists_) {
      if (items.empty()) continue;
      QStringList names;
      // "RELAY 03" is not to be parted at the end of a line.
      for (const Item& item : items) names << ItemText(project, item).replace(u' ', QChar::Nbsp);
      lines << line(words, names.join(QStringLiteral(", ")));
    }
    return lines;
  }

 private:
  std::vector<Item>& List(const QString& words) {
    const auto known = std::find_if(lists_.begin(), lists_.end(),
                                    [&](const auto& list) { return list.first == words; });
    return known != lists_.end() ? known->second
                                 : lists_.emplace_back(words, std::vector<Item>()).second;
  }

  void Sort() {
    for (auto& [words, items] : lists_) {
      std::sort(items.begin(), items.end());
      items.erase(std::unique(items.begin(), items.end()), items.end());
    }
  }

  std::vector<std::pair<QString, std::vector<Item>>> lists_;
};

/// The uses of the project from both of their ends.
class ReportUses {
 public:
  explicit ReportUses(const Project& project) : project_(project), uses_(UsesOfProject(project)) {
    for (const Use& use : uses_) {
      byUser_[use.User].push_back(&use);
      byUsed_[use.Used].push_back(&use);
    }
  }

  /// Whether it does more than to show a pilot.
  bool DoesAnything(const Item& user) const {
    const auto& uses = Of(byUser_, user);
    return !std::all_of(uses.begin(), uses.end(), IsPilot);
  }

  QString WhatItDoes(const Item& user) const {
    WordLists lists;
    for (const Use* use : Of(byUser_, user)) lists.Add(use->Words, use->Used);
    return lists.Lines(project_, WordsAround).join(u'\n');
  }

  /// Direct, and through the groups and presets that hold it unless the same is done directly.
  QString WhatActsOnIt(const Item& used) const {
    WordLists direct;
    WordLists byGroup;
    WordLists byPreset;
    for (const Use* held : Of(byUsed_, used)) {
      if (!IsPilot(held)) direct.Add(held->Words, held->User);
      const bool group = held->User.Kind == ItemKind::Group;
      if (!group && held->User.Kind != ItemKind::Preset) continue;
      for (const Use* use : Of(byUsed_, held->User)) {
        if (use->Effect == EffectFollows) continue;
        (group ? byGroup : byPreset).Add(group ? use->Words : held->Words, use->User);
      }
    }
    byGroup.Remove(direct);
    byPreset.Remove(direct);
    const auto lines = [this](WordLists& lists, const QString& how) {
      return lists.Lines(project_, [&](const QString& words, const QString& users) {
        return users + QStringLiteral(": ") + WordsAround(words, QStringLiteral("it")) + how;
      });
    };
    return (lines(direct, {}) + lines(byGroup, QStringLiteral(" through a group")) +
            lines(byPreset, QStringLiteral(" through a preset")))
        .join(u'\n');
  }

 private:
  static bool IsPilot(const Use* use) {
    const ItemKind user = use->User.Kind;
    return use->Effect == EffectFollows &&
           (user == ItemKind::Input || user == ItemKind::DeviceInput);
  }

  using UseIndex = std::map<Item, std::vector<const Use*>>;

  static const std::vector<const Use*>& Of(const UseIndex& index, const Item& item) {
    static const std::vector<const Use*> none;
    const auto found = index.find(item);
    return found == index.end() ? none : found->second;
  }

  const Project& project_;
  std::vector<Use> uses_;
  UseIndex byUser_;
  UseIndex byUsed_;
};

ReportChapter PanelChapter(const Project& project) {
  std::vector<DocumentTable> tables;
  DocumentText text(&tables);
  DocPanelSettings(text, project);
  ReportChapter chapter{"Panel", {"Setting", "Value"}, {45, 55}, {}, {}, false};
  for (const auto& row : tables[0].Rows) {
    chapter.Rows.push_back({ToUnicode(row[0].Text).trimmed(), ToUnicode(row[1].Text)});
  }
  return chapter;
}

ReportChapter RelayChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{
      "Relays", {"Relay", "Power on", "Type", "What acts on it"}, {24, 11, 11, 54}, {}, {}, false};
  for (int relay = 0; relay < InstalledPoints(project); ++relay) {
    const Item item{ItemKind::Relay, relay};
    const QString acts = uses.WhatActsOnIt(item);
    if (acts.isEmpty() && OwnName(project, item).isEmpty()) continue;
    chapter.Rows.push_back({ItemText(project, item),
                            WordText(RelayPowerOnTypes, project.Panel.RelayPowerOnType(relay)),
                            WordText(RelayTimerTypes, project.Panel.RelayTimerType(relay)), acts});
  }
  return chapter;
}

ReportChapter GroupChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{
      "Groups", {"Group", "What it does", "What acts on it"}, {24, 38, 38}, {}, {}, false};
  for (int group = 0; group < ItemCount; ++group) {
    const Item item{ItemKind::Group, group};
    const QString does = uses.WhatItDoes(item);
    const QString acts = uses.WhatActsOnIt(item);
    if (does.isEmpty() && acts.isEmpty()) continue;
    chapter.Rows.push_back({ItemText(project, item), does, acts});
  }
  return chapter;
}

/// A timed-on input with its minutes.
QString InputTypeAndTime(const Project& project, const Item& input, int minutes) {
  const QString word = InputTypeWord(project, input);
  return word == WordText(InputTypes, static_cast<int>(InputKind::TimedOn))
             ? QStringLiteral("%1 %2 min").arg(word).arg(minutes)
             : word;
}

ReportChapter InputChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{
      "Inputs", {"Input", "Type", "Active", "What it does"}, {24, 17, 13, 46}, {}, {}, false};
  const auto& panel = project.Panel;
  for (int input = 0; input < InstalledPoints(project); ++input) {
    const Item item{ItemKind::Input, input};
    if (!uses.DoesAnything(item) && OwnName(project, item).isEmpty()) continue;
    const int from = panel.InputEnableTime(input);
    const int to = panel.InputDisableTime(input);
    const QString active = from == to
                               ? QStringLiteral("always")
                               : ToUnicode(QuarterHourText(from) + " to " + QuarterHourText(to));
    chapter.Rows.push_back({ItemText(project, item),
                            InputTypeAndTime(project, item, panel.InputTimedOnTime(input)), active,
                            uses.WhatItDoes(item)});
  }
  return chapter;
}

ReportChapter DeviceChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{"Bus Devices", {"Input", "Type", "What it does"}, {28, 20, 52}, {}, {},
                        false};
  for (int number = 1; number <= DeviceCount; ++number) {
    const FennlinkRecord& device = project.Devices(number);
    const FennlinkDeviceType& type = FennlinkDevice(device.DeviceType);
    if (type.InputCount == 0) continue;
    chapter.Rows.push_back(
        {ItemText(project, {ItemKind::Device, number}), ToUnicode(type.ListText), {}});
    for (int part = 0; part < type.InputCount; ++part) {
      const Item item{ItemKind::DeviceInput, number, part};
      QString kind = InputTypeAndTime(project, item, device.DeviceTimedOnTime(part));
      if (device.DeviceType == DeviceTypePhotocell) {
        kind = QStringLiteral("off at %1, on at %2")
                   .arg(device.DeviceOffLevel(part))
                   .arg(device.DeviceOnLevel(part));
      }
      const QString does = uses.WhatItDoes(item);
      if (!does.isEmpty()) chapter.Rows.push_back({ItemText(project, item), kind, does});
    }
  }
  return chapter;
}

ReportChapter TimerChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{"Timers", {"Timer", "When", "What it does"}, {24, 28, 48}, {}, {}, false};
  const auto& panel = project.Panel;
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const QString does = uses.WhatItDoes(item);
    if (does.isEmpty()) continue;
    const std::string when =
        TimerInWords({panel.TimerTimeType(timer), panel.TimerTime(timer)}, panel.TimerDays(timer),
                     panel.TimerHolidayMonth(timer), panel.TimerHolidayDate(timer));
    chapter.Rows.push_back({ItemText(project, item), ToUnicode(when), does});
  }
  return chapter;
}

ReportChapter PresetChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{
      "Presets", {"Preset", "What it does", "What acts on it"}, {24, 42, 34}, {}, {}, false};
  for (int preset = 0; preset < ItemCount; ++preset) {
    const Item item{ItemKind::Preset, preset};
    const QString does = uses.WhatItDoes(item);
    const QString acts = uses.WhatActsOnIt(item);
    if (does.isEmpty() && acts.isEmpty()) continue;
    chapter.Rows.push_back({ItemText(project, item), does, acts});
  }
  return chapter;
}

ReportChapter SweepChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{"Off Hours Sweep", {"Interval", "What it does"}, {24, 76}, {}, {}, false};
  const QString does = uses.WhatItDoes({});
  if (does.isEmpty()) return chapter;
  chapter.Rows.push_back(
      {WordText(OffHoursSweepIntervals, project.Panel.OffHoursSweepInterval), does});
  return chapter;
}

ReportChapter OpenCloseChapter(const Project& project) {
  std::vector<DocumentTable> tables;
  DocumentText text(&tables);
  DocOpenCloseTimesSchedule(text, project);
  ReportChapter chapter{
      "Open And Close Times", {"Day", "Open", "Close"}, {40, 30, 30}, {}, {}, false};
  for (const DocumentTable& table : tables) {
    for (const auto& row : table.Rows) {
      if (row[1].Type != DocumentCell::Kind::Time) continue;
      chapter.Rows.push_back(
          {ToUnicode(row[0].Text), ToUnicode(row[1].Text), ToUnicode(row[2].Text)});
    }
  }
  return chapter;
}

ReportCurve CurveOf(const DimmerOutput& output, const QString& name) {
  ResponseCurve curve;
  curve.Place(output);
  const bool twoPoint = output(dim::TrackMode) == Track2Point;
  curve.DrawLines(twoPoint);
  ReportCurve drawn;
  drawn.Title = name;
  const auto at = [](double x, double y) {
    return QPointF(x / ResponseCurve::Width, y / ResponseCurve::Height);
  };
  for (const auto& line : curve.shpLine.elements) {
    if (line.Visible) drawn.Lines.emplace_back(at(line.X1, line.Y1), at(line.X2, line.Y2));
  }
  QStringList points;
  for (const Int16 grip : {ResponseCurve::GripA, ResponseCurve::GripB, ResponseCurve::GripC}) {
    const auto& place = curve.shpGrip(grip);
    if (!place.Visible) continue;
    drawn.Grips.push_back(
        at(place.Left + ResponseCurve::GripCentre, place.Top + ResponseCurve::GripCentre));
    const auto told = curve.ReadoutOf(grip);
    points << ToUnicode(told.FootCandle + " " + told.Voltage);
  }
  drawn.Points = points.join(QStringLiteral(", "));
  return drawn;
}

QString DimmerSettings(const DimmerOutput& output) {
  const Int16 fade = output(dim::FadeRate);
  QStringList lines = {QStringLiteral("Power on %1 %").arg(output(dim::PowerOnLevel))};
  const auto level = [&](Int16 fromPhotocell, const DimmerField& percent) {
    return fromPhotocell != 0 ? QStringLiteral("the photocell's level")
                              : QStringLiteral("%1 %").arg(output(percent));
  };
  lines << QStringLiteral("From %1 to %2")
               .arg(level(output(dim::MinFromPhotocell), dim::MinLevel),
                    level(output(dim::MaxFromPhotocell), dim::MaxLevel));
  if (fade >= 0 && fade < FadeRateCount) {
    lines << QStringLiteral("Fades in %1 s").arg(FadeSeconds(fade));
  }
  if (output(dim::DMXChannel) != 0) lines << QStringLiteral("DMX %1").arg(output(dim::DMXChannel));
  const Int16 mode = output(dim::TrackMode);
  if (mode != TrackDisabled) lines << QStringLiteral("Tracking ") + WordText(TrackModes, mode);
  return lines.join(u'\n');
}

ReportChapter DimmerChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{
      "Dimmers", {"Output", "Settings", "Controls", "What it does"}, {20, 26, 28, 26}, {}, {},
      false};
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (!DimmerEnabled(project.Dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(project.Dimmers, dev, out);
      const Item item{ItemKind::DimmerOutput, dev, out};
      QStringList lines;
      for (int slot = 0; slot < ControlSlotCount; ++slot) {
        if (output(dim::ControlType, slot) == ControlUnused) continue;
        lines << ToUnicode(ControlSlotSummary(output, slot)).trimmed();
      }
      chapter.Rows.push_back({ItemText(project, item), DimmerSettings(output), lines.join(u'\n'),
                              uses.WhatItDoes(item)});
      const Int16 mode = output(dim::TrackMode);
      if (mode == Track2Point || mode == Track3Point) {
        chapter.Curves.push_back(CurveOf(output, ItemText(project, item)));
      }
    }
  }
  return chapter;
}

/// For the inside of the panel's door: voltage and circuit are for the reader's pen.
ReportChapter DoorChapter(const Project& project) {
  ReportChapter chapter{
      "Panel Door", {"Relay", "Name", "Voltage", "Circuit"}, {10, 44, 23, 23}, {}, {}, true};
  for (int relay = 0; relay < InstalledPoints(project); ++relay) {
    chapter.Rows.push_back(
        {TwoDigits(relay + 1), OwnName(project, {ItemKind::Relay, relay}), {}, {}});
  }
  return chapter;
}

}  // namespace

PanelReport BuildReport(const Project& project, const QString& fileName, const QDateTime& date) {
  PanelReport report;
  report.PanelName = ToUnicode(project.Panel.PanelName).trimmed();
  report.FileName = QFileInfo(fileName).fileName();
  report.Date = date.toString(TimeFormat);
  const std::vector<Finding> findings = CheckProject(project);
  QStringList counts;
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    counts << CountOf(severity, findings);
  }
  report.Findings = counts.join(QStringLiteral(", "));
  const ReportUses uses(project);
  for (const ReportChapter& chapter :
       {PanelChapter(project), RelayChapter(project, uses), GroupChapter(project, uses),
        InputChapter(project, uses), DeviceChapter(project, uses), TimerChapter(project, uses),
        PresetChapter(project, uses), SweepChapter(project, uses), OpenCloseChapter(project),
        DimmerChapter(project, uses), DoorChapter(project)}) {
    if (!chapter.Rows.empty()) report.Chapters.push_back(chapter);
  }
  return report;
}
