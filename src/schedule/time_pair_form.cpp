#include "schedule/time_pair_form.h"

#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/lists_in_words.h"
#include "panel/time_values.h"
#include "panel/words.h"
#include "schedule/rules/panel_days.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/field_column.h"
#include "shell/shell.h"

struct TimePairScreen {
  Screen Name;
  QString Caption;
  int Rows;
  QString RowWord;  ///< Starts the tooltips; empty where a row's name says it all.
  const char* NameLabel;
  int NameChars;                    ///< Least width of the names, in average characters.
  std::array<FieldCells, 2> Times;  ///< Quarter hours since midnight.
  std::array<QString, 2> Headers;
  QString Hint;
  bool ByMonth;  ///< The rows are the dates of a month; their times may be cleared.
  /// The names of the rows that are shown; `month`, from 0, matters by month only.
  QStringList (*Names)(int month);
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
     {CellsOf<&PanelRecordType::NormalOpenTime>(), CellsOf<&PanelRecordType::NormalCloseTime>()},
     {QStringLiteral("Open"), QStringLiteral("Close")},
     QStringLiteral(
         "A date with times of its own, under Single Dates, does not follow its weekday."),
     false,
     [](int) { return Items(WeekdayNames); }},
    {Screen::OpenAndCloseTimeSingleDates,
     QStringLiteral("Open And Close Times, Single Dates"),
     LongestMonth,
     {},
     "lblDate",
     10,
     {CellsOf<&PanelRecordType::DateOpenTime>(), CellsOf<&PanelRecordType::DateCloseTime>()},
     {QStringLiteral("Open"), QStringLiteral("Close")},
     QStringLiteral(
         "A date that shows --:-- follows its weekday. Clear takes away both times of the date."),
     true,
     DateNames},
    {Screen::InputActiveTimes,
     QStringLiteral("Input Active Times"),
     ItemCount,
     QStringLiteral("Input "),
     "lblInputName",
     10,
     {CellsOf<&PanelRecordType::InputEnableTime>(), CellsOf<&PanelRecordType::InputDisableTime>()},
     {QStringLiteral("Enable"), QStringLiteral("Disable")},
     QStringLiteral("An input whose two times are equal is always active."),
     false,
     InputNames},
});

}  // namespace

QString TimeOfDate(Int16 quarterHours) {
  return quarterHours >= NoEntry ? QStringLiteral("--:--")
                                 : QString::fromStdString(QuarterHourText(quarterHours));
}

TimePairForm::TimePairForm(Screen name)
    : ChildForm(name, ScreenRow(TimePairScreens, name).Caption),
      screen(ScreenRow(TimePairScreens, name)) {}

void TimePairForm::Form_Load() {
  if (screen.ByMonth) AddMonths();
  grid = new RowGrid(screen.Rows, screen.RowWord);
  lblName = grid->AddNames(screen.NameLabel, screen.NameChars);
  for (std::size_t column = 0; column < lblTime.size(); ++column) {
    lblTime[column].Add(
        this, grid,
        {.Cells = screen.Times[column].Control,
         .List = "cboNewTime",
         .Look = {.Header = QByteArray(screen.Times[column].Control) + "Header",
                  .HeaderText = screen.Headers[column],
                  .Words = {QStringLiteral("12:30A")}},
         .Items = TimeItems(screen.ByMonth),
         .Item = [this, column](int row) { return ItemOf(Time(column, row)); },
         .Store = [this, column](int row, int item) { StoreTime(column, row, item); },
         .Text = [this, column](int row) { return TimeText(Time(column, row)); },
         .OpeningMarks = true},
        &TimePairForm::ShowTimes);
  }
  // One column of rows keeps to the left, its cells no wider than they need be.
  if (screen.Rows <= RowGrid::RowsInColumn) {
    AddRow()->addWidget(grid, 0, Qt::AlignLeft);
  } else if (screen.ByMonth) {
    AddDates();
  } else {
    AddWidget(grid);
  }
  if (!screen.ByMonth) AddHint(screen.Hint);
}

void TimePairForm::AddMonths() {
  auto* row = AddRow();
  for (const std::string_view month : MonthNames) {
    auto* option = new OptionButton(ToUnicode(ShortName(month)));
    row->addWidget(option);
    optMonth.Add(option, QStringLiteral("optMonth"));
  }
  optMonth(Month).Select();
  optMonth.OnEach(&OptionButton::Click, this, &TimePairForm::optMonth_Click);
}

/// The grid, and beside it what leads to the whole year. Below it a line would not fit.
void TimePairForm::AddDates() {
  auto* beside = new QWidget;
  auto* row = new QHBoxLayout(beside);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(grid, 1);
  auto* right = new QVBoxLayout;
  row->addLayout(right);
  auto* all = Add<Button>(right, "cmdAllDates", QStringLiteral("All Dates"));
  right->setAlignment(all, Qt::AlignRight);
  all->Click = [] {
    UnloadAllForms();
    ShowForm(Screen::AllDates);
  };
  AddHint(screen.Hint, right);
  right->addStretch(1);
  AddWidget(beside);
}

/// Months with dates of their own stand out, to a screen reader by their number: "March - 3 dates".
void TimePairForm::MarkMonths() {
  for (int month = 0; month < optMonth.Count(); ++month) {
    const QString name = ToUnicode(MonthNames[static_cast<std::size_t>(month)]);
    const auto dates = static_cast<qsizetype>(DatesWithTimes(PanelRecord, month).size());
    OptionButton& option = optMonth(month);
    const QString told =
        dates == 0 ? name : name + QStringLiteral(" - ") + Counted(dates, QStringLiteral("date"));
    option.setAccessibleName(told);
    option.setToolTip(told);
    QFont font = option.font();
    font.setBold(dates > 0);
    font.setUnderline(dates > 0);
    option.setFont(font);
  }
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

Int16& TimePairForm::Time(std::size_t column, int row) const {
  return screen.Times[column].At(Month, row);
}

int TimePairForm::ItemOf(Int16 time) const {
  if (!screen.ByMonth) return time;
  return time >= NoEntry ? ClearItem : time + FirstTimeItem;
}

QString TimePairForm::TimeText(Int16 time) const {
  return screen.ByMonth ? TimeOfDate(time) : QString::fromStdString(QuarterHourText(time));
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
  MarkMonths();
  for (const ListColumn& column : lblTime) column.Show(screen.Rows);
}

void TimePairForm::optMonth_Click(int index) {
  Month = index;
  ShowNames();
  ShowTimes();
}

void TimePairForm::StoreTime(std::size_t column, int row, int item) {
  Int16& chosen = Time(column, row);
  Int16& other = Time(1 - column, row);
  if (!screen.ByMonth) {
    chosen = static_cast<Int16>(item);
  } else if (item == ClearItem) {
    chosen = other = NoEntry;
  } else {
    chosen = static_cast<Int16>(item - FirstTimeItem);
    if (other == NoEntry) other = 0;
  }
}
