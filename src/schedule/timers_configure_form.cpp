#include "schedule/timers_configure_form.h"

#include "panel/format.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "panel/words.h"
#include "schedule/rules/timer_words.h"
#include "shell/controls/editor_rows.h"
#include "shell/controls/go_to_item.h"
#include "shell/shell.h"

namespace {

constexpr int HoursOfHalfDay = 12;
constexpr int Weekdays = 0;
constexpr int Holiday = 1;

QStringList HourItems() {
  QStringList items;
  for (int hour = 0; hour < HoursOfHalfDay; ++hour) {
    items << QStringLiteral("%1:").arg(hour == 0 ? HoursOfHalfDay : hour);
  }
  return items;
}

QStringList MinuteItems() {
  QStringList items;
  for (int minute = 0; minute < 60; ++minute) items << TwoDigits(minute);
  return items;
}

QStringList OffsetItems() {
  return NumberItems(0, LargestTimerOffset, {}, QStringLiteral(" Min"));
}

/// A page of `pages` whose controls stand in a row at its left.
QHBoxLayout* AddPage(QStackedLayout* pages) {
  auto* page = new QWidget;
  auto* row = new QHBoxLayout(page);
  row->setContentsMargins(0, 0, 0, 0);
  row->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  pages->addWidget(page);
  return row;
}

ControlArray<OptionButton> AddOptions(QBoxLayout* frame, const QString& name,
                                      const QStringList& captions) {
  ControlArray<OptionButton> options;
  auto* row = new QHBoxLayout;
  row->setAlignment(Qt::AlignLeft);
  row->setSpacing(20);
  for (const QString& caption : captions) {
    auto* option = new OptionButton(caption);
    row->addWidget(option);
    options.Add(option, name);
  }
  frame->addLayout(row);
  options(0).Select();
  return options;
}

}  // namespace

frmT3TimersConfigure::frmT3TimersConfigure()
    : ChildForm(Screen::TimersConfigure, QStringLiteral("Configure Timers")) {}

void frmT3TimersConfigure::Form_Load() {
  Loading = -1;
  auto* row = AddRow();
  AddLabel(row, "lblTimer", QStringLiteral("Timer"));
  cboTimerNumber = AddTimerList(row, "cboTimerNumber", QStringLiteral("Timer"), {},
                                &frmT3TimersConfigure::cboTimerNumber_Click);
  AddSelector(cboTimerNumber);
  BuildTimeFrame();
  BuildDayFrame();
  lblTimerInWords = new Label;
  lblTimerInWords->setObjectName(QStringLiteral("lblTimerInWords"));
  lblTimerInWords->SetLook(Label::Look::Quiet);
  AddWidget(lblTimerInWords);
  AddNext();
  // The last stop of Tab.
  auto* all = Add<Button>(row, "cmdAllTimers", QStringLiteral("All Timers"));
  all->setToolTip(QStringLiteral("All timers on one sheet (Ctrl+T)"));
  all->Click = [] {
    UnloadAllForms();
    ShowForm(Screen::AllTimers);
  };
  Loading = 0;
}

/// What it does stands below each other: in one row three long parts would widen the screen.
void frmT3TimersConfigure::AddNext() {
  auto* next = AddRow();
  next->setSpacing(fontMetrics().averageCharWidth() * 2);
  lblTimerNext = AddLabel(next, "lblTimerNext", {});
  lblTimerNext->SetLook(Label::Look::Quiet);
  lblTimerTime = AddLabel(next, "lblTimerTime", {});
  lblTimerTime->SetLook(Label::Look::WebLink);
  lblTimerTime->Click = [this] { lblTimerTime_Click(); };
  for (Label* told : {lblTimerNext, lblTimerTime}) {
    // What is done may be long: room is its alone to give.
    told->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    next->setAlignment(told, Qt::AlignTop);
    told->setToolTip(QStringLiteral("By this computer's clock"));
  }
  auto* acts = new QVBoxLayout;
  acts->setSpacing(0);
  next->addLayout(acts);
  constexpr int screensOfActs = 4;
  for (int i = 0; i < screensOfActs; ++i) {
    auto* act = new Label;
    act->SetLook(Label::Look::WebLink);
    act->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    acts->addWidget(act, 0, Qt::AlignLeft);
    lblTimerActs.Add(act, QStringLiteral("lblTimerActs"));
    act->Click = [this, i] { lblTimerActs_Click(i); };
  }
}

void frmT3TimersConfigure::BuildTimeFrame() {
  auto* frame = new QVBoxLayout(AddFrame("fraTime", QStringLiteral("Time")));
  optTimeType = AddOptions(frame, QStringLiteral("optTimeType"),
                           {QStringLiteral("Normal Time"), QStringLiteral("Astro Time"),
                            QStringLiteral("Open/Close Time")});
  optTimeType.OnEach(&OptionButton::Click, this, &frmT3TimersConfigure::optTimeType_Click);
  timeLists = new QStackedLayout;
  frame->addLayout(timeLists);

  auto* page = AddPage(timeLists);
  using Form = frmT3TimersConfigure;
  cboNormalTimeHour = AddTimerList(page, "cboNormalTimeHour", QStringLiteral("Hour"), HourItems(),
                                   &Form::cboNormalTimeHour_Click);
  cboNormalTimeMinute = AddTimerList(page, "cboNormalTimeMinute", QStringLiteral("Minute"),
                                     MinuteItems(), &Form::cboNormalTimeMinute_Click);
  cboNormalTimeAmPm =
      AddTimerList(page, "cboNormalTimeAmPm", QStringLiteral("AM or PM"),
                   {QStringLiteral("AM"), QStringLiteral("PM")}, &Form::cboNormalTimeAmPm_Click);

  const std::span events = RelativeEvents;
  page = AddPage(timeLists);
  cboAstroType = AddTimerList(page, "cboAstroType", QStringLiteral("Event"),
                              Items(events.first(AstroEventCount)), &Form::cboAstroType_Click);
  cboMinuteFromAstro =
      AddTimerList(page, "cboMinuteFromAstro", QStringLiteral("Minutes from the event"),
                   OffsetItems(), &Form::cboMinuteFromAstro_Click);
  page = AddPage(timeLists);
  cboOpenCloseType =
      AddTimerList(page, "cboOpenCloseType", QStringLiteral("Event"),
                   Items(events.subspan(AstroEventCount)), &Form::cboOpenCloseType_Click);
  cboMinuteFromOpenClose =
      AddTimerList(page, "cboMinuteFromOpenClose", QStringLiteral("Minutes from the event"),
                   OffsetItems(), &Form::cboMinuteFromOpenClose_Click);
}

void frmT3TimersConfigure::BuildDayFrame() {
  auto* frame = new QVBoxLayout(AddFrame("fraDay", QStringLiteral("Day")));
  optDaysType = AddOptions(frame, QStringLiteral("optDaysType"),
                           {QStringLiteral("Normal Days"), QStringLiteral("Holiday")});
  optDaysType.OnEach(&OptionButton::Click, this, &frmT3TimersConfigure::optDaysType_Click);
  dayLists = new QStackedLayout;
  frame->addLayout(dayLists);

  auto* boxes = new QVBoxLayout;
  AddPage(dayLists)->addLayout(boxes);
  auto* weekdays = new QHBoxLayout;
  boxes->addLayout(weekdays);
  const QStringList days = Items(WeekdayNames) + QStringList{QStringLiteral("Ignore Holidays")};
  for (const QString& day : days) {
    auto* box = new CheckBox(day);
    chkDays.Add(box, QStringLiteral("chkDays"));
    (chkDays.Count() <= HolidayBit ? static_cast<QBoxLayout*>(weekdays) : boxes)->addWidget(box);
  }
  chkDays.OnEach(&CheckBox::Click, this, &frmT3TimersConfigure::chkDays_Click);

  auto* page = AddPage(dayLists);
  cboHolidayMonth = AddTimerList(page, "cboHolidayMonth", QStringLiteral("Month"),
                                 Items(MonthNames), &frmT3TimersConfigure::cboHolidayMonth_Click);
  cboHolidayDate = AddTimerList(page, "cboHolidayDate", QStringLiteral("Date"), NumberItems(1, 31),
                                &frmT3TimersConfigure::cboHolidayDate_Click);
}

ComboBox* frmT3TimersConfigure::AddTimerList(QBoxLayout* row, const char* name,
                                             const QString& title, const QStringList& items,
                                             Handler click) {
  auto* list = Add<ComboBox>(row, name);
  list->setAccessibleName(title);
  list->SetItems(items);
  if (items.size() > LargestTimerOffset) {
    // Measuring a thousand items delays the first time that the list is shown.
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(static_cast<int>(items.back().size()));
  }
  list->Click = [this, click] {
    if (Loading == 0) (this->*click)();
  };
  list->SetListIndex(0);
  return list;
}

void frmT3TimersConfigure::Form_Activate() {
  cboTimerNumber->SetItems(ItemNames(PanelRecord.TimerName));
  cboTimerNumber->SetListIndex(0);
  ShowTimerSettings();
}

void frmT3TimersConfigure::cboTimerNumber_Click() {
  const int timer = SelectedTimer();
  optTimeType(static_cast<int>(KindOfTime(PanelRecord.TimerTimeType(timer)))).Select();
  optDaysType(PanelRecord.TimerHolidayMonth(timer) == 0 ? Weekdays : Holiday).Select();
  ShowTimerSettings();
}

void frmT3TimersConfigure::ShowTimerSettings() {
  const int timer = SelectedTimer();
  const Int16 type = PanelRecord.TimerTimeType(timer);
  switch (KindOfTime(type)) {
    case TimeKind::Normal: {
      const int halfDay = type < 0 ? -1 : type / HoursOfHalfDay;
      ShowingTime = -1;
      cboNormalTimeHour->SetListIndex(type % HoursOfHalfDay);
      cboNormalTimeMinute->SetListIndex(PanelRecord.TimerTime(timer));
      cboNormalTimeAmPm->SetListIndex(halfDay);
      ShowingTime = 0;
      break;
    }
    case TimeKind::Astro:
      ShowRelativeTime(*cboAstroType, *cboMinuteFromAstro);
      break;
    case TimeKind::OpenClose:
      ShowRelativeTime(*cboOpenCloseType, *cboMinuteFromOpenClose);
      break;
  }
  if (PanelRecord.TimerHolidayMonth(timer) == 0) {
    for (int day = 0; day < chkDays.Count(); ++day) {
      chkDays(day).SetValue((PanelRecord.TimerDays(timer) & 1 << day) == 0 ? 1 : 0);
    }
  } else {
    cboHolidayMonth->SetListIndex(PanelRecord.TimerHolidayMonth(timer) - 1);
    cboHolidayDate->SetListIndex(PanelRecord.TimerHolidayDate(timer) - 1);
  }
  ShowInWords();
}

void frmT3TimersConfigure::ShowRelativeTime(ComboBox& type, ComboBox& minutes) {
  type.SetListIndex(EventOfTime(TimeOfTimer().Type));
  minutes.SetListIndex(OffsetOfTime(TimeOfTimer()));
}

void frmT3TimersConfigure::ShowInWords() {
  const int timer = SelectedTimer();
  lblTimerInWords->SetCaption(QString::fromStdString(
      TimerInWords(TimeOfTimer(), PanelRecord.TimerDays(timer),
                   PanelRecord.TimerHolidayMonth(timer), PanelRecord.TimerHolidayDate(timer))));
  ShowNext();
}

void frmT3TimersConfigure::ShowNext() {
  const int timer = SelectedTimer();
  const QString next = NextInWords(LiveProject, timer, Now());
  const auto acts = ActsOfTimer(LiveProject, timer);
  const bool fires = !acts.empty() && !next.isEmpty();
  lblTimerNext->SetCaption(acts.empty() ? QStringLiteral("It does nothing yet.")
                           : fires      ? QStringLiteral("Next:")
                                        : QStringLiteral("It never fires by itself."));
  lblTimerTime->SetCaption(fires ? next : QString());
  lblTimerTime->setVisible(fires);
  for (int i = 0; i < lblTimerActs.Count(); ++i) {
    const bool has = i < static_cast<int>(acts.size());
    lblTimerActs(i).SetCaption(has ? acts[static_cast<std::size_t>(i)].Words : QString());
    lblTimerActs(i).setVisible(has);
  }
}

void frmT3TimersConfigure::lblTimerTime_Click() {
  const TimeKind kind = KindOfTime(TimeOfTimer().Type);
  if (kind == TimeKind::Normal) {  // which is set here, all others elsewhere
    cboNormalTimeHour->setFocus();
    return;
  }
  UnloadAllForms();
  ShowForm(kind == TimeKind::Astro ? Screen::AstroClockSettings
                                   : Screen::OpenAndCloseTimeNormalDays);
}

void frmT3TimersConfigure::lblTimerActs_Click(int index) {
  const int timer = SelectedTimer();
  const auto acts = ActsOfTimer(LiveProject, timer);
  const TimerAct& act = acts[static_cast<std::size_t>(index)];
  GoToItem(act.On, act.Where);
}

TimerTimeValue frmT3TimersConfigure::TimeOfTimer() const {
  return {PanelRecord.TimerTimeType(SelectedTimer()), PanelRecord.TimerTime(SelectedTimer())};
}

void frmT3TimersConfigure::StoreTime(TimerTimeValue time) {
  PanelRecord.TimerTimeType(SelectedTimer()) = time.Type;
  PanelRecord.TimerTime(SelectedTimer()) = time.Time;
  DataChanged = -1;
  ShowInWords();
}

void frmT3TimersConfigure::optTimeType_Click(int index) {
  if (Loading != 0) return;
  const auto kind = static_cast<TimeKind>(index);
  const auto old = TimeOfTimer();
  timeLists->setCurrentIndex(index);
  StoreTime(KeepsTime(old.Type, kind) ? old : FirstTimeOf(kind));
  ShowTimerSettings();
}

void frmT3TimersConfigure::optDaysType_Click(int index) {
  if (Loading != 0) return;
  DataChanged = -1;
  dayLists->setCurrentIndex(index);
  Int16& month = PanelRecord.TimerHolidayMonth(SelectedTimer());
  if (index == Weekdays) {
    month = 0;
  } else if (month == 0) {
    month = 1;
  }
  ShowTimerSettings();
}

void frmT3TimersConfigure::chkDays_Click(int index) {
  Int16& days = PanelRecord.TimerDays(SelectedTimer());
  const int bit = 1 << index;
  days = static_cast<Int16>(chkDays(index).Value() == 0 ? days | bit : days & (0xFF - bit));
  ShowInWords();
}

void frmT3TimersConfigure::cboNormalTimeHour_Click() {
  if (ShowingTime != 0) return;
  const int hour = cboNormalTimeAmPm->ListIndex() * HoursOfHalfDay + cboNormalTimeHour->ListIndex();
  StoreTime({static_cast<Int16>(hour), TimeOfTimer().Time});
}

void frmT3TimersConfigure::cboNormalTimeMinute_Click() {
  StoreTime({TimeOfTimer().Type, static_cast<Int16>(cboNormalTimeMinute->ListIndex())});
}

void frmT3TimersConfigure::StoreEvent(const ComboBox& list) {
  StoreTime(WithEvent(TimeOfTimer(), list.ListIndex()));
}

void frmT3TimersConfigure::StoreOffset(const ComboBox& list) {
  StoreTime(WithOffset(TimeOfTimer(), list.ListIndex()));
}

void frmT3TimersConfigure::cboHolidayMonth_Click() {
  PanelRecord.TimerHolidayMonth(SelectedTimer()) =
      static_cast<Int16>(cboHolidayMonth->ListIndex() + 1);
  DataChanged = -1;
  ShowInWords();
}

void frmT3TimersConfigure::cboHolidayDate_Click() {
  PanelRecord.TimerHolidayDate(SelectedTimer()) =
      static_cast<Int16>(cboHolidayDate->ListIndex() + 1);
  DataChanged = -1;
  ShowInWords();
}
