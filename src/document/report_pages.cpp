#include "document/report_pages.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <memory>

namespace {

constexpr int TextPoints = 9;
constexpr int TitlePoints = 13;
constexpr int CoverPoints = 24;
constexpr int CurvesOfRow = 3;

/// One row laid out: the lines of its cells, of which some may be painted already.
struct LaidRow {
  std::vector<std::unique_ptr<QTextLayout>> Cells;
  int Lines = 1;
  int Painted = 0;
};

class ReportPainter {
 public:
  ReportPainter(const PanelReport& report, QPagedPaintDevice& device,
                const ReportProgress& progress)
      : report_(report), device_(device), progress_(progress), painter_(&device) {
    font_.setPointSize(TextPoints);
    line_ = Metrics(font_).lineSpacing();
    padding_ = Millimetres(0.5);
    width_ = device.width();
    bottom_ = device.height() - 2 * line_;
    for (const ReportChapter& chapter : report.Chapters) rows_ += chapter.Rows.size();
  }

  void Paint() {
    PaintCover();
    NewPage();
    for (const ReportChapter& chapter : report_.Chapters) PaintChapter(chapter);
  }

 private:
  double Millimetres(double length) const { return length * device_.logicalDpiX() / 25.4; }
  QFontMetricsF Metrics(const QFont& font) const { return QFontMetricsF(font, &device_); }
  QFont Bold(int points) const {
    QFont bold = font_;
    bold.setPointSize(points);
    bold.setBold(true);
    return bold;
  }

  /// A line of text at the place reached.
  void Say(const QFont& font, const QString& text) {
    const double height = Metrics(font).lineSpacing();
    painter_.setFont(font);
    painter_.drawText(QRectF(0, y_, width_, height), Qt::AlignLeft,
                      Metrics(font).elidedText(text, Qt::ElideRight, width_));
    y_ += height;
  }

  void PaintCover() {
    y_ = device_.height() / 4.0;
    Say(Bold(CoverPoints), report_.PanelName);
    Say(Bold(TitlePoints), QStringLiteral("Orv Tamberloom 3 panel report"));
    y_ += 2 * line_;
    Say(font_, QStringLiteral("File: ") + report_.FileName);
    Say(font_, QStringLiteral("Date: ") + report_.Date);
    Say(font_, QStringLiteral("The check finds ") + report_.Findings + u'.');
  }

  void NewPage() {
    device_.newPage();
    ++page_;
    const QRectF foot(0, device_.height() - line_, width_, line_);
    painter_.setFont(font_);
    painter_.drawText(foot, Qt::AlignLeft, report_.PanelName);
    painter_.drawText(foot, Qt::AlignRight, QStringLiteral("Page %1").arg(page_));
    y_ = 0;
  }

  void PaintChapter(const ReportChapter& chapter) {
    // A title stands above the first row, or above as much of it as makes sense.
    constexpr int titleLines = 6;
    const int firstLines = std::min(LayOut(chapter, chapter.Rows.front(), font_).Lines, 30);
    const bool fits = y_ + (titleLines + firstLines) * line_ < bottom_;
    if (y_ > 0 && (chapter.OwnPage || !fits)) NewPage();
    if (y_ > 0) y_ += 2 * line_;
    Say(Bold(TitlePoints), chapter.Title);
    PaintHeader(chapter);
    for (const QStringList& cells : chapter.Rows) {
      PaintRow(chapter, cells);
      ++done_;
      if (progress_) progress_(static_cast<int>(100 * done_ / rows_));
    }
    PaintCurves(chapter.Curves);
  }

  void PaintHeader(const ReportChapter& chapter) {
    LaidRow header = LayOut(chapter, chapter.Columns, Bold(TextPoints));
    painter_.fillRect(QRectF(0, y_, width_, header.Lines * line_ + 2 * padding_),
                      QColor(230, 230, 230));
    PaintLines(chapter, header, header.Lines);
  }

  /// A row is broken only when it is longer than a page.
  void PaintRow(const ReportChapter& chapter, const QStringList& cells) {
    LaidRow row = LayOut(chapter, cells, font_);
    if (LinesThatFit() < row.Lines) {
      NewPage();
      PaintHeader(chapter);
    }
    while (LinesThatFit() < row.Lines - row.Painted) {
      PaintLines(chapter, row, LinesThatFit());
      NewPage();
      PaintHeader(chapter);
    }
    PaintLines(chapter, row, row.Lines - row.Painted);
  }

  int LinesThatFit() const { return static_cast<int>((bottom_ - y_ - 2 * padding_) / line_); }

  double ColumnWidth(const ReportChapter& chapter, std::size_t column) const {
    return width_ * chapter.Widths[column] / 100;
  }

  LaidRow LayOut(const ReportChapter& chapter, const QStringList& cells, const QFont& font) const {
    LaidRow row;
    for (qsizetype i = 0; i < cells.size(); ++i) {
      QString text = cells[i];
      text.replace(u'\n', QChar::LineSeparator);
      auto layout = std::make_unique<QTextLayout>(text, font, &device_);
      QTextOption option;
      option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
      layout->setTextOption(option);
      layout->beginLayout();
      const double width = ColumnWidth(chapter, static_cast<std::size_t>(i)) - Millimetres(3);
      for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
      }
      layout->endLayout();
      row.Lines = std::max(row.Lines, layout->lineCount());
      row.Cells.push_back(std::move(layout));
    }
    return row;
  }

  void PaintLines(const ReportChapter& chapter, LaidRow& row, int count) {
    double x = Millimetres(1);
    for (std::size_t i = 0; i < row.Cells.size(); ++i) {
      const QTextLayout& cell = *row.Cells[i];
      const int end = std::min(row.Painted + count, cell.lineCount());
      for (int line = row.Painted; line < end; ++line) {
        cell.lineAt(line).draw(&painter_, {x, y_ + padding_ + (line - row.Painted) * line_});
      }
      x += ColumnWidth(chapter, i);
    }
    row.Painted += count;
    y_ += count * line_ + 2 * padding_;
    painter_.setPen(QPen(Qt::gray, Millimetres(0.1)));
    painter_.drawLine(QLineF(0, y_, width_, y_));
    painter_.setPen(Qt::black);
  }

  void PaintCurves(const std::vector<ReportCurve>& curves) {
    const double step = width_ / CurvesOfRow;
    const double height = Millimetres(40);
    for (std::size_t i = 0; i < curves.size(); ++i) {
      const auto column = static_cast<int>(i) % CurvesOfRow;
      if (column == 0 && i > 0) y_ += height + 3 * line_;
      if (column == 0 && y_ + height + 4 * line_ > bottom_) NewPage();
      if (column == 0) y_ += line_;
      PaintCurve(curves[i], QRectF(column * step, y_, step - Millimetres(4), height));
    }
    if (!curves.empty()) y_ += height + 3 * line_;
  }

  void PaintCurve(const ReportCurve& curve, const QRectF& frame) {
    painter_.setFont(font_);
    painter_.drawText(QRectF(frame.left(), frame.top(), frame.width(), line_), Qt::AlignLeft,
                      curve.Title);
    const QRectF graph = frame.translated(0, line_);
    painter_.setPen(QPen(Qt::gray, Millimetres(0.2)));
    painter_.drawRect(graph);
    const auto at = [&](const QPointF& point) {
      return QPointF(graph.left() + point.x() * graph.width(),
                     graph.top() + point.y() * graph.height());
    };
    painter_.setPen(QPen(Qt::black, Millimetres(0.4)));
    for (const QLineF& line : curve.Lines) painter_.drawLine(at(line.p1()), at(line.p2()));
    const double grip = Millimetres(1);
    for (const QPointF& point : curve.Grips) {
      painter_.fillRect(QRectF(at(point) - QPointF(grip, grip) / 2, QSizeF(grip, grip)), Qt::black);
    }
    painter_.drawText(QRectF(frame.left(), graph.bottom(), frame.width(), 2 * line_),
                      Qt::AlignLeft | Qt::TextWordWrap, curve.Points);
  }

  const PanelReport& report_;
  QPagedPaintDevice& device_;
  const ReportProgress& progress_;
  QPainter painter_;
  QFont font_;
  double line_ = 0;
  double padding_ = 0;
  double width_ = 0;
  double bottom_ = 0;  ///< Of the part above the page number.
  double y_ = 0;
  int page_ = 1;
  std::size_t rows_ = 0;
  std::size_t done_ = 0;
};

}  // namespace

void PaintReport(const PanelReport& report, QPagedPaintDevice& device,
                 const ReportProgress& progress) {
  ReportPainter(report, device, progress).Paint();
}
