#include "schedule/all_dates_form.h"

#include "panel/code_page.h"
#include "panel/field_facts.h"
#include "panel/live_project.h"
#include "panel/setting.h"
#include "panel/words.h"
#include "schedule/rules/panel_days.h"
#include "schedule/time_pair_form.h"
#include "shell/controls/go_to_item.h"

frmT3AllDates::frmT3AllDates() : ChildForm(Screen::AllDates, QStringLiteral("All Dates")) {}

void frmT3AllDates::Form_Load() {
  lblNoDates = AddLabel(AddRow(), "lblNoDates",
                        QStringLiteral("No date of the year has open and close times of its own."));
  lblNoDates->SetLook(Label::Look::Quiet);
  lstDates = new QTreeWidget;
  lstDates->setObjectName(QStringLiteral("lstDates"));
  lstDates->setAccessibleName(QStringLiteral("Dates"));
  lstDates->setHeaderLabels(
      {QStringLiteral("Date"), QStringLiteral("Open"), QStringLiteral("Close")});
  lstDates->setRootIsDecorated(false);
  lstDates->setUniformRowHeights(true);
  lstDates->setAllColumnsShowFocus(true);
  connect(lstDates, &QTreeWidget::itemActivated, this,
          [this] { RunHandler([this] { lstDates_Click(); }); });
  AddWidget(lstDates);
  UseSpareHeight();
  AddHint(
      QStringLiteral("Enter or a double click opens the date. Timers that do not ignore "
                     "holidays run on none of them."));
}

void frmT3AllDates::Form_Activate() {
  const auto& panel = PanelRecord;
  lstDates->clear();
  for (int month = 0; month < static_cast<int>(MonthNames.size()); ++month) {
    for (const int date : DatesWithTimes(panel, month)) {
      auto* line = new QTreeWidgetItem(
          lstDates, {QStringLiteral("%1 %2")
                         .arg(ToUnicode(MonthNames[static_cast<std::size_t>(month)]))
                         .arg(date + 1),
                     TimeOfDate(panel.DateOpenTime(month, date)),
                     TimeOfDate(panel.DateCloseTime(month, date))});
      line->setData(0, Qt::UserRole, QPoint(month, date));
    }
  }
  const bool any = lstDates->topLevelItemCount() > 0;
  lblNoDates->setVisible(!any);
  lstDates->setVisible(any);
  if (any) lstDates->setCurrentItem(lstDates->topLevelItem(0));
}

void frmT3AllDates::lstDates_Click() {
  const QTreeWidgetItem* line = lstDates->currentItem();
  if (!line) return;
  const QPoint date = line->data(0, Qt::UserRole).toPoint();
  GoToSetting(nullptr,
              {&FactsOf(&PanelRecordType::DateOpenTime), nullptr, {0, date.x(), date.y()}});
}
