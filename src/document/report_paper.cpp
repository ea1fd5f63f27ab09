#include "document/report_paper.h"

#include <QFontMetricsF>
#include <algorithm>

ReportPaper::ReportPaper(QPagedPaintDevice& device) : device_(device) {
  constexpr int linesOfFoot = 2;
  line_ = LineHeight(Font());
  width_ = device.width();
  bottom_ = device.height() - linesOfFoot * line_;
}

QFont ReportPaper::Font(int points, bool bold) const {
  QFont font;
  font.setPointSize(points);
  font.setBold(bold);
  // No two letters are drawn as one, which a search would not find.
  font.setStyleStrategy(QFont::PreferNoShaping);
  return font;
}

double ReportPaper::LineHeight(const QFont& font) const {
  return QFontMetricsF(font, &device_).lineSpacing();
}

void ReportPaper::NewPage() {
  pages_.emplace_back();
  Y = 0;
}

void ReportPaper::AddText(const QFont& font, double x, double y, double width, const QString& text,
                          Qt::Alignment side) {
  const QRectF room(x, y, width, LineHeight(font));
  const QString shown = QFontMetricsF(font, &device_).elidedText(text, Qt::ElideRight, width);
  Add([=](QPainter& painter) {
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(room, static_cast<int>(side), shown);
  });
}

std::unique_ptr<QTextLayout> ReportPaper::Wrapped(const QFont& font, double width,
                                                  const QString& text) const {
  auto layout = std::make_unique<QTextLayout>(QString(text).replace(u'\n', QChar::LineSeparator),
                                              font, &device_);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout->setTextOption(option);
  layout->beginLayout();
  for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
    line.setLineWidth(width);
  }
  layout->endLayout();
  return layout;
}

double ReportPaper::WrappedHeight(const QFont& font, double width, const QString& text) const {
  return Wrapped(font, width, text)->lineCount() * LineHeight(font);
}

double ReportPaper::AddWrapped(const QFont& font, double x, double y, double width,
                               const QString& text) {
  const std::shared_ptr<const QTextLayout> layout = Wrapped(font, width, text);
  const double step = LineHeight(font);
  Add([layout, x, y, step](QPainter& painter) {
    painter.setPen(Qt::black);
    for (int line = 0; line < layout->lineCount(); ++line) {
      layout->lineAt(line).draw(&painter, {x, y + line * step});
    }
  });
  return layout->lineCount() * step;
}

void ReportPaper::AddLine(const QLineF& line) {
  Add([line, pen = ThinPen(*this)](QPainter& painter) {
    painter.setPen(pen);
    painter.drawLine(line);
  });
}

void ReportPaper::Say(const QFont& font, const QString& text) {
  Y += std::max(AddWrapped(font, 0, Y, width_, text), LineHeight(font));
}

void ReportPaper::Paint(const std::function<void(QPainter& painter, int page)>& onEach) {
  QPainter painter(&device_);
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    if (page > 0) device_.newPage();
    for (const Draw& draw : pages_[page]) draw(painter);
    onEach(painter, static_cast<int>(page) + 1);
    pages_[page].clear();
  }
}

QPen ThinPen(const ReportPaper& paper) {
  return {Qt::gray, paper.Millimetres(0.1)};
}
