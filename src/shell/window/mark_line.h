#pragma once

#include "panel/recovery_copy.h"
#include "panel/stopwatch.h"
#include "shell/controls/controls.h"

/// What stands beside the caption of the screen on show: what has just been done, or whether
/// something is unsaved.
class MarkLine : public Label {
 public:
  /// The copy must outlive the line.
  explicit MarkLine(const RecoveryCopy& recovery);

  /// Looks at the project from now on.
  void Begin() { tmrMarks_->SetEnabled(true); }
  /// For a moment, or until the next key or press.
  void Tell(const QString& news, bool stays = false);
  /// A key or a press: news that stayed until then goes.
  void GoOn() {
    if (newsStays_) Tell({});
  }
  /// Another screen comes to the front; the line follows at its next look.
  void ForgetNews() { news_.clear(); }

 protected:
  bool event(QEvent* event) override;

 private:
  void LookAnew();

  const RecoveryCopy& recovery_;
  QString news_;
  bool newsStays_ = false;
  Stopwatch newsShown_;
  Timer* tmrMarks_;
};
