#include "status/walk_test_form.h"

#include <QHeaderView>
#include <algorithm>

#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/stopwatch.h"
#include "shell/controls/name_keys.h"
#include "shell/shell.h"

namespace {

QStringList WalkWords() {
  return {QStringLiteral("Inputs"), QStringLiteral("Relays"), QStringLiteral("Bus Stations")};
}

}  // namespace

frmT3WalkTest::frmT3WalkTest() : PollingForm(Screen::WalkTest, QStringLiteral("Walk Test")) {}

void OpenWalkTest(Walk walk) {
  UnloadAllForms();
  if (ChildForm* form = ShowForm(Screen::WalkTest)) {
    static_cast<frmT3WalkTest*>(form)->ChooseWalk(walk);
  }
}

void frmT3WalkTest::Form_Load() {
  AddNoConnection();
  AddTimer();
  controls_ = new QWidget;
  AddWidget(controls_);
  auto* column = new QVBoxLayout(controls_);
  column->setContentsMargins(0, 0, 0, 0);
  const auto addRow = [&](QBoxLayout* to) {
    auto* row = new QHBoxLayout;
    to->addLayout(row);
    return row;
  };
  const auto addButton = [&](QBoxLayout* row, const char* name, const char* caption,
                             void (frmT3WalkTest::*click)()) {
    auto* button = Add<Button>(row, name, QString::fromLatin1(caption));
    button->Click = [this, click] { (this->*click)(); };
    return button;
  };
  auto* row = addRow(column);
  cboWalk = AddList(row, "cboWalk", QStringLiteral("Walk"));
  cboWalk->SetItems(WalkWords());
  cboWalk->setCurrentIndex(0);
  cboWalk->Click = [this] { cboWalk_Click(); };
  cboWalk->ChoosesItem = true;
  cmdWalk = addButton(row, "cmdWalk", "Begin", &frmT3WalkTest::cmdWalk_Click);
  lblMenusOff = AddLabel(row, "lblMenusOff", QStringLiteral("The menus are off."));
  lblMenusOff->SetLook(Label::Look::Quiet);
  row->addStretch(1);
  AddLabel(row, "lblBy", QStringLiteral("Tested By"));
  txtBy = Add<TextBox>(row, "txtBy");
  txtBy->setAccessibleName(QStringLiteral("Tested By"));
  txtBy->UndoesItself = true;
  txtBy->setMaxLength(40);

  auto* frame = new QGroupBox(QStringLiteral("In Front"));
  frame->setObjectName(QStringLiteral("fraFront"));
  column->addWidget(frame);
  auto* inFrame = new QVBoxLayout(frame);
  lblFront = Add<Label>(inFrame, "lblFront");
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  lblFront->setFont(large);
  row = addRow(inFrame);
  lblName = AddLabel(row, "lblName", QStringLiteral("Name"));
  txtName = Add<TextBox>(row, "txtName");
  FilterNameKeys(*txtName);
  txtName->Change = [this] { txtName_Change(); };
  txtName->installEventFilter(this);
  cmdTick = addButton(row, "cmdTick", "Tick", &frmT3WalkTest::cmdTick_Click);
  cmdSkip = addButton(row, "cmdSkip", "Skip", &frmT3WalkTest::cmdSkip_Click);
  cmdUntick = addButton(row, "cmdUntick", "Take Tick Back", &frmT3WalkTest::cmdUntick_Click);
  row->addStretch(1);

  lstItems = new QTreeWidget;
  lstItems->setObjectName(QStringLiteral("lstItems"));
  lstItems->setAccessibleName(QStringLiteral("Items"));
  lstItems->setRootIsDecorated(false);
  lstItems->setUniformRowHeights(true);
  lstItems->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Name"),
                             QStringLiteral("State"), QStringLiteral("Tested")});
  constexpr std::array columnChars{20, 22, 22};
  for (int i = 0; i < static_cast<int>(columnChars.size()); ++i) {
    lstItems->setColumnWidth(
        i, columnChars[static_cast<std::size_t>(i)] * fontMetrics().averageCharWidth());
  }
  connect(lstItems, &QTreeWidget::itemActivated, this,
          [this] { RunHandler([this] { lstItems_Click(); }); });
  // Relays begin with the current row.
  connect(lstItems, &QTreeWidget::currentItemChanged, this, [this] {
    if (!front_ && !Polling()) ShowFront();
  });
  column->addWidget(lstItems, 1);
  lblTold = Add<Label>(column, "lblTold");
  lblTold->SetLook(Label::Look::Quiet);
  AddHint(
      QStringLiteral("Enter in the name ticks what is in front. Enter on a row brings it to the "
                     "front."));
}

void frmT3WalkTest::ShowConnected(bool connected) {
  controls_->setVisible(connected);
  if (connected) UseSpareHeight();
  // A step taken back shows the screen anew in the middle of a walk.
  if (!connected || Polling()) {
    if (front_ && !typing_) ShowFront();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      ShowRow(*lstItems->topLevelItem(static_cast<int>(i)), rows_[i]);
    }
    return;
  }
  tested_.clear();
  keepsTicks_ = ProjectHasFile();
  lblTold->SetCaption(ProjectHasFile()
                          ? QString()
                          : QStringLiteral("Ticks are kept beside the project's file: save "
                                           "it first. Names can be given."));
  if (ProjectHasFile()) {
    try {
      tested_ = ReadTested(CurrentFileName);
    } catch (const RunTimeFailure& failure) {
      keepsTicks_ = false;
      lblTold->SetCaption(QString::fromUtf8(failure.what()));
    }
  }
  const auto latest = std::max_element(
      tested_.begin(), tested_.end(),
      [](const TestedItem& one, const TestedItem& other) { return one.At < other.At; });
  if (txtBy->Text().isEmpty() && latest != tested_.end()) txtBy->SetText(latest->By);
  cboWalk_Click();
}

QWidget* frmT3WalkTest::FirstFocus() {
  return Connected != 0 ? cmdWalk : PollingForm::FirstFocus();
}

void frmT3WalkTest::ChooseWalk(Walk walk) {
  if (Connected != 0) cboWalk->SetListIndex(static_cast<int>(walk));
}

void frmT3WalkTest::cboWalk_Click() {
  front_.reset();
  waiting_.clear();
  typing_ = false;
  states_.clear();
  rows_.clear();
  lstItems->clear();
  if (keepsTicks_) lblTold->SetCaption({});
  const ItemKind kind = Chosen() == Walk::Relays ? ItemKind::Relay : ItemKind::Input;
  if (Chosen() == Walk::Stations) {
    for (int device = 1; device <= DeviceCount; ++device) {
      const int inputs = FennlinkDevice(FennlinkRecords(device).DeviceType).InputCount;
      for (int input = 0; input < inputs; ++input) RowOf({ItemKind::DeviceInput, device, input});
    }
  } else {
    for (int i = 0; i < PanelIOCount(); ++i) RowOf({kind, i});
  }
  // A walk goes on where the one before has ended.
  const auto open = std::find_if(rows_.begin(), rows_.end(), [this](const Item& item) {
    return !FindTested(tested_, ItemCode(item));
  });
  if (!rows_.empty()) {
    const auto first = open == rows_.end() ? rows_.begin() : open;
    auto* row = lstItems->topLevelItem(static_cast<int>(first - rows_.begin()));
    lstItems->setCurrentItem(row);
    lstItems->scrollToItem(row);
  }
  ShowWalking();
}

void frmT3WalkTest::ShowWalking() {
  const bool relays = Chosen() == Walk::Relays;
  cmdWalk->SetCaption(Polling() ? QStringLiteral("End") : QStringLiteral("Begin"));
  cboWalk->setEnabled(!Polling());
  lblMenusOff->setVisible(Polling());
  cmdTick->SetCaption(relays ? QStringLiteral("Tick, Next") : QStringLiteral("Tick"));
  cmdSkip->setVisible(relays);
  lblName->SetCaption(Chosen() == Walk::Stations ? QStringLiteral("Station's Name")
                                                 : QStringLiteral("Name"));
  ShowFront();
}

void frmT3WalkTest::ShowFront() {
  QString front =
      Polling() ? QStringLiteral("Press a switch.") : QStringLiteral("Begin, then press switches.");
  if (Chosen() == Walk::Relays && !Polling()) {
    const int first = std::max(0, lstItems->indexOfTopLevelItem(lstItems->currentItem()));
    front = rows_.empty() ? QString()
                          : QStringLiteral("Begin, and %1 goes on first.")
                                .arg(ItemText(LiveProject, rows_[static_cast<std::size_t>(first)]));
  }
  if (front_) {
    const auto state = states_.find(*front_);
    front = ItemCode(*front_) + u' ' + (state == states_.end() ? QString() : state->second.Word);
  }
  lblFront->SetCaption(front.trimmed());
  for (QWidget* control : std::initializer_list<QWidget*>{txtName, cmdTick, cmdSkip}) {
    control->setEnabled(front_.has_value());
  }
  cmdUntick->setEnabled(front_ && FindTested(tested_, ItemCode(*front_)));
  const QString name = front_ ? ToUnicode(NameOf(*front_)) : QString();
  txtName->setAccessibleName(front_ ? ItemCode(*front_) + QStringLiteral(" Name")
                                    : QStringLiteral("Name"));
  if (txtName->Text() == name) return;
  filling_ = true;
  txtName->SetText(name);
  filling_ = false;
}

std::string& frmT3WalkTest::NameOf(const Item& item) const {
  const bool station = item.Kind == ItemKind::DeviceInput;
  return *StoredName(LiveProject, station ? Item{ItemKind::Device, item.Number} : item);
}

QTreeWidgetItem* frmT3WalkTest::RowOf(const Item& item) {
  auto at = std::find(rows_.begin(), rows_.end(), item);
  if (at == rows_.end()) {
    at = rows_.insert(std::upper_bound(rows_.begin(), rows_.end(), item), item);
    auto* row = new QTreeWidgetItem;
    lstItems->insertTopLevelItem(static_cast<int>(at - rows_.begin()), row);
    ShowRow(*row, item);
  }
  return lstItems->topLevelItem(static_cast<int>(at - rows_.begin()));
}

void frmT3WalkTest::ShowRow(QTreeWidgetItem& row, const Item& item) {
  const auto state = states_.find(item);
  const TestedItem* tested = FindTested(tested_, ItemCode(item));
  const QStringList cells{
      ItemCode(item), ToUnicode(NameOf(item)),
      state == states_.end() ? QString() : state->second.Word,
      tested ? (tested->At.toString(QStringLiteral("yyyy-MM-dd HH:mm ")) + tested->By).trimmed()
             : QString()};
  for (int i = 0; i < cells.size(); ++i) {
    if (row.text(i) != cells[i]) row.setText(i, cells[i]);
  }
}

void frmT3WalkTest::ShowRows() {
  for (const auto& [item, state] : states_) ShowRow(*RowOf(item), item);
}

void frmT3WalkTest::BringToFront(const Item& item) {
  front_ = item;
  typing_ = false;
  QTreeWidgetItem* row = RowOf(item);
  ShowRow(*row, item);
  lstItems->setCurrentItem(row);
  lstItems->scrollToItem(row);
  ShowFront();
  txtName->setFocus();
  txtName->selectAll();
}

void frmT3WalkTest::lstItems_Click() {
  const int row = lstItems->indexOfTopLevelItem(lstItems->currentItem());
  if (row < 0) return;
  if (StepsRelays()) {
    AskPanel([this, row] { StepTo(row); });
  } else {
    BringToFront(rows_[static_cast<std::size_t>(row)]);
  }
}

void frmT3WalkTest::cmdTick_Click() {
  if (!StepsRelays()) {
    Tick();
    return;
  }
  AskPanel([this] {
    if (inHand_ < 0) return;
    Tick();
    StepTo(inHand_ + 1);
  });
}

void frmT3WalkTest::cmdSkip_Click() {
  if (!StepsRelays()) return;
  AskPanel([this] {
    if (inHand_ >= 0) StepTo(inHand_ + 1);
  });
}

void frmT3WalkTest::Tick() {
  if (!front_) return;
  const Item item = *front_;
  if (keepsTicks_) {
    std::erase_if(tested_,
                  [code = ItemCode(item)](const TestedItem& one) { return one.Item == code; });
    const QString by = txtBy->Text().simplified();
    tested_.push_back({ItemCode(item), by, Now()});
    WriteTested(CurrentFileName, tested_);
    lblTold->SetCaption(ItemText(LiveProject, item) +
                        (by.isEmpty()
                             ? QStringLiteral(" is ticked without a name: Tested By is empty.")
                             : QStringLiteral(" is ticked.")));
  }
  typing_ = false;
  ShowRow(*RowOf(item), item);
  if (waiting_.empty()) {
    ShowFront();
    txtName->selectAll();
  } else {
    BringToFront(waiting_.front());
    waiting_.pop_front();
  }
}

void frmT3WalkTest::cmdUntick_Click() {
  if (!front_ || !keepsTicks_) return;
  std::erase_if(tested_,
                [code = ItemCode(*front_)](const TestedItem& one) { return one.Item == code; });
  WriteTested(CurrentFileName, tested_);
  lblTold->SetCaption({});
  ShowRow(*RowOf(*front_), *front_);
  ShowFront();
}

void frmT3WalkTest::txtName_Change() {
  if (filling_ || !front_) return;
  typing_ = true;
  NameOf(*front_) = FromUnicode(txtName->Text());
  DataChanged = -1;
  ShowRow(*RowOf(*front_), *front_);
}

/// Enter ticks what is in front, once a press: a key that is held down must not run through all
/// relays.
bool frmT3WalkTest::eventFilter(QObject* watched, QEvent* event) {
  if (watched != txtName || event->type() != QEvent::KeyPress) {
    return PollingForm::eventFilter(watched, event);
  }
  const auto& key = static_cast<QKeyEvent&>(*event);
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  if (!key.isAutoRepeat()) RunHandler([this] { cmdTick_Click(); });
  return true;
}
