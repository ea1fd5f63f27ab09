#include "document/report_pages.h"

#include <QPageLayout>
#include <algorithm>

#include "document/report_graph.h"
#include "document/report_table.h"
#include "panel/program_texts.h"

namespace {

constexpr int CoverPoints = 24;
constexpr int BannerPoints = 18;

/// With the second half of the rows beside the first where the chapter is halved.
ReportChapter AsPrinted(const ReportChapter& chapter) {
  if (!chapter.Halved) return chapter;
  ReportChapter printed = chapter;
  printed.Columns += chapter.Columns;
  printed.Widths.insert(printed.Widths.end(), chapter.Widths.begin(), chapter.Widths.end());
  for (int& width : printed.Widths) width /= 2;
  const std::size_t half = (chapter.Rows.size() + 1) / 2;
  printed.Rows.resize(half);
  for (std::size_t row = 0; row < half; ++row) {
    const bool both = row + half < chapter.Rows.size();
    printed.Rows[row].Cells += both ? chapter.Rows[row + half].Cells : QStringList();
  }
  return printed;
}

class ReportLayout {
 public:
  ReportLayout(const PanelReport& report, QPagedPaintDevice& device, const ReportProgress& progress)
      : report_(report), paper_(device), progress_(progress) {
    for (const ReportChapter& chapter : report.Chapters) {
      chapters_.push_back(AsPrinted(chapter));
      rows_ += chapters_.back().Rows.size();
    }
  }

  std::vector<PdfBookmark> Paint() {
    LayOutCover();
    paper_.NewPage();
    LayOutContents();
    for (const ReportChapter& chapter : chapters_) LayOutChapter(chapter);
    paper_.Paint([this](QPainter& painter, int page) {
      if (page == contentsPage_) PaintContents(painter);
      if (page > 1) PaintFoot(painter, page);
    });
    return places_;
  }

 private:
  void LayOutCover() {
    paper_.Y = paper_.Height() / 5;
    paper_.Say(paper_.Font(CoverPoints, true), report_.PanelName);
    paper_.Say(paper_.Font(TitlePoints), ProgramTitle + QStringLiteral(" panel report"));
    paper_.Y += 3 * paper_.Line();
    const double label = paper_.Millimetres(30);
    for (const auto& [name, value] : report_.Cover) {
      const QFont font = paper_.Font(TextPoints + 3);
      const double height = paper_.LineHeight(font);
      paper_.AddText(font, 0, paper_.Y, label, name);
      const double told = paper_.AddWrapped(font, label, paper_.Y, paper_.Width() - label, value);
      if (value.isEmpty()) {
        paper_.AddLine({label, paper_.Y + height, paper_.Width() * 0.75, paper_.Y + height});
      }
      paper_.Y += std::max(told, height) + 0.6 * height;
    }
    LayOutSigning();
  }

  /// Two lines to sign, side by side at the foot of the cover.
  void LayOutSigning() {
    const double y = paper_.Height() * 0.85;
    const double width = paper_.Width() * 0.45;
    double x = 0;
    for (const char* who : {"Engineer, date", "For the client, date"}) {
      paper_.AddLine({x, y, x + width, y});
      paper_.AddText(paper_.Font(), x, y + paper_.Millimetres(1), width, QLatin1StringView(who));
      x = paper_.Width() - width;
    }
  }

  /// Its page numbers are known once all chapters are laid out.
  void LayOutContents() {
    contentsPage_ = paper_.Page();
    paper_.Say(paper_.Font(TitlePoints, true), QStringLiteral("Contents"));
    contentsTop_ = paper_.Y;
    paper_.Y += static_cast<double>(report_.Chapters.size()) * ContentsStep();
  }

  double ContentsStep() const { return 1.3 * paper_.Line(); }

  void PaintContents(QPainter& painter) {
    painter.setFont(paper_.Font());
    double y = contentsTop_;
    for (const PdfBookmark& place : places_) {
      const QRectF row(0, y, paper_.Width(), ContentsStep());
      painter.setPen(Qt::black);
      painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, place.Title);
      painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, QString::number(place.Page));
      painter.setPen(ThinPen(paper_));
      painter.drawLine(QLineF(row.bottomLeft(), row.bottomRight()));
      y += ContentsStep();
    }
  }

  void PaintFoot(QPainter& painter, int page) {
    const QRectF foot(0, paper_.Height() - paper_.Line(), paper_.Width(), paper_.Line());
    painter.setFont(paper_.Font());
    painter.setPen(Qt::black);
    painter.drawText(foot, Qt::AlignLeft, report_.FileName);
    painter.drawText(foot, Qt::AlignHCenter, report_.Date.toString(TimeFormat));
    painter.drawText(foot, Qt::AlignRight,
                     QStringLiteral("Page %1 of %2").arg(page).arg(paper_.Page()));
    painter.setPen(ThinPen(paper_));
    painter.drawLine(QLineF(foot.topLeft(), foot.topRight()));
  }

  void LayOutChapter(const ReportChapter& chapter) {
    ReportTable table(chapter, paper_);
    const QFont title = paper_.Font(TitlePoints, true);
    const double gap = paper_.IsFresh() ? 0 : 2 * paper_.Line();
    const double above = 2 * paper_.LineHeight(title);
    const bool turns = gap + above + table.BeginHeight() > paper_.Left() ||
                       PartsFromGraphs(chapter, gap, above + table.Height());
    if (!paper_.IsFresh() && (chapter.ForPen || turns)) {
      paper_.NewPage();
    } else {
      paper_.Y += gap;
    }
    AddPlace(chapter.Title);
    const auto head = [&] {
      if (chapter.ForPen) paper_.Say(paper_.Font(BannerPoints, true), report_.PanelName);
      paper_.Say(title, chapter.Title);
      if (!chapter.Note.isEmpty()) paper_.Say(paper_.Font(), chapter.Note);
    };
    head();
    table.LayOut(
        [&] {
          if (chapter.ForPen) head();
        },
        [this] {
          ++done_;
          if (progress_) progress_(static_cast<int>(100 * done_ / rows_));
        });
    LayOutGraphs(chapter.Graphs, paper_,
                 [&] { paper_.Say(title, chapter.Title + QStringLiteral(", continued")); });
  }

  /// Whether the table would end the page and its graphs stand alone on the next one, which has
  /// room for both.
  bool PartsFromGraphs(const ReportChapter& chapter, double gap, double table) const {
    if (chapter.Graphs.empty()) return false;
    const double graphs = HeightOfGraphs(chapter.Graphs, paper_);
    return gap + table <= paper_.Left() && gap + table + graphs > paper_.Left() &&
           table + graphs <= paper_.Full();
  }

  void AddPlace(const QString& title) {
    const QPageLayout page = paper_.Device().pageLayout();
    const double top = page.fullRectPoints().height() - page.marginsPoints().top() -
                       paper_.Y * 72 / paper_.Device().logicalDpiY();
    places_.push_back({title, paper_.Page(), top});
  }

  const PanelReport& report_;
  std::vector<ReportChapter> chapters_;  ///< As they are printed.
  ReportPaper paper_;
  const ReportProgress& progress_;
  std::vector<PdfBookmark> places_;
  int contentsPage_ = 0;
  double contentsTop_ = 0;
  std::size_t rows_ = 0;
  std::size_t done_ = 0;
};

}  // namespace

std::vector<PdfBookmark> PaintReport(const PanelReport& report, QPagedPaintDevice& device,
                                     const ReportProgress& progress) {
  return ReportLayout(report, device, progress).Paint();
}
