#include "config/setup_form.h"

#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/controls/field_column.h"

namespace {

QString Points(int blocks) {
  return QStringLiteral("%1 I/O").arg(blocks * PointsOfBlock);
}

/// The blocks of the first item: the first node is never empty.
int FirstItem(int node) {
  return node == 0 ? 1 : 0;
}

QStringList NodeItems(int node) {
  constexpr int mostBlocksOfFirstNode = 8;
  constexpr int mostBlocksOfOtherNode = 4;
  QStringList items;
  if (node != 0) items << QStringLiteral("None");
  const int most = node == 0 ? mostBlocksOfFirstNode : mostBlocksOfOtherNode;
  for (int count = 1; count <= most; ++count) items << Points(count);
  return items;
}

bool IsInstalled(int node) {
  return node == 0 || PanelRecord.IOCount(node) != 0;
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
  lblIOCount.Add(
      this, grid,
      {.Cells = ControlOf<&PanelRecordType::IOCount>(),
       .List = "cboIOCount",
       .Look = {.Header = "lblIOCountHeader", .HeaderText = QStringLiteral("Installed")},
       .ItemsOf = NodeItems,
       .Item = [](int node) { return PanelRecord.IOCount(node) - FirstItem(node); },
       .Store =
           [](int node, int item) {
             PanelRecord.IOCount(node) = static_cast<Int16>(item + FirstItem(node));
           },
       .Text =
           [](int node) {
             return IsInstalled(node) ? Points(PanelRecord.IOCount(node)) : QStringLiteral("-");
           },
       .OpeningMarks = true},
      &frmT3Setup::ShowConfig, &frmT3Setup::lblIOCount_Click, &frmT3Setup::cboIOCount_Click);
  lblIOAdd = grid->Add<Label>(
      "lblIOAdd", {.Header = "lblIOAddHeader", .HeaderText = QStringLiteral("Numbers")});
  for (int node = 0; node < NodeCount; ++node) lblNode(node).SetCaption(lblNode(node).toolTip());
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

  AddHint(QStringLiteral(
      "The panel has at most 48 I/O points. Relays and inputs that are not installed "
      "are hidden and keep their settings."));
}

void frmT3Setup::Form_Activate() {
  const int type = PanelRecord.AddOnModuleType;
  if (type >= 0 && type < optAddOnModuleType.Count()) optAddOnModuleType(type).Select();
  ShowConfig();
  CloseLists();
}

void frmT3Setup::ShowConfig() {
  lblIOCount.Show(NodeCount);
  int total = 0;
  for (int node = 0; node < NodeCount; ++node) {
    lblIOAdd(node).setVisible(IsInstalled(node));
    if (!IsInstalled(node)) continue;
    const int first = total + 1;
    total += PanelRecord.IOCount(node) * PointsOfBlock;
    const bool valid = node == 0 || total <= ItemCount;
    lblIOAdd(node).SetCaption(valid ? Range(first, total) : QStringLiteral("Invalid"));
    lblIOAdd(node).SetBackColor(valid ? Colors::LightGreen : Colors::LightRed);
  }
}

void frmT3Setup::optAddOnModuleType_Click(int index) {
  PanelRecord.AddOnModuleType = static_cast<Int16>(index);
  CloseLists();
  DataChanged = -1;
}
