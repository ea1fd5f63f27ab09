#pragma once

#include <QBuffer>
#include <QPaintEngine>
#include <QPdfWriter>
#include <vector>

/// A text as it stands on a page, in the device's dots from the upper left of its margins.
struct PrintedText {
  double Left;
  double Base;
  double Right;
  QString Text;
};

/// Takes the texts of what is painted, page by page.
class PageRecorder : public QPdfWriter {
 public:
  explicit PageRecorder(QPageSize::PageSizeId paper) : QPdfWriter(&nowhere_) {
    nowhere_.open(QIODevice::WriteOnly);
    setPageSize(QPageSize(paper));
    setPageMargins({15, 15, 15, 15}, QPageLayout::Millimeter);
  }

  bool newPage() override {
    engine_.Pages.emplace_back();
    return true;
  }

  const std::vector<std::vector<PrintedText>>& Pages() const { return engine_.Pages; }
  double Millimetres(double length) const { return length * logicalDpiX() / 25.4; }

 protected:
  QPaintEngine* paintEngine() const override { return &engine_; }

 private:
  class Engine : public QPaintEngine {
   public:
    Engine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    Type type() const override { return User; }
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
      const QString text = item.text().replace(QChar::Nbsp, QLatin1Char(' ')).trimmed();
      if (text.isEmpty()) return;
      Pages.back().push_back({at.x(), at.y(), at.x() + item.width(), text});
    }

    std::vector<std::vector<PrintedText>> Pages{1};
  };

  QBuffer nowhere_;
  mutable Engine engine_;
};
