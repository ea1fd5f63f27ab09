#include "dimmer/rules/response_curve.h"
#include "document/rules/report/report_chapters.h"
#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/setting.h"
#include "panel/slot_words.h"

namespace {

/// "80 %", which is not parted at the end of a line.
QString InPercent(int percent) {
  return QString::number(percent) + QChar::Nbsp + u'%';
}

ReportGraph CurveOf(const DimmerOutput& output, const QString& name) {
  ResponseCurve curve;
  curve.Place(output);
  const bool twoPoint = output(dim::TrackMode) == Track2Point;
  curve.DrawLines(twoPoint);
  const auto at = [](double x, double y) {
    return QPointF(x / ResponseCurve::Width, y / ResponseCurve::Height);
  };
  ReportGraph graph;
  graph.Title = name;
  graph.AcrossName = QStringLiteral("light, fc");
  for (const auto& line : curve.shpLine.elements) {
    if (line.Visible) graph.Lines.emplace_back(at(line.X1, line.Y1), at(line.X2, line.Y2));
  }
  QStringList points;
  const std::pair<Int16, char> grips[] = {
      {ResponseCurve::GripA, 'A'}, {ResponseCurve::GripB, 'B'}, {ResponseCurve::GripC, 'C'}};
  for (const auto& [grip, letter] : grips) {
    const auto& place = curve.shpGrip(grip);
    if (!place.Visible) continue;
    graph.Grips.push_back(
        at(place.Left + ResponseCurve::GripCentre, place.Top + ResponseCurve::GripCentre));
    const auto told = curve.ReadoutOf(grip);
    points << letter + ToUnicode(": " + told.FootCandle + ", " + told.Voltage)
                           .replace(u' ', QChar::Nbsp);
  }
  graph.Words = points.join(QStringLiteral("; "));
  constexpr double unitsPerCount = 15;
  for (const int code : {0, 60, 120, 180, 240}) {
    const double x = (code * unitsPerCount + ResponseCurve::GripCentre) / ResponseCurve::Width;
    graph.Across.push_back({x, QString::number(CodeToFootCandles(static_cast<Int16>(code)))});
  }
  for (const int percent : {0, 50, 100}) {
    const double top = ResponseCurve::MaxTop * (100 - percent) / 100.0 + ResponseCurve::GripCentre;
    graph.Up.push_back({top / ResponseCurve::Height, InPercent(percent)});
  }
  return graph;
}

QStringList DimmerSettings(const Project& project, const Item& item, const DimmerOutput& output) {
  const Int16 fade = output(dim::FadeRate);
  QStringList lines = {QStringLiteral("Power on ") + InPercent(output(dim::PowerOnLevel))};
  const auto level = [&](const DimmerField& fromPhotocell, const DimmerField& percent) {
    return output(fromPhotocell) != 0 ? QStringLiteral("the photocell's level")
                                      : InPercent(output(percent));
  };
  lines << QStringLiteral("From %1 to %2")
               .arg(level(dim::MinFromPhotocell, dim::MinLevel),
                    level(dim::MaxFromPhotocell, dim::MaxLevel));
  if (fade >= 0 && fade < FadeRateCount) {
    lines << QStringLiteral("Fades in %1 s").arg(FadeSeconds(fade));
  }
  if (output(dim::DMXChannel) != 0) lines << QStringLiteral("DMX %1").arg(output(dim::DMXChannel));
  const Int16 mode = output(dim::TrackMode);
  if (mode == TrackSetpoint) {
    lines << QStringLiteral("Tracking Setpoint, target ") +
                 WordsOf(project, {nullptr, &dim::Target, {item.Number, item.Part, 0}});
  } else if (mode != TrackDisabled) {
    lines << QStringLiteral("Tracking ") + WordText(TrackModes, mode);
  }
  return lines;
}

/// What it follows and tracks; what controls it stands in its slots.
QStringList DimmerFollows(const DimmerOutput& output, const QString& does) {
  QStringList lines;
  int relays = 0;
  for (int relay = 0; relay < ItemCount; ++relay) {
    relays += output(dim::RelayInclude, relay) != 0 ? 1 : 0;
  }
  for (const QString& line : does.split(u'\n', Qt::SkipEmptyParts)) {
    if (line.startsWith(QLatin1StringView("is controlled by"))) continue;
    lines << line;
    if (!line.startsWith(QLatin1StringView("follows"))) continue;
    lines << QStringLiteral("with %1 on %2, off %3")
                 .arg(QLatin1StringView(relays == 1 ? "it" : "them"),
                      InPercent(output(dim::RelayOnLevel)), InPercent(output(dim::RelayOffLevel)));
  }
  return lines;
}

/// A slot with a code that no list holds is told by its numbers.
QStringList SlotLines(const Project& project, const DimmerOutput& output) {
  QStringList lines;
  for (int slot = 0; slot < ControlSlotCount; ++slot) {
    if (output(dim::ControlType, slot) == ControlUnused) continue;
    const QString words = SlotInWords(project, ControlSlotOf(output, slot));
    lines << (words.isEmpty() ? ToUnicode(ControlSlotSummary(output, slot)).trimmed() : words);
  }
  return lines;
}

}  // namespace

ReportChapter DimmerChapter(const Project& project, const ReportUses& uses) {
  ReportChapter chapter{QStringLiteral("Dimmers"),
                        {"Output", "Settings", "Controls", "What it follows"},
                        {19, 20, 38, 23}};
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    const bool enabled = DimmerEnabled(project.Dimmers, dev);
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(project.Dimmers, dev, out);
      if (!enabled && !FollowsRelays(output)) continue;
      const Item item{ItemKind::DimmerOutput, dev, out};
      const QStringList settings = enabled ? DimmerSettings(project, item, output)
                                           : QStringList(QStringLiteral("follows relays alone"));
      chapter.Rows.push_back({{ItemText(project, item), settings.join(u'\n'),
                               enabled ? SlotLines(project, output).join(u'\n') : QString(),
                               DimmerFollows(output, uses.WhatItDoes(item)).join(u'\n')}});
      if (!enabled) continue;
      const Int16 mode = output(dim::TrackMode);
      if (mode == Track2Point || mode == Track3Point) {
        chapter.Graphs.push_back(CurveOf(output, ItemText(project, item)));
      }
    }
  }
  return chapter;
}
