#include "document/rules/report/report.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include "document/rules/report/report_chapters.h"
#include "panel/code_page.h"
#include "panel/fixed_array.h"
#include "panel/packing.h"
#include "panel/program_texts.h"

namespace {

/// The beginning of the SHA-256 of a file, in fours: enough to tell files apart, and to be read out
/// on the telephone. Empty where the file cannot be read, which whoever reads the project tells.
QString SumOfFile(const QString& name) {
  constexpr qsizetype shownDigits = 16;
  constexpr qsizetype group = 4;
  QFile file(name);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) return {};
  QString sum = QString::fromLatin1(hash.result().toHex().first(shownDigits));
  for (qsizetype at = shownDigits - group; at > 0; at -= group) sum.insert(at, u' ');
  return sum;
}

QString PanelTitle(const Project& project) {
  const QString name = ToUnicode(project.Panel.PanelName).trimmed();
  return name.isEmpty() ? QString::fromLatin1(NamelessPanel) : name;
}

QString CheckInWords(const CheckedFindings& checked) {
  QStringList counts;
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    counts << CountOf(severity, checked.Open);
  }
  if (!checked.Accepted.empty()) {
    counts << QStringLiteral("%1 accepted").arg(checked.Accepted.size());
  }
  return counts.join(QStringLiteral(", "));
}

}  // namespace

ReportFacts FactsOfFile(const QString& file, const QDateTime& date, bool changed) {
  ReportFacts facts{.Date = date};
  if (file.isEmpty()) return facts;
  facts.FileName = QFileInfo(file).fileName();
  if (changed) {
    facts.FileName += QStringLiteral(", with changes that are not saved");
  } else {
    facts.Sum = SumOfFile(file);
  }
  return facts;
}

PanelReport BuildReport(const Project& project, const ReportFacts& facts) {
  const CheckedFindings checked =
      PartAccepted(CheckProject(project, {.FileEndsEarly = facts.FileEndsEarly}), facts.Accepted);
  const ReportUses uses(project);
  ReportChapter year;
  if (facts.Date.isValid()) year = YearChapter(project, uses, facts.Date.date().year());
  PanelReport report;
  report.PanelName = PanelTitle(project);
  report.FileName = facts.FileName.isEmpty() ? QStringLiteral("not saved yet") : facts.FileName;
  report.Date = facts.Date;
  report.Cover = {
      {QStringLiteral("Client"), facts.Cover.Client},
      {QStringLiteral("Site"), facts.Cover.Site},
      {QStringLiteral("Engineer"), facts.Cover.Engineer},
      {QStringLiteral("Date"), facts.Date.toString(TimeFormat)},
      {QStringLiteral("File"), report.FileName},
      {QStringLiteral("Check"), CheckInWords(checked)},
  };
  if (!facts.Sum.isEmpty()) {
    report.Cover.insert(report.Cover.end() - 1,
                        {QStringLiteral("SHA-256"), facts.Sum + QStringLiteral(" ...")});
  }
  for (const ReportChapter& chapter :
       {CheckChapter(checked.Open), AcceptedChapter(checked.Accepted), PanelChapter(project),
        RelayChapter(project, uses), GroupChapter(project, uses), InputChapter(project, uses),
        DeviceChapter(project, uses), TimerChapter(project, uses), PresetChapter(project, uses),
        SweepChapter(project, uses), OpenCloseChapter(project), year, DimmerChapter(project, uses),
        DoorChapter(project), CommissioningChapter(project, uses, facts.Tested)}) {
    if (!chapter.Rows.empty()) report.Chapters.push_back(chapter);
  }
  return report;
}
