#include <QScopedValueRollback>

#include "dimmer/dimmer_lists.h"
#include "dimmer/dimmer_output_form.h"
#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/shown_percent.h"

// What the controls of the screen show and do.

namespace {

/// Takes a slot that names an input which `device` has not got back to the first input. Timers and
/// presets share the number, so this is for input slots.
void LimitControlNumber(Int16 dev, Int16 out, Int16 ctl, int device) {
  if (device > 0 && DimGetCtlNumber(dev, out, ctl) >= ControlInputCount(device)) {
    DimSetCtlNumber(dev, out, ctl, 0);
  }
}

Int16 Index(const ComboBox& list) {
  return static_cast<Int16>(list.ListIndex());
}

}  // namespace

void frmT3DimmerOutput::Form_Activate() {
  Dev = Out = Ctl = 0;
  for (ComboBox* list : {cboDDev, cboDOut, cboCONum}) list->setCurrentIndex(0);
  ShowControl();
  tmrStatus->SetEnabled(Connected != 0);
}

void frmT3DimmerOutput::Form_Unload() {
  tmrStatus->SetEnabled(false);
  ForgetRequests();
  if (copyDialog) copyDialog->reject();
}

void frmT3DimmerOutput::ShowControl() {
  const bool outermost = ShowingControl == 0;
  ShownValues shown;
  {
    const QScopedValueRollback<Int16> showing(ShowingControl, -1);
    const bool enabled = DimGetEnabled(Dev) != 0;
    frmConfig->setVisible(enabled);
    lblNotEnabled->setVisible(!enabled);
    chkEnabled->SetValue(enabled);
    shown.Index(*cboPowerOnLevel, [this] { return DimGetPowerOn(Dev, Out); });
    shown.Index(*cboMinLevel,
                [this] { return DimGetMinPC(Dev, Out) != 0 ? 0 : DimGetMin(Dev, Out) + 1; });
    shown.Index(*cboMaxLevel,
                [this] { return DimGetMaxPC(Dev, Out) != 0 ? 0 : DimGetMax(Dev, Out) + 1; });
    shown.Index(*cboFadeRate, [this] { return DimGetFade(Dev, Out); });
    shown.Index(*cboDMX, [this] { return DimGetDMX(Dev, Out); });
    ShowTracking();
    ShowSlot();
    ShowSummaries();
    shown.Attempt([this] { scale->Show(Dev, Out, cboPCTrack->ListIndex() == Track2Point); },
                  [this] { scale->hide(); });
    ShowLiveLevels();
  }
  if (outermost) shown.TellFailure();
}

void frmT3DimmerOutput::ShowTracking() {
  const Int16 mode = DimGetTrackMode(Dev, Out);
  cboPCTrack->setPlaceholderText(QStringLiteral("PC Tracking: ") +
                                 QString::fromLatin1(TrackModes[static_cast<std::size_t>(mode)]));
  cboPCTrack->SetListIndex(TrackModeAtIndex(mode));
  scale->setVisible(mode == Track2Point || mode == Track3Point);
  cboPCDev->setVisible(mode != TrackDisabled);
  lblPCTSource->setVisible(mode != TrackDisabled);
  cboTarget->setVisible(mode == TrackSetpoint);
  cboPCDev->SetListIndex(DimGetPCDev(Dev, Out));
  cboTarget->SetListIndex(DimGetTarget(Dev, Out));
}

void frmT3DimmerOutput::ShowSlot() {
  cboCOInp->SetItems(
      CountedItems(QStringLiteral("I:"), 1, ControlInputCount(DimGetCtlDevice(Dev, Out, Ctl)), 2));
  const Int16 type = DimGetCtlType(Dev, Out, Ctl);
  cboCOTyp->SetListIndex(type);
  const bool input = type == ControlInput || type == ControlInvertInput;
  const bool used = input || type == ControlTimer || type == ControlPreset;
  for (ComboBox* list : {cboCODev, cboCOInp}) list->setVisible(input);
  cboCOTmr->setVisible(type == ControlTimer);
  cboCOPrs->setVisible(type == ControlPreset);
  for (ComboBox* list : {cboCOAct, cboCOFade, cboCORevert}) list->setVisible(used);
  for (QWidget* caption : {SourceCaption, ActionCaption}) caption->setVisible(used);
  cboCOTmr->SetListIndex(DimGetCtlNumber(Dev, Out, Ctl));
  cboCOPrs->SetListIndex(DimGetCtlNumber(Dev, Out, Ctl));
  cboCODev->SetListIndex(DimGetCtlDevice(Dev, Out, Ctl));
  if (input) {
    LimitControlNumber(Dev, Out, Ctl, cboCODev->ListIndex());
    cboCOInp->SetListIndex(DimGetCtlNumber(Dev, Out, Ctl));
  }
  cboCOAct->SetListIndex(DimGetCtlAction(Dev, Out, Ctl));
  cboCOFade->SetListIndex(DimGetCtlInstant(Dev, Out, Ctl) != 0 ? 1 : 0);
  cboCORevert->SetListIndex(DimGetCtlRevert(Dev, Out, Ctl));
}

void frmT3DimmerOutput::ShowSummaries() {
  for (Int16 slot = 0; slot < ControlSlotCount; ++slot) {
    lblSummary(slot).SetCaption(
        QString::fromStdString(ControlSlotSummary(DimmerOutput(DimmerBlock, Dev, Out), slot)));
    lblSummary(slot).SetBackColor(slot == Ctl ? std::optional(Colors::LightGrey) : std::nullopt);
  }
}

void frmT3DimmerOutput::ShowLiveLevels() {
  const bool live = chkEnabled->Value() != 0 && Connected != 0;
  const bool automatic = live && ConnectionType() == ConnectionTCP;
  for (int out = 0; out < DimmerOutputCount; ++out) {
    lblHdrLev(out).setVisible(live);
    lblShowLevels(out).setVisible(live);
  }
  cmdUpdate->setEnabled(live && !automatic);
  tmrStatus->SetEnabled(automatic);
}

void frmT3DimmerOutput::DimStsUpdate() {
  if (chkEnabled->Value() == 0 || Connected == 0) return;
  const std::optional<DimmerLevels> levels = ReadDimmerLevels();
  if (!levels) {
    PanelConnectionLost();
    return;
  }
  for (int out = 0; out < DimmerOutputCount; ++out) {
    lblShowLevels(out).SetCaption(QStringLiteral("%1%").arg(ShownPercent((*levels)(out, Dev))));
  }
}

void frmT3DimmerOutput::cmdUpdate_Click() {
  AskPanel([this] { DimStsUpdate(); });
}

/// A tick may come in the middle of a TCP wait, and passes over then.
void frmT3DimmerOutput::tmrStatus_Timer() {
  if (!PanelBusy()) AskPanel([this] { DimStsUpdate(); });
}

void frmT3DimmerOutput::cboDDev_Click() {
  Dev = Index(*cboDDev);
  // The levels on show are another device's.
  for (int out = 0; out < DimmerOutputCount; ++out) lblShowLevels(out).SetCaption({});
  ShowControl();
}

void frmT3DimmerOutput::cboDOut_Click() {
  Out = Index(*cboDOut);
  ShowControl();
}

void frmT3DimmerOutput::cboCONum_Click() {
  Ctl = Index(*cboCONum);
  ShowControl();
}

void frmT3DimmerOutput::lblSummary_Click(int index) {
  cboCONum->SetListIndex(index);
}

void frmT3DimmerOutput::chkEnabled_Click() {
  DimSetEnabled(Dev, static_cast<Int16>(chkEnabled->Value()));
  ShowControl();
}

void frmT3DimmerOutput::cboPowerOnLevel_Click() {
  DimSetPowerOn(Dev, Out, Index(*cboPowerOnLevel));
}

void frmT3DimmerOutput::cboMinLevel_Click() {
  const Int16 index = Index(*cboMinLevel);
  DimSetMinPC(Dev, Out, index == 0 ? -1 : 0);
  if (index != 0) DimSetMin(Dev, Out, static_cast<Int16>(index - 1));
}

void frmT3DimmerOutput::cboMaxLevel_Click() {
  const Int16 index = Index(*cboMaxLevel);
  DimSetMaxPC(Dev, Out, index == 0 ? -1 : 0);
  if (index != 0) DimSetMax(Dev, Out, static_cast<Int16>(index - 1));
}

void frmT3DimmerOutput::cboFadeRate_Click() {
  DimSetFade(Dev, Out, Index(*cboFadeRate));
}

void frmT3DimmerOutput::cboPCTrack_Click() {
  const Int16 mode = TrackModeAtIndex(cboPCTrack->ListIndex());
  DimSetTrackMode(Dev, Out, mode);
  if (mode == Track3Point) scale->KeepBBetween();
  ShowControl();
}

void frmT3DimmerOutput::cboPCDev_Click() {
  DimSetPCDev(Dev, Out, Index(*cboPCDev));
}

void frmT3DimmerOutput::cboDMX_Click() {
  DimSetDMX(Dev, Out, Index(*cboDMX));
}

void frmT3DimmerOutput::cboTarget_Click() {
  DimSetTarget(Dev, Out, Index(*cboTarget));
}

/// Runs while ShowControl fills the list, too; it then stores what the slot holds.
void frmT3DimmerOutput::cboCOTyp_Click() {
  DimSetCtlType(Dev, Out, Ctl, Index(*cboCOTyp));
  ShowControl();
}

void frmT3DimmerOutput::cboCODev_Click() {
  const Int16 device = Index(*cboCODev);
  LimitControlNumber(Dev, Out, Ctl, device);
  DimSetCtlDevice(Dev, Out, Ctl, device);
  ShowControl();
}

void frmT3DimmerOutput::StoreControlNumber(const ComboBox& list) {
  DimSetCtlNumber(Dev, Out, Ctl, Index(list));
  ShowControl();
}

void frmT3DimmerOutput::cboCONod_Click() {
  StoreControlNumber(*cboCONod);
}

void frmT3DimmerOutput::cboCOInp_Click() {
  StoreControlNumber(*cboCOInp);
}

void frmT3DimmerOutput::cboCOTmr_Click() {
  StoreControlNumber(*cboCOTmr);
}

void frmT3DimmerOutput::cboCOPrs_Click() {
  StoreControlNumber(*cboCOPrs);
}

void frmT3DimmerOutput::cboCOAct_Click() {
  DimSetCtlAction(Dev, Out, Ctl, Index(*cboCOAct));
  ShowControl();
}

void frmT3DimmerOutput::cboCOFade_Click() {
  DimSetCtlInstant(Dev, Out, Ctl, Index(*cboCOFade));
  ShowControl();
}

void frmT3DimmerOutput::cboCORevert_Click() {
  DimSetCtlRevert(Dev, Out, Ctl, Index(*cboCORevert));
  ShowControl();
}

void frmT3DimmerOutput::ShowCopyDialog(const DimmerCopyKind& kind) {
  DimmerCopyDialog dialog(kind, Dev, Out, window());
  copyDialog = &dialog;
  // The device on show may have become enabled.
  if (dialog.exec() == QDialog::Accepted) ShowControl();
}

void frmT3DimmerOutput::cmdCopyConfig_Click() {
  ShowCopyDialog(frmT3DimCopyCnf);
}

void frmT3DimmerOutput::cmdCopyControl_Click() {
  ShowCopyDialog(frmT3DimCopyCnt);
}
