#include "document/report_graph.h"

#include <QFontMetricsF>
#include <algorithm>

namespace {

constexpr std::size_t GraphsOfRow = 4;
constexpr double GraphHeight = 24;  ///< Of the frame, in millimetres.
constexpr double RoomForUp = 10;    ///< Left of the frame, for what stands on its axis.
constexpr double RoomBetween = 4;
const QColor AreaFill(200, 200, 200);

/// Lines between the frame and the words, for what stands on the axis and its name.
double LinesOfAxis(const ReportGraph& graph) {
  return graph.AcrossName.isEmpty() ? 1.6 : 2.5;
}

double HeightOfWords(const ReportGraph& graph, ReportPaper& paper, double width) {
  const QRectF room(0, 0, width - paper.Millimetres(RoomBetween), paper.Height());
  const QFontMetricsF metrics(paper.Font(SmallPoints), &paper.Device());
  return metrics.boundingRect(room, Qt::AlignLeft | Qt::TextWordWrap, graph.Words).height();
}

/// A graph with its axes, its title above and its words below it.
class GraphLayout {
 public:
  GraphLayout(const ReportGraph& graph, ReportPaper& paper, double left, double width)
      : graph_(graph),
        paper_(paper),
        small_(paper.Font(SmallPoints)),
        smallLine_(paper.LineHeight(small_)),
        left_(left),
        width_(width),
        frame_(left + paper.Millimetres(RoomForUp), paper.Y + paper.Line() * 1.5,
               width - paper.Millimetres(RoomForUp + RoomBetween), paper.Millimetres(GraphHeight)) {
  }

  void LayOut() {
    // The words below tell what the title has no room for.
    const double room = width_ - paper_.Millimetres(RoomBetween);
    paper_.AddText(
        small_, left_, paper_.Y, room,
        QFontMetricsF(small_, &paper_.Device()).elidedText(graph_.Title, Qt::ElideRight, room));
    AddAreas();
    AddAxes();
    AddCurve();
    const QRectF below(left_, frame_.bottom() + LinesOfAxis(graph_) * smallLine_, room,
                       HeightOfWords(graph_, paper_, width_));
    paper_.Add([below, font = small_, words = graph_.Words](QPainter& painter) {
      painter.setFont(font);
      painter.setPen(Qt::black);
      painter.drawText(below, Qt::AlignLeft | Qt::TextWordWrap, words);
    });
  }

 private:
  QPointF At(const QPointF& point) const {
    return {frame_.left() + point.x() * frame_.width(), frame_.top() + point.y() * frame_.height()};
  }

  void AddAreas() {
    std::vector<QRectF> areas;
    for (const QRectF& area : graph_.Areas) {
      areas.emplace_back(At(area.topLeft()), At(area.bottomRight()));
    }
    paper_.Add([areas](QPainter& painter) {
      for (const QRectF& area : areas) painter.fillRect(area, AreaFill);
    });
  }

  void AddAxes() {
    paper_.Add([frame = frame_, pen = ThinPen(paper_)](QPainter& painter) {
      painter.setPen(pen);
      painter.drawRect(frame);
    });
    for (const ReportMark& mark : graph_.Across) {
      const double x = At({mark.At, 0}).x();
      paper_.AddLine({x, frame_.top(), x, frame_.bottom()});
      AddMark(x, frame_.bottom() + smallLine_ * 0.5, mark.Text, Qt::AlignHCenter);
    }
    for (const ReportMark& mark : graph_.Up) {
      const double y = At({0, mark.At}).y();
      paper_.AddLine({frame_.left(), y, frame_.right(), y});
      AddMark(frame_.left() - paper_.Millimetres(1), y - smallLine_ / 2, mark.Text, Qt::AlignRight);
    }
    paper_.AddText(small_, frame_.left(), frame_.bottom() + 1.4 * smallLine_, frame_.width(),
                   graph_.AcrossName, Qt::AlignHCenter);
  }

  /// A text around x, or ending there.
  void AddMark(double x, double y, const QString& text, Qt::Alignment side) {
    const double room = paper_.Millimetres(RoomForUp);
    const double left = side == Qt::AlignHCenter ? x - room / 2 : x - room;
    paper_.AddText(small_, left, y, room, text, side);
  }

  void AddCurve() {
    std::vector<QLineF> lines;
    for (const QLineF& line : graph_.Lines) lines.emplace_back(At(line.p1()), At(line.p2()));
    const double grip = paper_.Millimetres(1);
    std::vector<QRectF> grips;
    for (const QPointF& point : graph_.Grips) {
      grips.emplace_back(At(point) - QPointF(grip, grip) / 2, QSizeF(grip, grip));
    }
    paper_.Add([lines, grips, pen = QPen(Qt::black, paper_.Millimetres(0.4))](QPainter& painter) {
      painter.setPen(pen);
      for (const QLineF& line : lines) painter.drawLine(line);
      for (const QRectF& square : grips) painter.fillRect(square, Qt::black);
    });
  }

  const ReportGraph& graph_;
  ReportPaper& paper_;
  QFont small_;
  double smallLine_;
  double left_;
  double width_;
  QRectF frame_;
};

}  // namespace

void LayOutGraphs(const std::vector<ReportGraph>& graphs, ReportPaper& paper,
                  const std::function<void()>& onNewPage) {
  const double step = paper.Width() / GraphsOfRow;
  for (std::size_t first = 0; first < graphs.size(); first += GraphsOfRow) {
    const std::size_t end = std::min(first + GraphsOfRow, graphs.size());
    double below = 0;
    for (std::size_t i = first; i < end; ++i) {
      below = std::max(
          below, LinesOfAxis(graphs[i]) * paper.Line() + HeightOfWords(graphs[i], paper, step));
    }
    const double height = 1.5 * paper.Line() + paper.Millimetres(GraphHeight) + below;
    if (height > paper.Left()) {
      paper.NewPage();
      onNewPage();
    }
    if (!paper.IsFresh()) paper.Y += paper.Line();
    for (std::size_t i = first; i < end; ++i) {
      GraphLayout(graphs[i], paper, static_cast<double>(i - first) * step, step).LayOut();
    }
    paper.Y += height;
  }
}
