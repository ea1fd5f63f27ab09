#pragma once

#include <QGroupBox>
#include <string>

#include "shell/controls/controls.h"

/// The frame that shows a name as the panel's display will hold it: one cell a character, what is
/// beyond the last cell is cut. The cells are empty at first.
class NameDisplay : public QGroupBox {
  Q_OBJECT
 public:
  explicit NameDisplay(int cells);

  /// `name` is Windows-1252 bytes.
  void ShowName(const std::string& name);

 private:
  ControlArray<Label> lblPanelChar;
};
