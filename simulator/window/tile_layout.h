#pragma once

#include <QLayout>
#include <vector>

namespace simulator {

/// Lays equal tiles out in as many columns as there is room for.
class TileLayout : public QLayout {
 public:
  TileLayout();
  ~TileLayout() override;

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(Tiles.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  QSize Tile() const;
  int Columns(int width) const;

  std::vector<QLayoutItem*> Tiles;
};

}  // namespace simulator
