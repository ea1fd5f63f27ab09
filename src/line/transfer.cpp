#include "line/transfer.h"

#include "line/panel_commands.h"

namespace {

bool CancelAsked(const TransferWatch& watch) {
  return watch.Cancelled && watch.Cancelled();
}

void TellBlock(const TransferWatch& watch, int block) {
  if (watch.Block) watch.Block(block + 1);
}

void AddBlock(ImageSum& sum, int block, const PanelImageType& image) {
  for (int i = 0; i < ImageBlockSize; ++i) sum.Add(image(block * ImageBlockSize + i));
}

TransferOutcome Verify(const ImageSum& sum, const TransferWatch& watch) {
  if (watch.Sum) watch.Sum();
  const std::optional<Int32> panelSum = ReadMemorySum();
  if (!panelSum) return TransferOutcome::NoSum;
  return *panelSum == sum.Value() ? TransferOutcome::Complete : TransferOutcome::SumDiffers;
}

}  // namespace

TransferOutcome SendImage(const PanelImageType& image, const TransferWatch& watch) {
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    if (CancelAsked(watch)) return TransferOutcome::Cancelled;
    AddBlock(sum, block, image);
    TellBlock(watch, block);
    if (!WriteBlock(block, image)) return TransferOutcome::BlockNotWritten;
  }
  return Verify(sum, watch);
}

TransferOutcome FetchImage(PanelImageType& image, const TransferWatch& watch) {
  ImageSum sum;
  for (int block = 0; block < ImageBlockCount; ++block) {
    if (CancelAsked(watch)) return TransferOutcome::Cancelled;
    if (!ReadBlock(block, image)) return TransferOutcome::BlockNotRead;
    AddBlock(sum, block, image);
    TellBlock(watch, block);
  }
  return Verify(sum, watch);
}
