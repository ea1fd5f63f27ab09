#include "simulator/window/front_view.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "simulator/window/lamp_button.h"

namespace simulator {

namespace {

constexpr int RowLength = PanelFront::RowLength;
constexpr int DisplayRows = PanelFront::Rows;
constexpr int LedCount = PanelFront::Leds;

struct Key {
  const char* Caption;
  int Bits;
  int Row;
  int Column;
};
constexpr std::array Keys{Key{"Previous", PanelFront::Previous, 0, 0},
                          Key{"Next", PanelFront::Next, 0, 1},
                          Key{"Up", PanelFront::Up, 1, 0},
                          Key{"Down", PanelFront::Down, 1, 1},
                          Key{"Exit", PanelFront::Exit, 2, 0},
                          Key{"Enter", PanelFront::Enter, 2, 1},
                          Key{"Firmware", PanelFront::Chord, 3, 0}};

}  // namespace

/// A row of the display, which a screen reader reads by itself. Up and Down walk the rows.
class GlassRow : public QLabel {
 public:
  explicit GlassRow(int number) : Number(number), Row(RowLength, u' ') {
    setFocusPolicy(number == 1 ? Qt::StrongFocus : Qt::ClickFocus);
    setObjectName(QStringLiteral("display%1").arg(number));
    Name();
  }
  void Show(const QString& text) {
    if (text == Row) return;
    Row = text;
    Name();
    update();
  }
  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(QLatin1Char('0')) * (RowLength + 2),
            fontMetrics().height()};
  }

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::FontChange) updateGeometry();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    auto* next =
        parentWidget()->findChild<QWidget*>(QStringLiteral("display%1").arg(Number + step));
    if (step != 0 && next) return next->setFocus();
    QLabel::keyPressEvent(event);
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (hasFocus()) painter.fillRect(rect(), QColor(176, 202, 120));
    painter.setPen(QColor(24, 36, 16));
    const int letter = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int i = 0; i < Row.size(); ++i) {
      painter.drawText(QRect(letter * (i + 1) - letter / 2, 0, letter * 2, height()),
                       Qt::AlignCenter, Row.mid(i, 1));
    }
  }

 private:
  void Name() {
    const QString words = Row.trimmed();
    setAccessibleName(QStringLiteral("Display row %1: %2")
                          .arg(Number)
                          .arg(words.isEmpty() ? QStringLiteral("empty") : words));
  }

  int Number;
  QString Row;
};

/// The lit glass, in its own colours in any surroundings.
class FrontView::Glass : public QWidget {
 public:
  Glass() {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Display"));
    auto* column = new QVBoxLayout(this);
    const int half = fontMetrics().height() / 2;
    column->setContentsMargins(3, half, 3, half);
    column->setSpacing(0);
    for (int row = 0; row < DisplayRows; ++row) {
      Rows[static_cast<std::size_t>(row)] = new GlassRow(row + 1);
      column->addWidget(Rows[static_cast<std::size_t>(row)]);
    }
  }
  void Show(const std::string& text) {
    if (text == Text) return;
    Text = text;
    for (int row = 0; row < DisplayRows; ++row) Rows[static_cast<std::size_t>(row)]->Show(Row(row));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::black);
    painter.setBrush(QColor(198, 219, 150));
    painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 4, 4);
  }

 private:
  /// With signs for the panel's own glyphs.
  QString Row(int row) const {
    static constexpr std::array<char16_t, 4> glyphs{u' ', u'▶', u'●', u'○'};
    QString text;
    for (const char c : Text.substr(static_cast<std::size_t>(row) * RowLength, RowLength)) {
      const auto code = static_cast<unsigned char>(c);
      text += code < glyphs.size() ? QChar(glyphs[code]) : QChar(code);
    }
    return text;
  }

  std::string Text;
  std::array<GlassRow*, DisplayRows> Rows{};
};

class FrontView::Leds : public QLabel {
 public:
  Leds() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("LEDs"));
  }
  void Show(int bits) {
    if (bits == Bits) return;
    Bits = bits;
    QStringList lit;
    for (int i = 0; i < LedCount; ++i) {
      if ((Bits >> i & 1) != 0) lit << QString::number(i + 1);
    }
    setAccessibleDescription(lit.isEmpty() ? QStringLiteral("none lit")
                                           : lit.join(QLatin1String(", ")) + QLatin1String(" lit"));
    update();
  }
  QSize sizeHint() const override {
    const int line = fontMetrics().height();
    return {line * LedCount * 3 / 2, line * 2};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const int line = fontMetrics().height();
    for (int i = 0; i < LedCount; ++i) {
      const QRect place(i * line * 3 / 2 + line / 4, 0, line, line);
      PaintLamp(painter, place.adjusted(1, 1, -1, -1), palette(), (Bits >> i & 1) != 0);
      painter.drawText(place.translated(0, line), Qt::AlignCenter, QString::number(i + 1));
    }
  }

 private:
  int Bits = -1;
};

FrontView::FrontView(Panel& panel) : PanelView(panel), Display(new Glass), Lights(new Leds) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(Display, 0, 0, 3, 1);
  for (const Key& key : Keys) {
    auto* button = new QPushButton(QString::fromLatin1(key.Caption));
    button->setObjectName(QStringLiteral("key%1").arg(button->text()));
    button->setMinimumWidth(NarrowWidth(*button));
    connect(button, &QPushButton::clicked, this, [this, bits = key.Bits] {
      Source.Front.Press(bits);
      ShowStates();
    });
    grid->addWidget(button, key.Row, key.Column + 1);
  }
  grid->addWidget(Lights, 3, 0, Qt::AlignCenter);
}

void FrontView::ShowStates() {
  Display->Show(Source.Front.Display());
  Lights->Show(Source.Front.LitLeds());
}

}  // namespace simulator
