#include "dimmer/dimmer_copy_form.h"

#include <QGridLayout>
#include <QGroupBox>

#include "dimmer/dimmer_lists.h"
#include "panel/format.h"
#include "panel/hex.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/row_grid.h"

const DimmerCopyKind frmT3DimCopyCnf = {Screen::DimCopyCnf, "Copy Dimmer Configuration", "cmsCopy",
                                        false};
const DimmerCopyKind frmT3DimCopyCnt = {Screen::DimCopyCnt, "Copy Dimmer Control Options",
                                        "cmdCopy", true};

namespace {

template <std::size_t Size>
std::bitset<Size> Ticked(const ControlArray<CheckBox>& boxes) {
  std::bitset<Size> ticked;
  for (int i = 0; i < boxes.Count(); ++i)
    ticked[static_cast<std::size_t>(i)] = boxes(i).Value() != 0;
  return ticked;
}

}  // namespace

DimmerCopyDialog::DimmerCopyDialog(const DimmerCopyKind& kind, Int16 dev, Int16 out,
                                   QWidget* parent)
    : QDialog(parent), kind_(kind), Dev(dev), Out(out) {
  setObjectName(QString::fromLatin1(ScreenName(kind.Name)));
  setWindowTitle(QString::fromLatin1(kind.Caption));
  auto* body = new QVBoxLayout(this);
  auto* source = new Label;
  source->setObjectName(QStringLiteral("lblSource"));
  source->SetCaption(QStringLiteral("From device %1, output %2, to the outputs checked:")
                         .arg(QString::fromStdString(HexByte(dev + 1)))
                         .arg(out + 1));
  body->addWidget(source);
  auto* boxes = new QHBoxLayout;
  body->addLayout(boxes);
  boxes->addWidget(BuildDestinations());
  if (kind.ChoosesSlots) boxes->addWidget(BuildSlots());
  auto* buttons = new QHBoxLayout;
  body->addLayout(buttons);
  buttons->addStretch(1);
  auto* copy =
      AddButton(kind.CopyButton, QStringLiteral("Copy Settings"), [this] { Copy_Click(); });
  buttons->addWidget(copy);
  buttons->addWidget(AddButton("cmdCancel", QStringLiteral("Cancel"), [this] { reject(); }));
  // Enter presses the button that has the focus, elsewhere the one that copies.
  for (Button* button : findChildren<Button*>()) button->setAutoDefault(true);
  copy->setDefault(true);
}

Button* DimmerCopyDialog::AddButton(const char* name, const QString& caption,
                                    std::function<void()> click) {
  auto* button = new Button(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->Click = std::move(click);
  return button;
}

/// A row a device and a column an output, each with the button that ticks it whole.
QWidget* DimmerCopyDialog::BuildDestinations() {
  auto* frame = new QGroupBox(QStringLiteral("Dimmer Outputs"));
  auto* grid = new QGridLayout(frame);
  grid->setVerticalSpacing(2);
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    auto* all = new Button(QStringLiteral("All Dev") + QString::fromStdString(HexByte(dev + 1)));
    cmdAllDev.Add(all, QStringLiteral("cmdAllDev"));
    grid->addWidget(all, dev, 0);
    for (int out = 0; out < DimmerOutputCount; ++out) {
      auto* box = new CheckBox(QStringLiteral("D:%1.%2").arg(TwoDigits(dev + 1)).arg(out + 1));
      chkDst.Add(box, QStringLiteral("chkDst"));
      grid->addWidget(box, dev, out + 1);
    }
  }
  for (int out = 0; out < DimmerOutputCount; ++out) {
    auto* all = new Button(QStringLiteral("All Out%1").arg(out + 1));
    cmdAllOut.Add(all, QStringLiteral("cmdAllOut"));
    grid->addWidget(all, DimmerDeviceCount, out + 1);
  }
  cmdAllDev.OnEach(&Button::Click, this, &DimmerCopyDialog::cmdAllDev_Click);
  cmdAllOut.OnEach(&Button::Click, this, &DimmerCopyDialog::cmdAllOut_Click);
  grid->addWidget(AddButton("cmdDstAll", QStringLiteral("All"), [this] { cmdDstAll_Click(); }),
                  DimmerDeviceCount + 1, 0);
  grid->addWidget(AddButton("cmdDstNone", QStringLiteral("None"), [this] { cmdDstNone_Click(); }),
                  DimmerDeviceCount + 1, 1);
  return frame;
}

QWidget* DimmerCopyDialog::BuildSlots() {
  constexpr int rows = ControlSlotCount / 2;
  auto* frame = new QGroupBox(QStringLiteral("Controls"));
  auto* grid = new QGridLayout(frame);
  for (const QString& text : CountedItems(QStringLiteral("Control: "), 1, ControlSlotCount, 2)) {
    const int slot = chkCNum.Count();
    auto* box = new CheckBox(text);
    chkCNum.Add(box, QStringLiteral("chkCNum"));
    grid->addWidget(box, slot % rows, slot / rows);
  }
  grid->setRowStretch(rows, 1);
  grid->addWidget(AddButton("cmdCntAll", QStringLiteral("All"), [this] { cmdCntAll_Click(); }),
                  rows + 1, 0);
  grid->addWidget(AddButton("cmdCntNone", QStringLiteral("None"), [this] { cmdCntNone_Click(); }),
                  rows + 1, 1);
  return frame;
}

void DimmerCopyDialog::Tick(const ControlArray<CheckBox>& boxes, int value) {
  for (int i = 0; i < boxes.Count(); ++i) boxes(i).SetValue(value);
}

void DimmerCopyDialog::cmdAllDev_Click(int dev) {
  for (int out = 0; out < DimmerOutputCount; ++out) {
    chkDst(dev * DimmerOutputCount + out).SetValue(1);
  }
}

void DimmerCopyDialog::cmdAllOut_Click(int out) {
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    chkDst(dev * DimmerOutputCount + out).SetValue(1);
  }
}

void DimmerCopyDialog::Copy_Click() {
  const auto destinations = Ticked<DimmerOutputSet().size()>(chkDst);
  if (kind_.ChoosesSlots) {
    CopyDimmerControls(DimmerBlock, Dev, Out, destinations, Ticked<ControlSlotCount>(chkCNum));
  } else {
    CopyDimmerConfiguration(DimmerBlock, Dev, Out, destinations);
  }
  if (destinations.any()) DataChanged = -1;
  MsgBox(QStringLiteral("Copy Complete"), MsgIcon::None, QStringLiteral("Copy Settings"));
  accept();
}
