#include <QBuffer>
#include <QGuiApplication>
#include <QHashSeed>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScopeGuard>

#include "document/report_pages.h"
#include "document/report_workbook.h"

namespace {

void SetUpPages(QPagedPaintDevice& device, Paper paper) {
  constexpr double margin = 15;
  device.setPageSize(QPageSize(paper == Paper::Letter ? QPageSize::Letter : QPageSize::A4));
  device.setPageMargins({margin, margin, margin, margin}, QPageLayout::Millimeter);
}

class QtReportWriter : public ReportWriter {
 public:
  QByteArray Pdf(const PanelReport& report, Paper paper, const ReportProgress& progress) override {
    // Fonts need an application, which a script has not got.
    std::unique_ptr<QGuiApplication> application;
    static int argumentCount = 1;
    static char program[] = "tamberloom3";
    static char* arguments[] = {program, nullptr};
    if (QCoreApplication::instance() == nullptr) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
      application = std::make_unique<QGuiApplication>(argumentCount, arguments);
    }
    // Qt numbers the fonts in the order of a hash, which is another one in each run.
    QHashSeed::setDeterministicGlobalSeed();
    const auto seed = qScopeGuard([] { QHashSeed::resetRandomGlobalSeed(); });
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    std::vector<PdfBookmark> bookmarks;
    {
      QPdfWriter pdf(&buffer);
      pdf.setTitle(report.PanelName);
      SetUpPages(pdf, paper);
      bookmarks = PaintReport(report, pdf, progress);
    }
    return WithBookmarks(buffer.data(), bookmarks, report.Date);
  }

  void Paint(const PanelReport& report, QPagedPaintDevice& device) override {
    PaintReport(report, device, {});
  }

  QByteArray Workbook(const std::vector<DocumentTable>& sheets, const QDateTime& date) override {
    return WorkbookOf(sheets, date);
  }

  void Preview(const PanelReport& report, QWidget* window) override {
    QPrinter printer(QPrinter::HighResolution);
    SetUpPages(printer, UsualPaper());
    printer.setDocName(report.PanelName);
    QPrintPreviewDialog dialog(&printer, window);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* pages) { Paint(report, *pages); });
    dialog.exec();
  }
};

}  // namespace

extern "C" Q_DECL_EXPORT ReportWriter* MakeReportWriter() {
  return new QtReportWriter;
}
