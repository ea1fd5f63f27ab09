#pragma once

#include <QPointer>

#include "dimmer/dimmer_copy_form.h"
#include "dimmer/scale_frame.h"
#include "shell/controls/child_form.h"
#include "shell/controls/row_grid.h"

/// One dimmer output at a time: levels, fade, photocell tracking, DMX channel and control slots,
/// and the live levels of its device.
class frmT3DimmerOutput : public ChildForm {
 public:
  frmT3DimmerOutput();
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload() override;

  /// Shows the output and the slot chosen. A level that the 16-bit percent rules cannot take leaves
  /// its list without a selection, or the curve hidden, and is told by a RunTimeFailure when all
  /// the rest is shown.
  void ShowControl();

  /// Reads the live levels of the device's outputs from the panel.
  void DimStsUpdate();

  void cboDDev_Click();
  void cboDOut_Click();
  void chkEnabled_Click();
  void cboPowerOnLevel_Click();
  void cboMinLevel_Click();
  void cboMaxLevel_Click();
  void cboFadeRate_Click();
  void cboPCTrack_Click();
  void cboPCDev_Click();
  void cboDMX_Click();
  void cboTarget_Click();
  void cboCONum_Click();
  void cboCOTyp_Click();
  void cboCODev_Click();
  void cboCONod_Click();
  void cboCOInp_Click();
  void cboCOTmr_Click();
  void cboCOPrs_Click();
  void cboCOAct_Click();
  void cboCOFade_Click();
  void cboCORevert_Click();
  void lblSummary_Click(int index);
  void cmdUpdate_Click();
  void tmrStatus_Timer();
  void cmdCopyConfig_Click();
  void cmdCopyControl_Click();

 private:
  using Handler = void (frmT3DimmerOutput::*)();

  void BuildSelectors(QBoxLayout* row);
  void BuildLevels(QBoxLayout* column);
  void BuildTracking(QBoxLayout* column);
  void BuildSlots(QBoxLayout* column);
  ComboBox* AddList(QBoxLayout* row, const char* name, const char* title, const QStringList& items,
                    Handler handler);
  void ShowTracking();
  void ShowSlot();
  void ShowSummaries();
  void ShowLiveLevels();
  void ShowCopyDialog(const DimmerCopyKind& kind);
  void StoreControlNumber(const ComboBox& list);
  /// Runs the handler on a user's choice and on a change from code, but not from ShowControl.
  template <typename Control>
  void OnChange(Control* control, Handler handler) {
    control->Click = [this, handler] {
      if (ShowingControl == 0) (this->*handler)();
    };
  }

  Int16 Dev = 0;
  Int16 Out = 0;
  Int16 Ctl = 0;
  Int16 ShowingControl = 0;  ///< -1 while ShowControl runs.

  ComboBox* cboDDev = nullptr;
  ComboBox* cboDOut = nullptr;
  CheckBox* chkEnabled = nullptr;
  ControlArray<Label> lblHdrLev;
  ControlArray<Label> lblShowLevels;
  Button* cmdUpdate = nullptr;
  Timer* tmrStatus = nullptr;
  Label* lblNotEnabled = nullptr;
  QWidget* frmConfig = nullptr;
  ComboBox* cboPowerOnLevel = nullptr;
  ComboBox* cboMinLevel = nullptr;
  ComboBox* cboMaxLevel = nullptr;
  ComboBox* cboFadeRate = nullptr;
  ComboBox* cboDMX = nullptr;
  ComboBox* cboPCTrack = nullptr;
  Label* lblPCTSource = nullptr;
  ComboBox* cboPCDev = nullptr;
  ComboBox* cboTarget = nullptr;
  frmScale* scale = nullptr;
  ComboBox* cboCONum = nullptr;
  ComboBox* cboCOTyp = nullptr;
  QWidget* SourceCaption = nullptr;
  ComboBox* cboCODev = nullptr;
  ComboBox* cboCONod = nullptr;
  ComboBox* cboCOInp = nullptr;
  ComboBox* cboCOTmr = nullptr;
  ComboBox* cboCOPrs = nullptr;
  QWidget* ActionCaption = nullptr;
  ComboBox* cboCOAct = nullptr;
  ComboBox* cboCOFade = nullptr;
  ComboBox* cboCORevert = nullptr;
  ControlArray<Label> lblSummary;
  Button* cmdCopyConfig = nullptr;
  Button* cmdCopyControl = nullptr;
  QPointer<DimmerCopyDialog> copyDialog;
};
