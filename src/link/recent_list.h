#pragma once

#include "panel/remembered.h"
#include "shell/controls/controls.h"

/// Below a box what was typed into it before and led to a panel. A choice is as if typed.
class RecentList : public QWidget {
 public:
  /// `name` is that of the rows: "lblLastAddress".
  RecentList(TextBox* box, Typed kind, const char* name);

  /// Fills the list anew; hidden where there is nothing to choose.
  void ShowFor(bool wanted);

 private:
  TextBox* box_;
  Typed kind_;
  ControlArray<Label> rows_;
};
