#pragma once

#include <QDialog>

#include "dimmer/rules/dimmer_copy.h"
#include "panel/screens.h"
#include "shell/controls/controls.h"

/// What the two copy dialogs do not share.
struct DimmerCopyKind {
  Screen Name;
  const char* Caption;
  const char* CopyButton;
  bool ChoosesSlots;  ///< Copies the control slots that the user ticks, not the configuration.
};

extern const DimmerCopyKind frmT3DimCopyCnf;
extern const DimmerCopyKind frmT3DimCopyCnt;

/// A dialog that copies settings of one dimmer output to those ticked. Accepted when it has copied.
class DimmerCopyDialog : public QDialog {
  Q_OBJECT
 public:
  DimmerCopyDialog(const DimmerCopyKind& kind, Int16 dev, Int16 out, QWidget* parent);

  void cmdDstAll_Click() { Tick(chkDst, 1); }
  void cmdDstNone_Click() { Tick(chkDst, 0); }
  void cmdAllDev_Click(int dev);
  void cmdAllOut_Click(int out);
  void cmdCntAll_Click() { Tick(chkCNum, 1); }
  void cmdCntNone_Click() { Tick(chkCNum, 0); }
  /// `cmsCopy` or `cmdCopy`, by kind.
  void Copy_Click();

 private:
  Button* AddButton(const char* name, const QString& caption, std::function<void()> click);
  QWidget* BuildDestinations();
  QWidget* BuildSlots();
  static void Tick(const ControlArray<CheckBox>& boxes, int value);

  const DimmerCopyKind& kind_;
  Int16 Dev;
  Int16 Out;
  ControlArray<CheckBox> chkDst;
  ControlArray<Button> cmdAllDev;
  ControlArray<Button> cmdAllOut;
  ControlArray<CheckBox> chkCNum;
};
