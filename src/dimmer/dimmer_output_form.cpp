#include "dimmer/dimmer_output_form.h"

#include <QLabel>

#include "dimmer/dimmer_lists.h"
#include "panel/dimmer_words.h"
#include "panel/fennlink_record.h"
#include "panel/format.h"
#include "panel/panel_record.h"

// What the screen is made of. What it does stands in dimmer_output_handlers.cpp.

namespace {

constexpr int PhotocellDevices = 64;
constexpr int Targets = 256;

/// The texts of the codes 0 to `count` - 1.
template <typename TextOf>
QStringList CodeItems(int count, TextOf textOf) {
  QStringList items;
  for (int code = 0; code < count; ++code) items << QString::fromStdString(textOf(code));
  return items;
}

QStringList LevelItems(const QString& title) {
  return QStringList(title + QStringLiteral(": PhotoCell")) + PercentItems(title);
}

std::string FadeRateText(int index) {
  return "Fade Rate: " + NumberText(FadeSeconds(index)) + " Sec";
}

std::string TargetText(int target) {
  const Int16 footCandles = CodeToFootCandles(static_cast<Int16>(target));
  return "Target: " + NumberText(target) + "/255 (" + NumberText(footCandles) + " fc)";
}

}  // namespace

frmT3DimmerOutput::frmT3DimmerOutput()
    : ChildForm(Screen::DimmerOutput, QStringLiteral("Dimmer Outputs")) {}

void frmT3DimmerOutput::Form_Load() {
  BuildSelectors(AddRow());
  lblNotEnabled = AddLabel(AddRow(), "lblNotEnabled",
                           QStringLiteral("Check Device Enabled to set this device's outputs."));
  lblNotEnabled->SetLook(Label::Look::Quiet);
  frmConfig = new QWidget;
  frmConfig->setObjectName(QStringLiteral("frmConfig"));
  AddWidget(frmConfig);
  UseSpareHeight();
  auto* config = new QHBoxLayout(frmConfig);
  config->setContentsMargins(0, 0, 0, 0);
  auto* output = new QVBoxLayout;
  output->setSpacing(4);
  config->addLayout(output, 2);
  BuildLevels(output);
  BuildTracking(output);
  auto* slots = new QVBoxLayout;
  slots->setSpacing(4);
  config->addLayout(slots, 3);
  BuildSlots(slots);

  // At the foot, where they stay when the device is not enabled.
  auto* foot = new QWidget;
  layout()->addWidget(foot);
  auto* copies = new QHBoxLayout(foot);
  copies->setContentsMargins(0, 0, 0, 0);
  copies->setAlignment(Qt::AlignLeft);
  cmdCopyConfig = Add<Button>(copies, "cmdCopyConfig",
                              QStringLiteral("Copy Configuration To Selected Dimmer Outputs"));
  cmdCopyConfig->Click = [this] { cmdCopyConfig_Click(); };
  cmdCopyControl = Add<Button>(copies, "cmdCopyControl",
                               QStringLiteral("Copy Control Options To Selected Dimmer Outputs"));
  cmdCopyControl->Click = [this] { cmdCopyControl_Click(); };
}

void frmT3DimmerOutput::BuildSelectors(QBoxLayout* row) {
  cboDDev = AddDeviceList(row);
  cboDDev->Click = [this] { cboDDev_Click(); };
  cboDOut = AddOutputList(row);
  AddSelector(cboDDev);
  AddSelector(cboDOut);
  OnChange(cboDOut, &frmT3DimmerOutput::cboDOut_Click);
  chkEnabled = Add<CheckBox>(row, "chkEnabled", QStringLiteral("Device Enabled"));
  OnChange(chkEnabled, &frmT3DimmerOutput::chkEnabled_Click);
  row->addStretch(1);
  auto* levels = new QHBoxLayout;
  levels->setSpacing(0);
  row->addLayout(levels);
  for (int out = 0; out < DimmerOutputCount; ++out) {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    levels->addLayout(column);
    const QString title = QStringLiteral("Out %1").arg(out + 1);
    for (auto [labels, name] :
         {std::pair(&lblHdrLev, "lblHdrLev"), std::pair(&lblShowLevels, "lblShowLevels")}) {
      auto* label = AddLabel(column, name, {});
      KeepRoomWhileHidden(*label);
      label->setFixedHeight(label->fontMetrics().height() + 1);
      labels->Add(label, QString::fromLatin1(name));
    }
    lblHdrLev(out).SetLook(Label::Look::Quiet);
    lblHdrLev(out).SetCaption(title);
    lblShowLevels(out).SetWidthInChars(6);
    lblShowLevels(out).setAccessibleName(title);
  }
  cmdUpdate = Add<Button>(row, "cmdUpdate", QStringLiteral("Update"));
  cmdUpdate->Click = [this] { cmdUpdate_Click(); };
  tmrStatus = new Timer(this, "tmrStatus", 500);
  tmrStatus->Tick = [this] { tmrStatus_Timer(); };
}

ComboBox* frmT3DimmerOutput::AddList(QBoxLayout* row, const char* name, const char* title,
                                     const QStringList& items, Handler handler) {
  auto* list = AddTitledList(row, name, QString::fromLatin1(title), items);
  OnChange(list, handler);
  return list;
}

void frmT3DimmerOutput::BuildLevels(QBoxLayout* column) {
  cboPowerOnLevel =
      AddList(column, "cboPowerOnLevel", "Power On Level", PercentItems("Power On Level"),
              &frmT3DimmerOutput::cboPowerOnLevel_Click);
  cboMinLevel = AddList(column, "cboMinLevel", "Min Output", LevelItems("Min Output"),
                        &frmT3DimmerOutput::cboMinLevel_Click);
  cboMaxLevel = AddList(column, "cboMaxLevel", "Max Output", LevelItems("Max Output"),
                        &frmT3DimmerOutput::cboMaxLevel_Click);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  cboFadeRate = AddList(row, "cboFadeRate", "Fade Rate", CodeItems(FadeRateCount, FadeRateText),
                        &frmT3DimmerOutput::cboFadeRate_Click);
  cboDMX = AddList(
      row, "cboDMX", "DMX Channel",
      QStringList("DMX - Disabled") + CountedItems("DMX Channel: ", 1, DMXChannelRange.Last),
      &frmT3DimmerOutput::cboDMX_Click);
}

void frmT3DimmerOutput::BuildTracking(QBoxLayout* column) {
  cboPCTrack = AddList(column, "cboPCTrack", "PC Tracking",
                       {"PC Tracking: Disabled", "PC Tracking: 2 point"},
                       &frmT3DimmerOutput::cboPCTrack_Click);
  auto* source = new QHBoxLayout;
  column->addLayout(source);
  lblPCTSource = AddLabel(source, "lblPCTSource", QStringLiteral("Tracking Photocell"));
  cboPCDev = AddList(source, "cboPCDev", "Tracking Photocell",
                     HexItems("Device: ", PhotocellDevices), &frmT3DimmerOutput::cboPCDev_Click);
  cboTarget = AddList(column, "cboTarget", "Target", CodeItems(Targets, TargetText),
                      &frmT3DimmerOutput::cboTarget_Click);
  scale = new frmScale;
  column->addWidget(scale, 1);
  column->addStretch(0);
}

void frmT3DimmerOutput::BuildSlots(QBoxLayout* column) {
  auto* grid = new RowGrid(ControlSlotCount, QStringLiteral("Control "));
  const QString longest =
      QStringLiteral(" 16-D:40-I:08-Revert To Photocell-Instant-Revert When Input Opens");
  lblSummary = grid->Add<Label>("lblSummary", {.Chars = 1, .Words = {longest}});
  lblSummary.OnEach(&Label::Click, this, &frmT3DimmerOutput::lblSummary_Click);
  grid->layout()->setSpacing(0);
  for (int slot = 0; slot < ControlSlotCount; ++slot) {
    lblSummary(slot).setFixedHeight(grid->fontMetrics().height() + 3);
    lblSummary(slot).setMaximumWidth(QWIDGETSIZE_MAX);
  }
  column->addWidget(grid);

  auto* settings = new QGridLayout;
  settings->setHorizontalSpacing(6);
  settings->setVerticalSpacing(4);
  settings->setColumnStretch(1, 1);
  column->addLayout(settings);
  const auto addRow = [&](QWidget*& label, const QString& caption) {
    const int row = settings->rowCount();
    label = new QLabel(caption);
    label->setForegroundRole(QPalette::PlaceholderText);
    KeepRoomWhileHidden(*label);
    settings->addWidget(label, row, 0);
    auto* lists = new QHBoxLayout;
    lists->setAlignment(Qt::AlignLeft);
    settings->addLayout(lists, row, 1);
    return lists;
  };
  QWidget* slot = nullptr;
  QHBoxLayout* row = addRow(slot, QStringLiteral("Slot"));
  cboCONum = AddList(row, "cboCONum", "Control", CountedItems("Control: ", 1, ControlSlotCount, 2),
                     &frmT3DimmerOutput::cboCONum_Click);
  cboCONum->ChoosesItem = true;
  const auto types = static_cast<int>(ControlTypes.size());
  cboCOTyp = AddTitledList(row, "cboCOTyp", "Control Type", CodeItems(types, ControlTypeListText));
  cboCOTyp->Click = [this] { cboCOTyp_Click(); };
  row = addRow(SourceCaption, QStringLiteral("Source"));
  cboCODev =
      AddList(row, "cboCODev", "Device", QStringList("Hardwired") + HexItems("D:", DeviceCount),
              &frmT3DimmerOutput::cboCODev_Click);
  cboCONod = AddList(row, "cboCONod", "Node", {}, &frmT3DimmerOutput::cboCONod_Click);
  cboCONod->hide();
  cboCOInp = AddList(row, "cboCOInp", "Input", CountedItems("I:", 1, ItemCount, 2),
                     &frmT3DimmerOutput::cboCOInp_Click);
  cboCOTmr = AddList(row, "cboCOTmr", "Timer", CountedItems("T:", 1, ItemCount, 2),
                     &frmT3DimmerOutput::cboCOTmr_Click);
  cboCOPrs = AddList(row, "cboCOPrs", "Preset", CountedItems("P:", 1, ItemCount, 2),
                     &frmT3DimmerOutput::cboCOPrs_Click);
  cboCOFade =
      AddList(row, "cboCOFade", "Fade", Items(ControlFades), &frmT3DimmerOutput::cboCOFade_Click);
  row = addRow(ActionCaption, QStringLiteral("Action"));
  cboCOAct = AddList(row, "cboCOAct", "Action", CodeItems(ControlActionCount, ControlActionText),
                     &frmT3DimmerOutput::cboCOAct_Click);
  cboCORevert =
      AddList(row, "cboCORevert", "Revert", CodeItems(ControlRevertCount, ControlRevertText),
              &frmT3DimmerOutput::cboCORevert_Click);
  // The screen must not jump when a slot has less to set.
  for (ComboBox* list : {cboCOAct, cboCOFade, cboCORevert}) KeepRoomWhileHidden(*list);
  SourceCaption->setObjectName(QStringLiteral("lblSource"));
  ActionCaption->setObjectName(QStringLiteral("lblAction"));
  column->addStretch(1);
}
