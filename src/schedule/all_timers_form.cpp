#include "schedule/all_timers_form.h"

#include <QApplication>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>
#include <numeric>

#include "panel/checked_arithmetic.h"
#include "panel/code_page.h"
#include "panel/defaults.h"
#include "panel/format.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "schedule/rules/copy_timer.h"
#include "schedule/rules/timer_words.h"
#include "schedule/rules/typed_acts.h"
#include "schedule/rules/typed_timer.h"
#include "shell/controls/cell_value.h"
#include "shell/controls/go_to_item.h"
#include "shell/shell.h"

namespace {

QString TimerCode(int timer) {
  return u'T' + TwoDigits(timer + 1);
}

const QStringList& TimerCodes() {
  static const QStringList codes = [] {
    QStringList all;
    for (int timer = 0; timer < ItemCount; ++timer) all << TimerCode(timer);
    return all;
  }();
  return codes;
}

TimerRun RunOfTimer(const PanelRecordType& panel, int timer) {
  return {{panel.TimerTimeType(timer), panel.TimerTime(timer)},
          panel.TimerDays(timer),
          panel.TimerHolidayMonth(timer),
          panel.TimerHolidayDate(timer)};
}

void PutRunOfTimer(PanelRecordType& panel, int timer, const TimerRun& run) {
  panel.TimerTimeType(timer) = run.Time.Type;
  panel.TimerTime(timer) = run.Time.Time;
  panel.TimerDays(timer) = run.Days;
  panel.TimerHolidayMonth(timer) = run.Month;
  panel.TimerHolidayDate(timer) = run.Date;
}

QString WhenOfTimer(int timer) {
  const TimerRun run = RunOfTimer(PanelRecord, timer);
  return ToUnicode(TimerInWords(run.Time, run.Days, run.Month, run.Date));
}

QString PutTypedWhen(Project& project, int timer, const QString& typed) {
  const auto run = ReadTypedTimer(typed, RunOfTimer(project.Panel, timer));
  if (run) {
    PutRunOfTimer(project.Panel, timer, *run);
    return {};
  }
  static const QRegularExpression halfDay(QStringLiteral("^(?:1[0-2]|[1-9])(?:[0-5]\\d)?$"));
  if (halfDay.match(typed.trimmed()).hasMatch()) {
    return QStringLiteral("\"%1\" may be morning or evening: type %1a or %1p.")
        .arg(typed.trimmed());
  }
  return QStringLiteral(
             "\"%1\" is no time and no days (such as 7:00a, 30 min before sunset, Mon to Fri).")
      .arg(typed);
}

QString ActsOfLiveTimer(int timer) {
  return ActsInWords(LiveProject, timer);
}

/// A column in which words are typed.
struct TypedColumn {
  const char* Name;
  QByteArray HeaderName;
  QString Header;
  int Chars;
  QString (*Told)(int timer);
  /// Why not, of a text that means nothing.
  QString (*Put)(Project& project, int timer, const QString& typed);
};

const auto TypedTimerColumns = std::to_array<TypedColumn>(
    {{"txtWhen", "lblWhenHeader", QStringLiteral("When"), 30, WhenOfTimer, PutTypedWhen},
     {"txtActs", "lblActsHeader", QStringLiteral("What it does"), 28, ActsOfLiveTimer,
      PutTypedActs}});

/// Over a panel as it was before it was typed.
QString WhyUnreadable(const TypedColumn& column, const PanelRecordType& before, int timer,
                      const QString& typed) {
  const auto project = std::make_unique<Project>(LiveProject);
  project->Panel = before;
  return column.Put(*project, timer, typed);
}

/// It does nothing, at the time of a new panel's timers; a name alone is what one begins with.
bool IsFree(int timer) {
  static const TimerRun fresh = RunOfTimer(NewProject().Panel, 0);
  return ActsOfTimer(LiveProject, timer).empty() && RunOfTimer(PanelRecord, timer) == fresh;
}

}  // namespace

frmT3AllTimers::frmT3AllTimers() : ChildForm(Screen::AllTimers, QStringLiteral("All Timers")) {}

void frmT3AllTimers::Form_Load() {
  std::iota(order_.begin(), order_.end(), 0);
  grid = new RowGrid(ItemCount, QStringLiteral("Timer "), ItemCount);
  lblNumber = grid->Add<Label>("lblNumber",
                               {.Chars = 5,
                                .Header = "lblNumberHeader",
                                .Words = {TimerCode(0)},
                                .Choices = [](int) { return TimerCodes(); },
                                .Put = [this](int row, int from) { TakeOver(row, from); },
                                .Refuses =
                                    [this](int row, const QString& code) {
                                      return WhyNotCopied(LiveProject, ChoiceOf(TimerCodes(), code),
                                                          TimerAt(row));
                                    }});
  lblName = grid->AddNames("lblTimerName");
  for (std::size_t column = 0; column < TypedColumns; ++column) txtTyped[column] = AddTyped(column);
  txtTyped[0].OnEach(&TextBox::Change, this, &frmT3AllTimers::txtWhen_Change);
  txtTyped[1].OnEach(&TextBox::Change, this, &frmT3AllTimers::txtActs_Change);
  lblNext = grid->Add<Label>("lblNext", {.Chars = 13,
                                         .Header = "lblNextHeader",
                                         .HeaderText = QStringLiteral("Next"),
                                         .Words = {QStringLiteral("Dec 31, 11:45 PM")}});
  lblNumber.OnEach(&Label::Click, this, &frmT3AllTimers::lblNumber_Click);
  lblNext.OnEach(&Label::Click, this, &frmT3AllTimers::lblNumber_Click);
  gridArea = AddScrolled(grid);
  AddWidget(gridArea);
  AddSortHeader("lblNumberHeader(0)", false);
  AddSortHeader("lblNextHeader(0)", true);
  auto* sort = new QShortcut(Qt::Key_F3, this);
  connect(sort, &QShortcut::activated, this, [this] { RunHandler([this] { SortOtherwise(); }); });

  auto* row = AddRow();
  cmdNewTimer = Add<Button>(row, "cmdNewTimer", QStringLiteral("New Timer"));
  cmdNewTimer->setToolTip(QStringLiteral(
      "Makes the first free timer the other half of the current one, on for off (Insert)"));
  cmdNewTimer->Click = [this] { MakeOtherHalf(); };
  lblInHand = AddLabel(row, "lblInHand", {});
  lblInHand->SetLook(Label::Look::Quiet);
  picWeek = new WeekPicture;
  picWeek->Open = [](int timer) { GoToItem(Screen::TimersConfigure, {ItemKind::Timer, timer}); };
  picWeek->InHandChanged = [this] {
    const QString words = picWeek->hasFocus() ? picWeek->InHand() : QString();
    lblInHand->SetCaption(
        words.isEmpty() ? QStringLiteral("What timers alone have on in the seven days from today")
                        : words);
  };
  weekArea = AddScrolled(picWeek);
  AddWidget(weekArea);
  UseSpareHeight();
  AddHint(QStringLiteral(
      "Enter on a number opens the timer; Insert makes its other half, Ctrl+C and Ctrl+V copy it "
      "onto another. F3 sorts. Times, days and what is done are typed; Enter goes on."));
}

ControlArray<TextBox> frmT3AllTimers::AddTyped(std::size_t column) {
  const TypedColumn& typed = TypedTimerColumns[column];
  constexpr int mostChars = 80;
  const auto refuses = [this, &typed](int row, const QString& text) {
    const auto& before = edit_ ? edit_->Before : PanelRecord;
    return WhyUnreadable(typed, before, TimerAt(row), text);
  };
  auto boxes = grid->Add<TextBox>(typed.Name, {.Chars = typed.Chars,
                                               .Header = typed.HeaderName,
                                               .HeaderText = typed.Header,
                                               .Words = {QString(mostChars, u'n')},
                                               .Refuses = refuses});
  for (int row = 0; row < ItemCount; ++row) {
    boxes(row).UndoesItself = true;
    boxes(row).setFixedHeight(lblNumber(row).sizeHint().height());
    connect(&boxes(row), &QLineEdit::editingFinished, this,
            [this, column, row] { RunHandler([=, this] { EndEdit(column, row); }); });
  }
  return boxes;
}

/// A part of the screen that has its own scroll bar, and shows what has the focus.
QScrollArea* frmT3AllTimers::AddScrolled(QWidget* inner) {
  constexpr int leastLines = 3;
  auto* area = new QScrollArea;
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  area->setMinimumHeight(fontMetrics().height() * leastLines);
  area->setWidget(inner);
  ScrollToFocus(*area);
  return area;
}

void frmT3AllTimers::AddSortHeader(const char* name, bool byNext) {
  auto* header = findChild<Label*>(QLatin1String(name));
  header->SetLook(Label::Look::WebLink);
  header->Click = [this, byNext] { Sort(byNext); };
}

void frmT3AllTimers::Form_Activate() {
  edit_.reset();
  Sort(byNext_);
}

/// The timer whose row has the focus keeps it.
void frmT3AllTimers::Sort(bool byNext) {
  byNext_ = byNext;
  const auto current = grid->Current();
  const int inHand = current ? TimerAt(current->Row) : -1;
  std::iota(order_.begin(), order_.end(), 0);
  if (byNext) {
    const TimerMoments moments(LiveProject);
    std::array<WallMinute, ItemCount> next{};
    for (int timer = 0; timer < ItemCount; ++timer) {
      const auto moment = moments.Next(timer, Now());
      next[static_cast<std::size_t>(timer)] =
          moment ? moment->At : std::numeric_limits<WallMinute>::max();
    }
    std::stable_sort(order_.begin(), order_.end(), [&](int one, int other) {
      return next[static_cast<std::size_t>(one)] < next[static_cast<std::size_t>(other)];
    });
  }
  const auto tell = [this](const char* name, const QString& caption, bool sorted) {
    auto* header = findChild<Label*>(QLatin1String(name));
    header->SetCaption(sorted ? caption + QStringLiteral(" \u2193") : caption);
    header->SetState(sorted ? caption + QStringLiteral(", sorted by it")
                            : caption + QStringLiteral(", sorts by it"));
  };
  tell("lblNumberHeader(0)", QStringLiteral("No."), !byNext);
  tell("lblNextHeader(0)", QStringLiteral("Next"), byNext);
  ShowTimers();
  if (inHand >= 0 && grid->isAncestorOf(QApplication::focusWidget())) FocusTimer(inHand);
}

int frmT3AllTimers::RowOf(int timer) const {
  return static_cast<int>(std::find(order_.begin(), order_.end(), timer) - order_.begin());
}

void frmT3AllTimers::FocusTimer(int timer) {
  grid->FocusRow(RowOf(timer));
}

void frmT3AllTimers::SortOtherwise() {
  Sort(!byNext_);
}

void frmT3AllTimers::ShowTimers() {
  const TimerMoments moments(LiveProject);
  const QDateTime now = Now();
  for (int row = 0; row < ItemCount; ++row) {
    const int timer = TimerAt(row);
    grid->SetRowTitle(row, QStringLiteral("Timer ") + TwoDigits(timer + 1));
    lblNumber(row).SetCaption(TimerCode(timer));
    lblName(row).SetCaption(ToUnicode(PanelRecord.TimerName(timer)));
    for (std::size_t column = 0; column < TypedColumns; ++column) {
      TextBox& box = txtTyped[column](row);
      if (edit_ && edit_->Box == &box) continue;
      box.ShowValue(TypedTimerColumns[column].Told(timer));
    }
    const auto next = moments.Next(timer, now);
    lblNext(row).SetCaption(next ? MomentInWords(*next, now) : QStringLiteral("-"));
  }
  // A window that is narrower scrolls as a whole.
  gridArea->setMinimumWidth(grid->minimumSizeHint().width() +
                            gridArea->verticalScrollBar()->sizeHint().width());
  picWeek->Show(WeekOfTimers(LiveProject, now.date()));
  weekArea->setMaximumHeight(picWeek->sizeHint().height());
}

bool frmT3AllTimers::ShowsToo(const Item& of) {
  if (of.Kind != ItemKind::Timer) return false;
  ShowAnew();
  FocusTimer(of.Number);
  return true;
}

void frmT3AllTimers::lblNumber_Click(int row) {
  GoToItem(Screen::TimersConfigure, {ItemKind::Timer, TimerAt(row)});
}

void frmT3AllTimers::TakeOver(int row, int from) {
  const QString why = WhyNotCopied(LiveProject, from, TimerAt(row));
  if (!why.isEmpty()) throw RunTimeFailure(why.toStdString());
  CopyTimer(LiveProject, from, TimerAt(row));
  DataChanged = -1;
  ShowTimers();
}

/// On a free line, to which Enter goes, that of the line above.
void frmT3AllTimers::MakeOtherHalf() {
  const auto current = grid->Current();
  if (!current) return;
  for (std::size_t column = 0; column < TypedColumns; ++column) {
    if (!EndEdit(column, current->Row)) return;
  }
  int free = 0;
  while (free < ItemCount && !IsFree(free)) ++free;
  if (free == ItemCount) {
    TellRefusal(QStringLiteral("No timer is free: each has a time of its own or does something."));
    return;
  }
  int row = current->Row;
  while (row > 0 && IsFree(TimerAt(row))) --row;
  const int from = TimerAt(row);
  TextBox& when = txtTyped[0](RowOf(free));
  when.setFocus(Qt::OtherFocusReason);
  if (IsFree(from)) return;
  TakeOver(RowOf(free), from);
  TurnOtherWay(LiveProject, free);
  ShowTimers();
  when.selectAll();
  TellNews(QStringLiteral("%1 is made as %2 is, on for off and off for on")
               .arg(TimerCode(free), TimerCode(from)));
}

/// What is typed counts at once where it can be read; else what was before it does.
void frmT3AllTimers::Type(std::size_t column, int row) {
  TextBox& box = txtTyped[column](row);
  const int timer = TimerAt(row);
  if (!edit_) {
    edit_ = Edit{&box, timer, PanelRecord};
    TellNews({});
  }
  PanelRecord = edit_->Before;
  TypedTimerColumns[column].Put(LiveProject, timer, box.Text());
  DataChanged = -1;
  ShowTimers();
}

/// False for a text that cannot be read, which is told.
bool frmT3AllTimers::EndEdit(std::size_t column, int row) {
  TextBox& box = txtTyped[column](row);
  if (!edit_ || edit_->Box != &box) return true;
  const QString why =
      WhyUnreadable(TypedTimerColumns[column], edit_->Before, edit_->Timer, box.Text());
  edit_.reset();
  ShowTimers();
  box.setText(box.text());  // Its own steps end here.
  if (box.hasFocus()) box.selectAll();
  if (!why.isEmpty()) TellRefusal(why);
  return why.isEmpty();
}

/// Escape takes back what is being typed.
void frmT3AllTimers::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
    RunHandler([this] { MakeOtherHalf(); });
  } else if (event->key() == Qt::Key_Escape && edit_) {
    RunHandler([this] {
      PanelRecord = edit_->Before;
      TextBox* box = edit_->Box;
      edit_.reset();
      ShowTimers();
      box->selectAll();
    });
  } else {
    ChildForm::keyPressEvent(event);
  }
}
