#include "line/transfer.h"

#include <algorithm>
#include <vector>

#include "line/known_memory.h"
#include "line/panel_commands.h"
#include "line/session.h"

namespace {

bool CancelAsked(const TransferWatch& watch) {
  return watch.Cancelled && watch.Cancelled();
}

void TellBlock(const TransferWatch& watch, int block) {
  if (watch.Block) watch.Block(block + 1, block + 1, ImageBlockCount);
}

void AddBlock(ImageSum& sum, int block, const PanelImageType& image) {
  const auto* first = &image(block * ImageBlockSize);
  std::for_each(first, first + ImageBlockSize, [&](Int16 element) { sum.Add(element); });
}

ImageSum SumOf(const PanelImageType& image) {
  ImageSum sum;
  for (const Int16 element : image.elements) sum.Add(element);
  return sum;
}

PasswordDigits PassWordIn(const PanelImageType& image) {
  PasswordDigits digits;
  std::copy_n(&image(PasswordAddress), digits.size(), digits.begin());
  return digits;
}

/// In order of address.
std::vector<int> ChangedBlocks(const PanelImageType& one, const PanelImageType& other) {
  std::vector<int> changed;
  for (int block = 0; block < ImageBlockCount; ++block) {
    const auto* first = &one(block * ImageBlockSize);
    if (!std::equal(first, first + ImageBlockSize, &other(block * ImageBlockSize))) {
      changed.push_back(block);
    }
  }
  return changed;
}

/// What a panel holds is known again once its sum agrees.
TransferOutcome Verify(const PanelImageType& image, const ImageSum& sum,
                       const TransferWatch& watch) {
  if (watch.Sum) watch.Sum();
  const std::optional<Int32> panelSum = ReadMemorySum();
  if (!panelSum) return TransferOutcome::NoSum;
  if (*panelSum != sum.Value()) return TransferOutcome::SumDiffers;
  RememberMemory(OpenedPanel(), image);
  return TransferOutcome::Complete;
}

}  // namespace

TransferOutcome SendImage(const PanelImageType& image, const TransferWatch& watch) {
  ForgetMemory(OpenedPanel());
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    if (CancelAsked(watch)) return TransferOutcome::Cancelled;
    AddBlock(sum, block, image);
    TellBlock(watch, block);
    if (!WriteBlock(block, image)) return TransferOutcome::BlockNotWritten;
  }
  return Verify(image, sum, watch);
}

TransferOutcome FetchImage(PanelImageType& image, const TransferWatch& watch) {
  ForgetMemory(OpenedPanel());
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    if (CancelAsked(watch)) return TransferOutcome::Cancelled;
    if (!ReadBlock(block, image)) return TransferOutcome::BlockNotRead;
    AddBlock(sum, block, image);
    TellBlock(watch, block);
  }
  return Verify(image, sum, watch);
}

TransferOutcome SendChanges(const PanelImageType& known, const PasswordDigits& current,
                            const PanelImageType& image, const TransferWatch& watch) {
  PanelImageType held = known;
  std::copy(current.begin(), current.end(), &held(PasswordAddress));
  const std::optional<Int32> panelSum = ReadMemorySum();
  if (!panelSum) return TransferOutcome::NotAnswered;
  if (*panelSum != SumOf(held).Value()) return TransferOutcome::HoldsSomethingElse;

  const PasswordDigits wanted = PassWordIn(image);
  const bool newPassWord = wanted != current;
  if (!newPassWord && held == image) return TransferOutcome::NothingChanged;
  ForgetMemory(OpenedPanel());
  if (newPassWord && !WritePassWord(wanted)) return TransferOutcome::BlockNotWritten;
  std::copy(wanted.begin(), wanted.end(), &held(PasswordAddress));
  const std::vector<int> changed = ChangedBlocks(held, image);
  int nth = 0;
  for (const int block : changed) {
    if (CancelAsked(watch)) return TransferOutcome::Cancelled;
    if (watch.Block) watch.Block(block + 1, ++nth, static_cast<int>(changed.size()));
    if (!WriteBlock(block, image)) return TransferOutcome::BlockNotWritten;
  }
  return Verify(image, SumOf(image), watch);
}

QString TimeLeft(qint64 elapsedMs, int nth, int count) {
  constexpr qint64 settledMs = 1000;
  if (elapsedMs < settledMs) return {};
  const auto seconds = static_cast<int>(elapsedMs * (count - nth) / std::max(nth, 1) / 1000 + 1);
  return seconds < 60 ? QStringLiteral("About %1 s left").arg(seconds)
                      : QStringLiteral("About %1 min left").arg((seconds + 59) / 60);
}
