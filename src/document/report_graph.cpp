#include "document/report_graph.h"

#include <algorithm>
#include <span>

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

double RoomOf(const ReportPaper& paper) {
  return paper.Width() / GraphsOfRow - paper.Millimetres(RoomBetween);
}

double HeightOf(const QString& text, const ReportPaper& paper) {
  return text.isEmpty() ? 0 : paper.WrappedHeight(paper.Font(SmallPoints), RoomOf(paper), text);
}

using GraphRow = std::span<const ReportGraph>;

/// The graphs that stand side by side.
std::vector<GraphRow> RowsOf(const std::vector<ReportGraph>& graphs) {
  std::vector<GraphRow> rows;
  for (GraphRow left = graphs; !left.empty(); left = left.subspan(rows.back().size())) {
    rows.push_back(left.first(std::min(left.size(), GraphsOfRow)));
  }
  return rows;
}

/// Of the titles above the frames of a row, with the gap below them.
double HeightAbove(const GraphRow& row, const ReportPaper& paper) {
  double title = 0;
  for (const ReportGraph& graph : row) title = std::max(title, HeightOf(graph.Title, paper));
  return title + paper.Line() / 2;
}

double HeightOfRow(const GraphRow& row, const ReportPaper& paper) {
  double below = 0;
  for (const ReportGraph& graph : row) {
    below = std::max(below, LinesOfAxis(graph) * paper.Line() + HeightOf(graph.Words, paper));
  }
  return HeightAbove(row, paper) + paper.Millimetres(GraphHeight) + below;
}

/// A graph with its axes, its title above and its words below it.
class GraphLayout {
 public:
  GraphLayout(const ReportGraph& graph, ReportPaper& paper, double left, double above)
      : graph_(graph),
        paper_(paper),
        small_(paper.Font(SmallPoints)),
        smallLine_(paper.LineHeight(small_)),
        left_(left),
        frame_(left + paper.Millimetres(RoomForUp), paper.Y + above,
               RoomOf(paper) - paper.Millimetres(RoomForUp), paper.Millimetres(GraphHeight)) {}

  void LayOut() {
    const double room = RoomOf(paper_);
    paper_.AddWrapped(small_, left_, paper_.Y, room, graph_.Title);
    AddAreas();
    AddAxes();
    AddCurve();
    paper_.AddWrapped(small_, left_, frame_.bottom() + LinesOfAxis(graph_) * smallLine_, room,
                      graph_.Words);
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
  QRectF frame_;
};

}  // namespace

double HeightOfGraphs(const std::vector<ReportGraph>& graphs, const ReportPaper& paper) {
  double height = 0;
  for (const GraphRow& row : RowsOf(graphs)) height += paper.Line() + HeightOfRow(row, paper);
  return height;
}

void LayOutGraphs(const std::vector<ReportGraph>& graphs, ReportPaper& paper,
                  const std::function<void()>& onNewPage) {
  for (const GraphRow& row : RowsOf(graphs)) {
    const double height = HeightOfRow(row, paper);
    if (height > paper.Left()) {
      paper.NewPage();
      onNewPage();
    }
    if (!paper.IsFresh()) paper.Y += paper.Line();
    double left = 0;
    for (const ReportGraph& graph : row) {
      GraphLayout(graph, paper, left, HeightAbove(row, paper)).LayOut();
      left += paper.Width() / GraphsOfRow;
    }
    paper.Y += height;
  }
}
