#include "document/report_table.h"

#include <algorithm>

namespace {

constexpr int LongestWholeRow = 6;  ///< Lines; a longer row may be parted.
constexpr int LeastPart = 3;        ///< Lines of a parted row on a page.
constexpr double PenHeight = 8.5;   ///< Of a row that is filled in, in millimetres.
constexpr double BoxSide = 3.5;     ///< In millimetres.
const QColor HeaderFill(230, 230, 230);

}  // namespace

/// A row's cells, each broken into lines.
struct ReportTable::Row {
  std::vector<std::unique_ptr<QTextLayout>> Cells;
  int Lines = 1;
  int Box = -1;  ///< The column of a box to tick.
  bool Ticked = false;
  bool Across = false;
};

ReportTable::ReportTable(const ReportChapter& chapter, ReportPaper& paper)
    : chapter_(chapter), paper_(paper), padding_(paper.Millimetres(chapter.Small ? 0.3 : 0.5)) {
  const int points = chapter.Small ? SmallPoints : TextPoints;
  const QFont bold = paper.Font(points, true);
  const QFont plain = paper.Font(points);
  line_ = paper.LineHeight(plain);
  header_ = LaidRow(chapter.Columns, bold, false);
  for (const ReportRow& row : chapter.Rows) {
    rows_.push_back(LaidRow(row.Cells, row.Heading ? bold : plain, row.Heading));
  }
}

ReportTable::~ReportTable() = default;

double ReportTable::ColumnWidth(std::size_t column) const {
  return paper_.Width() * chapter_.Widths[column] / 100;
}

std::shared_ptr<ReportTable::Row> ReportTable::LaidRow(const QStringList& cells, const QFont& font,
                                                       bool across) const {
  auto row = std::make_shared<Row>();
  row->Across = across;
  for (qsizetype i = 0; i < cells.size(); ++i) {
    QString text = cells[i];
    if (text == ReportBox || text == ReportTick) {
      row->Box = static_cast<int>(i);
      row->Ticked = text == ReportTick;
      text.clear();
    }
    if (chapter_.RunOn && i > 0) {
      text.replace(QLatin1StringView("\nThrough "), QLatin1StringView("\nthrough "));
      text.replace(u'\n', QLatin1StringView("; "));
    }
    const double column = across ? paper_.Width() : ColumnWidth(static_cast<std::size_t>(i));
    auto layout = paper_.Wrapped(font, column - paper_.Millimetres(2), text);
    row->Lines = std::max(row->Lines, layout->lineCount());
    row->Cells.push_back(std::move(layout));
  }
  return row;
}

double ReportTable::HeightOf(const Row& row, int lines) const {
  const double height = lines * line_ + 2 * padding_;
  const bool forPen = chapter_.ForPen && &row != header_.get();
  return forPen ? std::max(height, paper_.Millimetres(PenHeight)) : height;
}

int ReportTable::LinesThatFit() const {
  return static_cast<int>((paper_.Left() - 2 * padding_) / line_);
}

/// What has to fit below the place reached, or the row begins on the next page. A heading takes the
/// row below it along.
double ReportTable::NeededFor(std::size_t row) const {
  const Row& laid = *rows_[row];
  const double height = HeightOf(laid, laid.Lines > LongestWholeRow ? LeastPart : laid.Lines);
  return chapter_.Rows[row].Heading && row + 1 < rows_.size() ? height + NeededFor(row + 1)
                                                              : height;
}

double ReportTable::BeginHeight() const {
  return HeightOf(*header_, header_->Lines) + NeededFor(0);
}

double ReportTable::Height() const {
  double height = HeightOf(*header_, header_->Lines);
  for (const auto& row : rows_) height += HeightOf(*row, row->Lines);
  return height;
}

void ReportTable::LayOut(const std::function<void()>& onNewPage,
                         const std::function<void()>& onRow) {
  const auto breakPage = [&] {
    paper_.NewPage();
    onNewPage();
    AddHeader();
  };
  AddHeader();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const std::shared_ptr<Row>& row = rows_[i];
    if (NeededFor(i) > paper_.Left()) breakPage();
    int laid = 0;
    while (HeightOf(*row, row->Lines - laid) > paper_.Left()) {
      // Not so many that the rest would stand as a line or two.
      const int most = row->Lines - laid - LeastPart;
      const int part = std::max(std::min(LinesThatFit(), most), 1);
      AddLines(row, laid, part);
      laid += part;
      breakPage();
    }
    AddLines(row, laid, row->Lines - laid);
    onRow();
  }
}

void ReportTable::AddHeader() {
  const QRectF room(0, paper_.Y, paper_.Width(), HeightOf(*header_, header_->Lines));
  paper_.Add([room](QPainter& painter) { painter.fillRect(room, HeaderFill); });
  AddLines(header_, 0, header_->Lines);
}

void ReportTable::AddLines(const std::shared_ptr<Row>& row, int from, int count) {
  const double top = paper_.Y;
  const double height = HeightOf(*row, count);
  const double first = top + (height - count * line_) / 2;
  double x = paper_.Millimetres(1);
  for (std::size_t i = 0; i < row->Cells.size(); ++i) {
    const QTextLayout& cell = *row->Cells[i];
    // The name stands in each part of a row.
    const int start = i == 0 ? 0 : from;
    const int end = std::min(start + count, cell.lineCount());
    if (start < end && !cell.text().isEmpty()) {
      paper_.Add([row, &cell, start, end, x, first, step = line_](QPainter& painter) {
        painter.setPen(Qt::black);
        for (int line = start; line < end; ++line) {
          cell.lineAt(line).draw(&painter, {x, first + (line - start) * step});
        }
      });
    }
    if (!row->Across) x += ColumnWidth(i);
  }
  if (row->Box >= 0) {
    double left = 0;
    for (int column = 0; column < row->Box; ++column) {
      left += ColumnWidth(static_cast<std::size_t>(column));
    }
    const double side = paper_.Millimetres(BoxSide);
    const QPointF at(left + (ColumnWidth(static_cast<std::size_t>(row->Box)) - side) / 2,
                     top + (height - side) / 2);
    paper_.Add([box = QRectF(at, QSizeF(side, side)), ticked = row->Ticked,
                pen = QPen(Qt::black, paper_.Millimetres(0.2))](QPainter& painter) {
      painter.setPen(pen);
      painter.drawRect(box);
      if (!ticked) return;
      painter.drawLine(box.topLeft(), box.bottomRight());
      painter.drawLine(box.topRight(), box.bottomLeft());
    });
  }
  paper_.Y += height;
  AddRules(top, paper_.Y, chapter_.ForPen && !row->Across);
}

/// The line below a row, and those between its columns.
void ReportTable::AddRules(double top, double bottom, bool columns) {
  paper_.AddLine({0, bottom, paper_.Width(), bottom});
  if (!columns) return;
  double x = 0;
  paper_.AddLine({0, top, 0, bottom});
  for (std::size_t i = 0; i < chapter_.Widths.size(); ++i) {
    x += ColumnWidth(i);
    paper_.AddLine({x, top, x, bottom});
  }
}
