#include "simulator/window/tile_layout.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr int UsualColumns = 4;
constexpr int Gap = 4;

}  // namespace

TileLayout::TileLayout() {
  setContentsMargins(0, 0, 0, 0);
}

TileLayout::~TileLayout() {
  for (QLayoutItem* item : Tiles) delete item;
}

void TileLayout::addItem(QLayoutItem* item) {
  Tiles.push_back(item);
}

QLayoutItem* TileLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? Tiles[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* TileLayout::takeAt(int index) {
  QLayoutItem* item = itemAt(index);
  if (item) Tiles.erase(Tiles.begin() + index);
  return item;
}

QSize TileLayout::Tile() const {
  QSize tile;
  for (const QLayoutItem* item : Tiles) tile = tile.expandedTo(item->sizeHint());
  return tile;
}

int TileLayout::Columns(int width) const {
  return std::max(1, (width + Gap) / (std::max(Tile().width(), 1) + Gap));
}

int TileLayout::heightForWidth(int width) const {
  const int columns = Columns(width);
  const int rows = (count() + columns - 1) / columns;
  return rows * (Tile().height() + Gap) - (rows > 0 ? Gap : 0);
}

QSize TileLayout::sizeHint() const {
  const int columns = std::min(std::max(count(), 1), UsualColumns);
  const int width = columns * (Tile().width() + Gap) - Gap;
  return {width, heightForWidth(width)};
}

QSize TileLayout::minimumSize() const {
  return Tile();
}

void TileLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  const int columns = Columns(place.width());
  const int width = (place.width() + Gap) / columns - Gap;
  const int height = Tile().height();
  for (int i = 0; i < count(); ++i) {
    const int column = i % columns;
    const int row = i / columns;
    itemAt(i)->setGeometry(
        {place.x() + column * (width + Gap), place.y() + row * (height + Gap), width, height});
  }
}

}  // namespace simulator
