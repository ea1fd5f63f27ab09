#pragma once

#include <QWidget>
#include <array>
#include <cstdint>

/// A symbol of the panel's display: eight rows of five dots, the leftmost dot in bit 4.
using GlyphRows = std::array<std::uint8_t, 8>;

/// The symbols behind the display codes 0 to 7.
extern const std::array<GlyphRows, 8> DisplayGlyphs;

/// A cell of the display that shows a symbol in place of a character.
class DisplayGlyph : public QWidget {
  Q_OBJECT
 public:
  const GlyphRows& Picture() const { return picture_; }
  void SetPicture(const GlyphRows& picture);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  GlyphRows picture_{};
};
