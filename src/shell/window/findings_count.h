#pragma once

#include "shell/controls/controls.h"

/// How many findings of the check the project has, on the status bar. A press lists them. It looks
/// once a second.
class FindingsCount : public Label {
 public:
  /// `count` gives the words and looks at no more than has changed.
  FindingsCount(std::function<QString()> count, const std::function<void()>& list);
};
