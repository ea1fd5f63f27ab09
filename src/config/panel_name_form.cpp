#include "config/panel_name_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/name_keys.h"

namespace {

constexpr int DisplayCells = 18;

}  // namespace

frmT3EditPanelName::frmT3EditPanelName()
    : ChildForm(Screen::EditPanelName, QStringLiteral("Edit Panel Name")) {}

void frmT3EditPanelName::Form_Load() {
  chkDefaultPanelName =
      Add<CheckBox>(AddRow(), "chkDefaultPanelName", QStringLiteral("Use Default Panel Name"));
  chkDefaultPanelName->Click = [this] { chkDefaultPanelName_Click(); };
  auto* row = AddRow();
  lblPanelName = AddLabel(row, "lblPanelName", QStringLiteral("Panel Name"));
  txtPanelName = Add<TextBox>(row, "txtPanelName");
  txtPanelName->setAccessibleName(lblPanelName->Caption());
  txtPanelName->setMinimumWidth(fontMetrics().averageCharWidth() * 2 * DisplayCells);
  FilterNameKeys(*txtPanelName);
  txtPanelName->Change = [this] { txtPanelName_Change(); };
  frmAsDisplayed = new NameDisplay(DisplayCells);
  AddWidget(frmAsDisplayed);
  AddHint(QStringLiteral("Choosing the default name erases the panel's own name."));
}

void frmT3EditPanelName::Form_Activate() {
  FormLoading = -1;
  txtPanelName->SetText(ToUnicode(PanelRecord.PanelName));
  chkDefaultPanelName->SetValue(PanelRecord.PanelName.empty() ? 1 : 0);
  FormLoading = 0;
  ShowPanelChars();
}

/// A key pressed too often must not erase the name.
QWidget* frmT3EditPanelName::FirstFocus() {
  return txtPanelName->isVisibleTo(this) ? txtPanelName : ChildForm::FirstFocus();
}

void frmT3EditPanelName::ShowPanelChars() {
  frmAsDisplayed->ShowName(PanelRecord.PanelName);
  const bool ownName = chkDefaultPanelName->Value() == 0;
  lblPanelName->setVisible(ownName);
  txtPanelName->setVisible(ownName);
  frmAsDisplayed->setVisible(ownName);
}

void frmT3EditPanelName::chkDefaultPanelName_Click() {
  if (chkDefaultPanelName->Value() == 1) {
    PanelRecord.PanelName.clear();
    txtPanelName->SetText({});
  }
  ShowPanelChars();
}

void frmT3EditPanelName::txtPanelName_Change() {
  if (FormLoading) return;
  PanelRecord.PanelName = FromUnicode(txtPanelName->Text());
  DataChanged = -1;
  ShowPanelChars();
}
