#include "schedule/time_pair_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/time_values.h"
#include "panel/words.h"
#include "shell/editor_rows.h"

struct TimePairScreen {
  Screen Name;
  QString Caption;
  int Rows;
  QString RowWord;  ///< Starts the tooltips; empty where a row's name says it all.
  const char* NameLabel;
  int NameChars;  ///< Least width of the names, in average characters.
  std::array<const char*, 2> TimeLabels;
  std::array<QString, 2> Headers;
  QString Hint;
  bool ByMonth;  ///< The rows are the dates of a month; their times may be cleared.
  /// The names of the rows that are shown; `month`, from 0, matters by month only.
  QStringList (*Names)(int month);
  /// Quarter hours since midnight of a column, 0 or 1.
  Int16& (*Time)(int column, int month, int row);
};

namespace {

constexpr int LongestMonth = 31;

/// In the list of a date "Clear" stands before the times.
constexpr int ClearItem = 0;
constexpr int FirstTimeItem = 1;

QStringList TimeItems(bool clearable) {
  QStringList items;
  if (clearable) items << QStringLiteral("Clear");
  for (int quarter = 0; quarter < QuarterHoursPerDay; ++quarter) {
    items << QString::fromStdString(QuarterHourText(quarter));
  }
  return items;
}

/// "Jan 01" and so on.
QStringList DateNames(int month) {
  const auto index = static_cast<std::size_t>(month);
  const QString name = ToUnicode(ShortName(MonthNames[index]));
  QStringList names;
  for (int date = 1; date <= MonthDays[index]; ++date) names << name + u' ' + TwoDigits(date);
  return names;
}

QStringList InputNames(int) {
  return ItemNames(PanelRecord.InputName).mid(0, std::max<int>(PanelIOCount(), 0));
}

const auto TimePairScreens = std::to_array<TimePairScreen>({
    {Screen::OpenAndCloseTimeNormalDays,
     QStringLiteral("Open And Close Times, Normal Days"),
     static_cast<int>(WeekdayNames.size()),
     {},
     "lblDay",
     16,
     {"lblOpenTime", "lblCloseTime"},
     {QStringLiteral("Open"), QStringLiteral("Close")},
     QStringLiteral(
         "A date with times of its own, under Single Dates, does not follow its weekday."),
     false,
     [](int) { return Items(WeekdayNames); },
     [](int column, int, int day) -> Int16& {
       return (column == 0 ? PanelRecord.NormalOpenTime : PanelRecord.NormalCloseTime)(day);
     }},
    {Screen::OpenAndCloseTimeSingleDates,
     QStringLiteral("Open And Close Times, Single Dates"),
     LongestMonth,
     {},
     "lblDate",
     10,
     {"lblOpenTime", "lblCloseTime"},
     {QStringLiteral("Open"), QStringLiteral("Close")},
     QStringLiteral(
         "A date that shows --:-- follows its weekday. Clear takes away both times of the date."),
     true,
     DateNames,
     [](int column, int month, int date) -> Int16& {
       return (column == 0 ? PanelRecord.DateOpenTime : PanelRecord.DateCloseTime)(month, date);
     }},
    {Screen::InputActiveTimes,
     QStringLiteral("Input Active Times"),
     ItemCount,
     QStringLiteral("Input "),
     "lblInputName",
     10,
     {"lblInputEnableTime", "lblInputDisableTime"},
     {QStringLiteral("Enable"), QStringLiteral("Disable")},
     QStringLiteral("An input whose two times are equal is always active."),
     false,
     InputNames,
     [](int column, int, int input) -> Int16& {
       return (column == 0 ? PanelRecord.InputEnableTime : PanelRecord.InputDisableTime)(input);
     }},
});

}  // namespace

TimePairForm::TimePairForm(Screen name)
    : ChildForm(name, ScreenRow(TimePairScreens, name).Caption),
      screen(ScreenRow(TimePairScreens, name)) {}

void TimePairForm::Form_Load() {
  if (screen.ByMonth) AddMonths();
  grid = new RowGrid(screen.Rows, screen.RowWord);
  lblName = grid->AddNames(screen.NameLabel, screen.NameChars);
  for (std::size_t column = 0; column < lblTime.size(); ++column) {
    const std::string header = screen.TimeLabels[column] + std::string("Header");
    lblTime[column] =
        grid->Add<Label>(screen.TimeLabels[column], {.Chars = 8,
                                                     .Header = header.c_str(),
                                                     .HeaderText = screen.Headers[column],
                                                     .Act = CellAct::OpensList,
                                                     .Words = {QStringLiteral("12:30A")}});
    for (int row = 0; row < screen.Rows; ++row) {
      lblTime[column](row).Click = [this, column, row] {
        lblTime_Click(static_cast<int>(column), row);
      };
    }
  }
  // One column of rows keeps to the left, its cells no wider than they need be.
  if (screen.Rows <= RowGrid::RowsInColumn) {
    AddRow()->addWidget(grid, 0, Qt::AlignLeft);
  } else {
    AddWidget(grid);
  }
  cboNewTime = new InPlaceList(this, "cboNewTime", TimeItems(screen.ByMonth));
  cboNewTime->Click = [this] { cboNewTime_Click(); };
  AddHint(screen.Hint);
}

void TimePairForm::AddMonths() {
  auto* row = AddRow();
  for (const std::string_view month : MonthNames) {
    auto* option = new OptionButton(ToUnicode(ShortName(month)));
    option->setAccessibleName(ToUnicode(month));
    row->addWidget(option);
    optMonth.Add(option, QStringLiteral("optMonth"));
  }
  optMonth(Month).Select();
  optMonth.OnEach(&OptionButton::Click, this, &TimePairForm::optMonth_Click);
}

QWidget* TimePairForm::Selector() const {
  return screen.ByMonth ? &optMonth(Month) : nullptr;
}

void TimePairForm::ChooseBeside(int step) {
  const int month = Month + step;
  if (month < 0 || month >= optMonth.Count()) return;
  const bool focused = optMonth(Month).hasFocus();
  optMonth(month).Select();
  if (focused) optMonth(month).setFocus(Qt::OtherFocusReason);
}

void TimePairForm::Form_Activate() {
  ShowNames();
  ShowTimes();
}

Int16& TimePairForm::Time(int column, int row) const {
  return screen.Time(column, Month, row);
}

void TimePairForm::ShowNames() {
  const QStringList names = screen.Names(Month);
  const int count = static_cast<int>(names.size());
  for (int row = 0; row < count; ++row) {
    lblName(row).SetCaption(names[row]);
    if (screen.RowWord.isEmpty()) grid->SetRowTitle(row, names[row]);
  }
  grid->ShowRows(count);
}

void TimePairForm::ShowTimes() {
  for (int column = 0; column < 2; ++column) {
    for (int row = 0; row < screen.Rows; ++row) {
      const Int16 time = Time(column, row);
      const bool none = screen.ByMonth && time >= NoEntry;
      lblTime[static_cast<std::size_t>(column)](row).SetCaption(
          none ? QStringLiteral("--:--") : QString::fromStdString(QuarterHourText(time)));
    }
  }
}

void TimePairForm::optMonth_Click(int index) {
  Month = index;
  ShowNames();
  ShowTimes();
}

void TimePairForm::lblTime_Click(int column, int index) {
  SelectedColumn = column;
  SelectedRow = static_cast<Int16>(index);
  const Int16 time = Time(column, index);
  int item = time;
  if (screen.ByMonth) item = time >= NoEntry ? ClearItem : time + FirstTimeItem;
  cboNewTime->Open(lblTime[static_cast<std::size_t>(column)](index), item);
  DataChanged = -1;
}

void TimePairForm::cboNewTime_Click() {
  const int item = cboNewTime->ListIndex();
  Int16& chosen = Time(SelectedColumn, SelectedRow);
  Int16& other = Time(1 - SelectedColumn, SelectedRow);
  if (!screen.ByMonth) {
    chosen = static_cast<Int16>(item);
  } else if (item == ClearItem) {
    chosen = other = NoEntry;
  } else {
    chosen = static_cast<Int16>(item - FirstTimeItem);
    if (other == NoEntry) other = 0;
  }
  cboNewTime->Close();
  ShowTimes();
  DataChanged = -1;
}
