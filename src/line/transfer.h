#pragma once

#include <QString>
#include <functional>

#include "panel/panel_image.h"

// Transfers of the memory, block by block, confirmed by the panel's own sum. What the panel holds
// is remembered after a transfer whose sum agrees, and forgotten when one begins.

/// What has come of a transfer; the numbers are those that users are told.
enum class TransferOutcome : Int16 {
  Cancelled = -1,
  Complete = 0,
  BlockNotWritten = 1,
  SumDiffers = 2,
  NoSum = 3,
  BlockNotRead = 19,
  // Of sending what has changed:
  HoldsSomethingElse = 100,  ///< Than what is remembered of the panel; nothing was written.
  NothingChanged = 101,      ///< Nothing was written.
  NotAnswered = 102          ///< Nothing was written.
};

/// What a transfer asks and tells whoever watches it; any may be empty.
struct TransferWatch {
  /// Asked before each block.
  std::function<bool()> Cancelled = {};
  /// Block 1 to 640 is about to be sent, or has been read: the `nth` of `count` that travel.
  std::function<void(int block, int nth, int count)> Block = {};
  /// All blocks are through, and the panel is about to be asked for its sum.
  std::function<void()> Sum = {};
};

/// Sends an image. A transfer that does not end Complete leaves the panel half new.
[[nodiscard]] TransferOutcome SendImage(const PanelImageType& image, const TransferWatch& watch);

/// Reads an image, which is the panel's memory only after Complete.
[[nodiscard]] TransferOutcome FetchImage(PanelImageType& image, const TransferWatch& watch);

/// Sends the blocks in which an image differs from what the panel holds, `known`, if the panel's
/// own sum says that it holds just this, with the password `current`; then confirms the whole by
/// the sum. `image` has the password `current`, or a new one that is written first.
[[nodiscard]] TransferOutcome SendChanges(const PanelImageType& known,
                                          const PasswordDigits& current,
                                          const PanelImageType& image, const TransferWatch& watch);

/// What is left of a transfer at its `nth` of `count` blocks, at the pace so far: "About 12 s
/// left"; empty until there is a pace.
QString TimeLeft(qint64 elapsedMs, int nth, int count);
