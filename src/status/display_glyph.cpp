#include "status/display_glyph.h"

#include <QPainter>

#include "link/panel_display.h"

const std::array<GlyphRows, 8> DisplayGlyphs = {{
    // An arrow up.
    {0b00100, 0b01110, 0b11111, 0b00100, 0b00100, 0b00100, 0b00100, 0b00000},
    // A pointer to the right.
    {0b10000, 0b11000, 0b11100, 0b11110, 0b11100, 0b11000, 0b10000, 0b00000},
    // A lit lamp.
    {0b00000, 0b01110, 0b11111, 0b11111, 0b11111, 0b01110, 0b00000, 0b00000},
    // A dark lamp.
    {0b00000, 0b01110, 0b10001, 0b10001, 0b10001, 0b01110, 0b00000, 0b00000},
    // An arrow down.
    {0b00100, 0b00100, 0b00100, 0b00100, 0b11111, 0b01110, 0b00100, 0b00000},
    // A bell.
    {0b00100, 0b01110, 0b01110, 0b01110, 0b11111, 0b00000, 0b00100, 0b00000},
    // A clock.
    {0b01110, 0b10101, 0b10101, 0b10111, 0b10001, 0b10001, 0b01110, 0b00000},
    // A lock.
    {0b01110, 0b10001, 0b10001, 0b11111, 0b11011, 0b11011, 0b11111, 0b00000},
}};

void DisplayGlyph::SetPicture(const GlyphRows& picture) {
  if (picture == picture_) return;
  picture_ = picture;
  update();
}

void DisplayGlyph::paintEvent(QPaintEvent*) {
  constexpr int columns = 5;
  constexpr int rows = 8;
  QPainter painter(this);
  painter.fillRect(rect(), QColor(DisplayColor));
  // Square dots with a dot of room around the symbol.
  const double dot = std::min(width() / (columns + 2.0), height() / (rows + 2.0));
  const double left = (width() - columns * dot) / 2;
  const double top = (height() - rows * dot) / 2;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      if ((picture_[static_cast<std::size_t>(row)] >> (columns - 1 - column) & 1) == 0) continue;
      painter.fillRect(QRectF(left + column * dot, top + row * dot, dot, dot), Qt::black);
    }
  }
}
