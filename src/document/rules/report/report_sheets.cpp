#include "document/rules/report/report_chapters.h"
#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/format.h"

// The findings of the check, and the sheets that are filled in by hand.

ReportChapter CheckChapter(const std::vector<Finding>& open) {
  ReportChapter chapter{QStringLiteral("Check"), {"Kind", "Finding"}, {12, 88}};
  for (const Finding& finding : open) {
    chapter.Rows.push_back({{SeverityWord(finding.Level), finding.Sentence}});
  }
  return chapter;
}

ReportChapter AcceptedChapter(const std::vector<AcceptedFinding>& accepted) {
  ReportChapter chapter{QStringLiteral("Accepted Findings"),
                        {"Kind", "Finding", "Why it stays", "Accepted"},
                        {12, 42, 34, 12}};
  for (const auto& [finding, as] : accepted) {
    chapter.Rows.push_back({{SeverityWord(finding.Level), finding.Sentence, as.Reason,
                             as.Date.toString(Qt::ISODate)}});
  }
  return chapter;
}

ReportChapter DoorChapter(const Project& project) {
  /// More of them stand side by side in two halves, so that they fit one page.
  constexpr int mostInOneColumn = 24;
  const int points = InstalledPoints(project);
  const bool halved = points > mostInOneColumn;
  const int rows = halved ? (points + 1) / 2 : points;
  ReportChapter chapter{QStringLiteral("Panel Door"), {}, {}, {}, {}, true};
  for (int half = 0; half < (halved ? 2 : 1); ++half) {
    chapter.Columns << "Relay"
                    << "Name"
                    << "Voltage"
                    << "Circuit";
    for (const int width : {8, 20, 10, 12}) chapter.Widths.push_back(halved ? width : 2 * width);
  }
  chapter.Rows.resize(static_cast<std::size_t>(rows));
  for (int relay = 0; relay < (halved ? 2 * rows : rows); ++relay) {
    QStringList& cells = chapter.Rows[static_cast<std::size_t>(relay % rows)].Cells;
    const bool there = relay < points;
    cells << (there ? TwoDigits(relay + 1) : QString())
          << (there ? OwnName(project, {ItemKind::Relay, relay}) : QString()) << QString()
          << QString();
  }
  return chapter;
}

namespace {

/// A station is tested when each of its inputs is; by whom and when the last was. Until then it
/// tells how many are.
void TellButtons(ReportRow& row, int device, int inputs, std::span<const TestedItem> tested) {
  const TestedItem* latest = nullptr;
  int done = 0;
  for (int input = 0; input < inputs; ++input) {
    const TestedItem* one = FindTested(tested, ItemCode({ItemKind::DeviceInput, device, input}));
    if (!one) continue;
    ++done;
    if (!latest || latest->At < one->At) latest = one;
  }
  if (done == 0) return;
  if (done == inputs) {
    row.Cells[2] = ReportTick;
    row.Cells[3] = latest->By;
    row.Cells[4] = latest->At.date().toString(Qt::ISODate);
  } else {
    row.Cells[1] += QStringLiteral(", %1 of %2 tested").arg(done).arg(inputs);
  }
}

}  // namespace

ReportChapter CommissioningChapter(const Project& project, const ReportUses& uses,
                                   std::span<const TestedItem> tested) {
  ReportChapter chapter{QStringLiteral("Commissioning"),
                        {"Item", "What it is", "Tested", "By", "On"},
                        {30, 24, 9, 20, 17},
                        {},
                        {},
                        true};
  const auto add = [&](const Item& item, const QString& what) {
    const TestedItem* done = FindTested(tested, ItemCode(item));
    chapter.Rows.push_back(
        {{ItemText(project, item), what, done ? ReportTick : ReportBox, done ? done->By : QString(),
          done ? done->At.date().toString(Qt::ISODate) : QString()}});
  };
  const int points = InstalledPoints(project);
  for (int relay = 0; relay < points; ++relay) {
    add({ItemKind::Relay, relay}, QStringLiteral("relay"));
  }
  for (int input = 0; input < points; ++input) {
    const Item item{ItemKind::Input, input};
    if (!uses.DoesAnything(item) && OwnName(project, item).isEmpty()) continue;
    add(item, InputTypeWord(project, item));
  }
  for (int number = 1; number <= DeviceCount; ++number) {
    const FennlinkDeviceType& type = FennlinkDevice(project.Devices(number).DeviceType);
    if (type.InputCount == 0) continue;
    add({ItemKind::Device, number}, ToUnicode(type.ListText));
    TellButtons(chapter.Rows.back(), number, type.InputCount, tested);
  }
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    for (int out = 0; out < DimmerOutputCount; ++out) {
      if (!DimmerEnabled(project.Dimmers, dev) &&
          !FollowsRelays(DimmerOutput(project.Dimmers, dev, out))) {
        continue;
      }
      add({ItemKind::DimmerOutput, dev, out}, QStringLiteral("dimmer output"));
    }
  }
  return chapter;
}
