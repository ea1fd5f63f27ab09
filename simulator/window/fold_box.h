#pragma once

#include <QWidget>

class QToolButton;

namespace simulator {

/// A caption with what it tells of folded away below it until it is asked for.
class FoldBox : public QWidget {
 public:
  FoldBox(const QString& caption, QWidget* content, bool open);
  bool IsOpen() const;
  void SetOpen(bool open);

 private:
  QToolButton* Caption;
  QWidget* Content;
};

}  // namespace simulator
