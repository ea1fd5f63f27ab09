#pragma once

#include <QBoxLayout>
#include <QProgressBar>

#include "line/transfer.h"
#include "panel/stopwatch.h"
#include "shell/controls/controls.h"

/// How far a transfer is, and what cancels it. The words and the bar hold the block under way at
/// every block; they are painted as often as an eye can follow.
class TransferProgress {
 public:
  /// Adds the controls to `lines`, hidden.
  explicit TransferProgress(QBoxLayout* lines);

  void Show(const QString& text);
  void Hide();

  /// Cancel and the time left come and go with the transfer itself.
  void Begin();
  void End();

  /// Shows what a transfer tells, and lets it be cancelled by `cancelRequested`.
  TransferWatch Watch(const char* action, const Int16& cancelRequested);

  Label* lblActivityProgress = nullptr;
  QProgressBar* pbActivityProgress = nullptr;
  Button* cmdCancelUpDownLoad = nullptr;

 private:
  bool Cancelled(const Int16& cancelRequested);
  void ShowBlock(const char* action, int block, int nth, int count);
  void ShowVerify();
  void Paint();

  Label* lblTimeLeft = nullptr;
  Stopwatch transferTime_;
  Stopwatch painted_;
  bool pictureDue_ = false;
};
