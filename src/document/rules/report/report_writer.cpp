#include "document/rules/report/report_writer.h"

#include <QDir>
#include <QLibrary>
#include <QLocale>

#include "document/rules/text/doc_file.h"
#include "panel/fixed_array.h"

namespace {

/// What `make` gives for a file.
template <typename Make>
std::string BytesFor(const QString& fileName, Make make) {
  try {
    return make().toStdString();
  } catch (const RunTimeFailure& damaged) {
    throw RunTimeFailure(
        QStringLiteral("Cannot write the report \"%1\": %2.")
            .arg(QDir::toNativeSeparators(fileName), QString::fromUtf8(damaged.what()))
            .toStdString());
  }
}

}  // namespace

Paper UsualPaper() {
  return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? Paper::Letter
                                                                            : Paper::A4;
}

std::unique_ptr<ReportWriter> LoadReportWriter() {
  QLibrary module(QStringLiteral("tamberloom3_report"));
  const auto make = reinterpret_cast<ReportWriter* (*)()>(module.resolve("MakeReportWriter"));
  if (!make) {
    throw RunTimeFailure(QStringLiteral("The program's part for reports cannot be loaded. Install "
                                        "the program again.\n%1")
                             .arg(module.errorString())
                             .toStdString());
  }
  return std::unique_ptr<ReportWriter>(make());
}

std::string ReportPdf(const Project& project, const ReportFacts& facts, const QString& fileName,
                      Paper paper, const ReportProgress& progress) {
  return BytesFor(fileName, [&] {
    return LoadReportWriter()->Pdf(BuildReport(project, facts), paper, progress);
  });
}

std::string ReportWorkbook(const Project& project, const QDateTime& date, const QString& fileName) {
  return BytesFor(fileName,
                  [&] { return LoadReportWriter()->Workbook(BuildSheets(project), date); });
}
