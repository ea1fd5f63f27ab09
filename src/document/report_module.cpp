#include <QBuffer>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>

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
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
      QPdfWriter pdf(&buffer);
      pdf.setTitle(report.PanelName);
      SetUpPages(pdf, paper);
      PaintReport(report, pdf, progress);
    }
    return buffer.data();
  }

  QByteArray Workbook(const std::vector<DocumentTable>& sheets) override {
    return WorkbookOf(sheets);
  }

  void Preview(const PanelReport& report, QWidget* window) override {
    QPrinter printer(QPrinter::HighResolution);
    SetUpPages(printer, UsualPaper());
    printer.setDocName(report.PanelName);
    QPrintPreviewDialog dialog(&printer, window);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* pages) { PaintReport(report, *pages, {}); });
    dialog.exec();
  }
};

}  // namespace

extern "C" Q_DECL_EXPORT ReportWriter* MakeReportWriter() {
  return new QtReportWriter;
}
