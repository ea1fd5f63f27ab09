#include "schedule/daylight_saving_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"

namespace {

QStringList WeekItems() {
  QStringList items;
  for (const std::string_view week : DSTWeeks) items << ToUnicode(DSTWeekListText(week));
  return items;
}

QStringList MonthItems() {
  QStringList items;
  for (const std::string_view month : MonthNames) items << ToUnicode(ShortName(month));
  return items;
}

}  // namespace

frmT3DaylightSavingTime::frmT3DaylightSavingTime()
    : ChildForm(Screen::DaylightSavingTime, QStringLiteral("Daylight Saving Time")) {}

void frmT3DaylightSavingTime::Form_Load() {
  chkEnableDaylightSavingTime =
      Add<CheckBox>(AddRow(), "chkEnableDaylightSavingTime",
                    QStringLiteral("Enable Automatic Daylight Saving Time Adjustment"));
  chkEnableDaylightSavingTime->Click = [this] { chkEnableDaylightSavingTime_Click(); };

  rule = new QGridLayout;
  AddRow()->addLayout(rule);
  auto& panel = PanelRecord;
  const QString of = QStringLiteral("Of");
  lblDSTStarts = AddCaption(0, 0, "lblDSTStarts", QStringLiteral("DST Starts"));
  cboDSTStartWeek = AddList(0, 1, "cboDSTStartWeek", WeekItems(), panel.DSTStartWeek);
  lblDSTStartOf = AddCaption(0, 2, "lblDSTStartOf", of);
  cboDSTStartMonth = AddList(0, 3, "cboDSTStartMonth", MonthItems(), panel.DSTStartMonth);
  lblDSTEnds = AddCaption(1, 0, "lblDSTEnds", QStringLiteral("DST Ends"));
  cboDSTEndWeek = AddList(1, 1, "cboDSTEndWeek", WeekItems(), panel.DSTEndWeek);
  lblDSTEndOf = AddCaption(1, 2, "lblDSTEndOf", of);
  cboDSTEndMonth = AddList(1, 3, "cboDSTEndMonth", MonthItems(), panel.DSTEndMonth);
  AddHint(
      QStringLiteral("The panel changes its own clock on these days. The last Sunday is the fourth "
                     "or the fifth of its month."));
}

Label* frmT3DaylightSavingTime::AddCaption(int row, int column, const char* name,
                                           const QString& caption) {
  auto* label = AddLabel(nullptr, name, caption);
  rule->addWidget(label, row, column);
  return label;
}

ComboBox* frmT3DaylightSavingTime::AddList(int row, int column, const char* name,
                                           const QStringList& items, Int16& field) {
  auto* list = Add<ComboBox>(nullptr, name);
  list->SetItems(items);
  list->Click = [list, &field] {
    field = static_cast<Int16>(list->ListIndex() + 1);
    DataChanged = -1;
  };
  list->setAccessibleName(row == 0 ? lblDSTStarts->Caption() : lblDSTEnds->Caption());
  rule->addWidget(list, row, column);
  return list;
}

void frmT3DaylightSavingTime::DSTOptEn(Int16 enable) {
  const std::array<QWidget*, 8> controls = {cboDSTStartWeek, cboDSTStartMonth, cboDSTEndWeek,
                                            cboDSTEndMonth,  lblDSTStarts,     lblDSTStartOf,
                                            lblDSTEnds,      lblDSTEndOf};
  for (QWidget* control : controls) control->setEnabled(enable != 0);
}

void frmT3DaylightSavingTime::chkEnableDaylightSavingTime_Click() {
  PanelRecord.DSTEnabled = chkEnableDaylightSavingTime->Value() != 0 ? -1 : 0;
  DSTOptEn(PanelRecord.DSTEnabled);
  DataChanged = -1;
}

void frmT3DaylightSavingTime::Form_Activate() {
  const bool enabled = PanelRecord.DSTEnabled != 0;
  chkEnableDaylightSavingTime->SetValue(enabled ? 1 : 0);
  DSTOptEn(enabled ? -1 : 0);
  cboDSTStartWeek->SetListIndex(PanelRecord.DSTStartWeek - 1);
  cboDSTStartMonth->SetListIndex(PanelRecord.DSTStartMonth - 1);
  cboDSTEndWeek->SetListIndex(PanelRecord.DSTEndWeek - 1);
  cboDSTEndMonth->SetListIndex(PanelRecord.DSTEndMonth - 1);
}
