#pragma once

#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>
#include <functional>
#include <memory>
#include <vector>

constexpr int TextPoints = 8;
constexpr int SmallPoints = 7;
constexpr int TitlePoints = 12;

/// Pages of a device. They are laid out first, and painted when their number is known.
class ReportPaper {
 public:
  using Draw = std::function<void(QPainter& painter)>;

  explicit ReportPaper(QPagedPaintDevice& device);

  double Millimetres(double length) const { return length * device_.logicalDpiX() / 25.4; }
  QFont Font(int points = TextPoints, bool bold = false) const;
  double LineHeight(const QFont& font) const;
  /// Of the text.
  double Line() const { return line_; }
  double Width() const { return width_; }
  /// What is left of the page, above its foot.
  double Left() const { return bottom_ - Y; }
  /// Of a page without its foot.
  double Full() const { return bottom_; }
  bool IsFresh() const { return Y == 0; }
  double Height() const { return device_.height(); }
  QPagedPaintDevice& Device() { return device_; }

  /// The page that is laid out, from 1.
  int Page() const { return static_cast<int>(pages_.size()); }
  void NewPage();

  /// Adds to the page.
  void Add(Draw draw) { pages_.back().push_back(std::move(draw)); }
  /// A text of one line, cut where it is too long for the width that it has.
  void AddText(const QFont& font, double x, double y, double width, const QString& text,
               Qt::Alignment side = Qt::AlignLeft);
  /// A text in lines as wide as that at the most.
  std::unique_ptr<QTextLayout> Wrapped(const QFont& font, double width, const QString& text) const;
  /// How high a text is that is wrapped into a width.
  double WrappedHeight(const QFont& font, double width, const QString& text) const;
  /// A text that is wrapped where it is too long for the width that it has; its height.
  double AddWrapped(const QFont& font, double x, double y, double width, const QString& text);
  void AddLine(const QLineF& line);
  /// A text at the place reached, wrapped into the page's width. The place moves below it.
  void Say(const QFont& font, const QString& text);

  /// Paints all pages; `onEach` is called on each behind what it holds.
  void Paint(const std::function<void(QPainter& painter, int page)>& onEach);

  double Y = 0;  ///< The place reached on the page.

 private:
  QPagedPaintDevice& device_;
  double line_;
  double width_;
  double bottom_;
  std::vector<std::vector<Draw>> pages_{1};
};

/// The pen of rules and frames.
QPen ThinPen(const ReportPaper& paper);
