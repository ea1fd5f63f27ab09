#include "config/setup_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"

namespace {

QString Points(int blocks) {
  return QStringLiteral("%1 I/O").arg(blocks * PointsOfBlock);
}

/// "4 I/O" and so on, up to `blocks` blocks.
QStringList PointItems(int blocks) {
  QStringList items;
  for (int count = 1; count <= blocks; ++count) items << Points(count);
  return items;
}

QString Range(int first, int last) {
  return QStringLiteral("%1 - %2").arg(TwoDigits(first), TwoDigits(last));
}

}  // namespace

frmT3Setup::frmT3Setup() : ChildForm(Screen::Setup, QStringLiteral("Setup")) {}

void frmT3Setup::Form_Load() {
  auto* row = AddRow();
  row->setSpacing(16);

  auto* fraIOCount = Add<QGroupBox>(row, "fraIOCount", QStringLiteral("I/O Count"));
  auto* grid = new RowGrid(NodeCount);
  for (int node = 0; node < NodeCount; ++node) {
    grid->SetRowTitle(node, QStringLiteral("Node ") + QString::number(node + 1, 16).toUpper());
  }
  lblNode = grid->AddNames("lblNode");
  lblIOCount = grid->Add<Label>("lblIOCount", {.Header = "lblIOCountHeader",
                                               .HeaderText = QStringLiteral("Installed"),
                                               .Act = CellAct::OpensList});
  lblIOAdd = grid->Add<Label>(
      "lblIOAdd", {.Header = "lblIOAddHeader", .HeaderText = QStringLiteral("Numbers")});
  for (int node = 0; node < NodeCount; ++node) lblNode(node).SetCaption(lblNode(node).toolTip());
  lblIOCount.OnEach(&Label::Click, this, &frmT3Setup::lblIOCount_Click);
  (new QVBoxLayout(fraIOCount))->addWidget(grid);

  auto* fraAddOnModule = Add<QGroupBox>(row, "fraAddOnModule", QStringLiteral("Add On Module"));
  row->setAlignment(fraAddOnModule, Qt::AlignTop);
  auto* options = new QVBoxLayout(fraAddOnModule);
  for (const AddOnModule& module : AddOnModules) {
    auto* option = new OptionButton(ToUnicode(module.OptionText));
    options->addWidget(option);
    optAddOnModuleType.Add(option, QStringLiteral("optAddOnModuleType"));
  }
  optAddOnModuleType.OnEach(&OptionButton::Click, this, &frmT3Setup::optAddOnModuleType_Click);

  cboIOCount = new InPlaceList(this, "cboIOCount");
  cboIOCount->Click = [this] { cboIOCount_Click(); };
  AddHint(QStringLiteral(
      "The panel has at most 48 I/O points. Relays and inputs that are not installed "
      "are hidden and keep their settings."));
}

void frmT3Setup::Form_Activate() {
  const int type = PanelRecord.AddOnModuleType;
  if (type >= 0 && type < optAddOnModuleType.Count()) optAddOnModuleType(type).Select();
  ShowConfig();
  cboIOCount->Close();
}

void frmT3Setup::ShowConfig() {
  int total = 0;
  for (int node = 0; node < NodeCount; ++node) {
    const int count = PanelRecord.IOCount(node);
    const bool installed = node == 0 || count != 0;
    lblIOCount(node).SetCaption(installed ? Points(count) : QStringLiteral("-"));
    lblIOAdd(node).setVisible(installed);
    if (!installed) continue;
    const int first = total + 1;
    total += count * PointsOfBlock;
    const bool valid = node == 0 || total <= ItemCount;
    lblIOAdd(node).SetCaption(valid ? Range(first, total) : QStringLiteral("Invalid"));
    lblIOAdd(node).SetBackColor(valid ? Colors::LightGreen : Colors::LightRed);
  }
}

void frmT3Setup::lblIOCount_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  constexpr int mostBlocksOfFirstNode = 8;
  constexpr int mostBlocksOfOtherNode = 4;
  const int count = PanelRecord.IOCount(index);
  if (index == 0) {
    cboIOCount->SetItems(PointItems(mostBlocksOfFirstNode));
    cboIOCount->Open(lblIOCount(index), count - 1);
  } else {
    cboIOCount->SetItems(QStringList{QStringLiteral("None")} + PointItems(mostBlocksOfOtherNode));
    cboIOCount->Open(lblIOCount(index), count);
  }
  DataChanged = -1;
}

void frmT3Setup::cboIOCount_Click() {
  const int chosen = cboIOCount->ListIndex();
  PanelRecord.IOCount(SelectedRow) = static_cast<Int16>(SelectedRow == 0 ? chosen + 1 : chosen);
  cboIOCount->Close();
  ShowConfig();
  DataChanged = -1;
}

void frmT3Setup::optAddOnModuleType_Click(int index) {
  PanelRecord.AddOnModuleType = static_cast<Int16>(index);
  cboIOCount->Close();
  DataChanged = -1;
}
