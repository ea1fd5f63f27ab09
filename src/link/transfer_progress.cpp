#include "link/transfer_progress.h"

#include <QCoreApplication>
#include <QStringBuilder>

#include "link/named_control.h"

namespace {

/// At every change a bar asks its style whether it would look different, which takes as long as
/// half a block; not so one whose text is its value, be it drawn or not.
class PatientBar : public QProgressBar {
 public:
  PatientBar() { setFormat(QStringLiteral("%v")); }

 private:
  void initStyleOption(QStyleOptionProgressBar* option) const override {
    QProgressBar::initStyleOption(option);
    option->textVisible = false;
  }
};

}  // namespace

TransferProgress::TransferProgress(QBoxLayout* lines) {
  lblActivityProgress =
      NamedLabel(lines, "lblActivityProgress", QStringLiteral("Activity Progress"));
  constexpr int announceMs = 2000;
  lblActivityProgress->SetAnnounceMs(announceMs);
  // So that another block needs no new layout.
  constexpr int longestChars = 28;
  lblActivityProgress->SetWidthInChars(longestChars);
  pbActivityProgress = NamedControl<PatientBar>(lines, "pbActivityProgress");
  pbActivityProgress->setRange(0, ImageBlockCount);
  auto* cancel = new QHBoxLayout;
  lblTimeLeft = NamedLabel(cancel, "lblTimeLeft");
  lblTimeLeft->SetLook(Label::Look::Quiet);
  cancel->addStretch(1);
  cmdCancelUpDownLoad =
      NamedControl<Button>(cancel, "cmdCancelUpDownLoad", QStringLiteral("Cancel"));
  lines->addLayout(cancel);
  Hide();
  lblTimeLeft->setVisible(false);
  cmdCancelUpDownLoad->setVisible(false);
}

void TransferProgress::Show(const QString& text) {
  lblActivityProgress->SetCaption(text);
  lblActivityProgress->setVisible(true);
  pbActivityProgress->setValue(0);
  pbActivityProgress->setVisible(true);
}

void TransferProgress::Hide() {
  lblActivityProgress->setVisible(false);
  pbActivityProgress->setVisible(false);
}

void TransferProgress::Begin() {
  cmdCancelUpDownLoad->setVisible(true);
  // By itself the bar would paint at every second block.
  pbActivityProgress->setUpdatesEnabled(false);
  transferTime_.Restart();
  lblTimeLeft->SetCaption({});
  lblTimeLeft->setVisible(true);
}

void TransferProgress::End() {
  cmdCancelUpDownLoad->setVisible(false);
  pbActivityProgress->setUpdatesEnabled(true);
  lblTimeLeft->setVisible(false);
}

TransferWatch TransferProgress::Watch(const char* action, const Int16& cancelRequested) {
  return {.Cancelled = [this, &cancelRequested] { return Cancelled(cancelRequested); },
          .Block = [this, action](int block, int nth,
                                  int count) { ShowBlock(action, block, nth, count); },
          .Sum = [this] { ShowVerify(); }};
}

/// Lets the click on Cancel arrive. Events and pictures come as often as an eye can follow: at
/// every block they would take as long as a network takes to carry it.
bool TransferProgress::Cancelled(const Int16& cancelRequested) {
  constexpr qint64 pictureMs = 16;
  pictureDue_ = painted_.ElapsedMs() >= pictureMs;
  if (pictureDue_) QCoreApplication::processEvents();
  return cancelRequested != 0;
}

void TransferProgress::ShowBlock(const char* action, int block, int nth, int count) {
  lblActivityProgress->SetCaption(QLatin1String(action) % QStringLiteral(" Block ") %
                                  QString::number(block) % QStringLiteral(" Of ") %
                                  QString::number(ImageBlockCount));
  pbActivityProgress->setValue(block);
  if (!pictureDue_) return;
  lblTimeLeft->SetCaption(TimeLeft(transferTime_.ElapsedMs(), nth, count));
  Paint();
}

void TransferProgress::ShowVerify() {
  lblActivityProgress->SetCaption(QStringLiteral("Verify Checksum"));
  Paint();
}

void TransferProgress::Paint() {
  painted_.Restart();
  pbActivityProgress->setUpdatesEnabled(true);
  pbActivityProgress->repaint();
  pbActivityProgress->setUpdatesEnabled(false);
  lblActivityProgress->repaint();
}
