#include "document/rules/report/report_writer.h"

#include <QDir>
#include <QLibrary>
#include <QLocale>

#include "document/rules/text/doc_file.h"
#include "panel/fixed_array.h"
#include "panel/replace_file.h"
#include "panel/stopwatch.h"

namespace {

/// Runs `make` for the bytes of a file and puts them there.
template <typename Make>
void WriteReportFile(const QString& fileName, Make make) {
  QByteArray bytes;
  try {
    bytes = make();
  } catch (const RunTimeFailure& damaged) {
    throw RunTimeFailure(
        QStringLiteral("Cannot write the report \"%1\": %2.")
            .arg(QDir::toNativeSeparators(fileName), QString::fromUtf8(damaged.what()))
            .toStdString());
  }
  ReplaceFile(fileName, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
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

void WriteReportPdf(const Project& project, const QString& source, const QString& fileName,
                    Paper paper, const ReportProgress& progress) {
  WriteReportFile(fileName, [&] {
    return LoadReportWriter()->Pdf(BuildReport(project, source, Now()), paper, progress);
  });
}

void WriteReportWorkbook(const Project& project, const QString& fileName) {
  WriteReportFile(fileName, [&] { return LoadReportWriter()->Workbook(BuildSheets(project)); });
}
