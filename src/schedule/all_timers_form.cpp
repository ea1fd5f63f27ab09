#include "schedule/all_timers_form.h"

#include <QApplication>
#include <QShortcut>
#include <algorithm>
#include <numeric>

#include "panel/checked_arithmetic.h"
#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "schedule/rules/copy_timer.h"
#include "schedule/rules/timer_words.h"
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

TimerRun RunOfTimer(int timer) {
  const auto& panel = PanelRecord;
  return {{panel.TimerTimeType(timer), panel.TimerTime(timer)},
          panel.TimerDays(timer),
          panel.TimerHolidayMonth(timer),
          panel.TimerHolidayDate(timer)};
}

void PutRunOfTimer(int timer, const TimerRun& run) {
  auto& panel = PanelRecord;
  panel.TimerTimeType(timer) = run.Time.Type;
  panel.TimerTime(timer) = run.Time.Time;
  panel.TimerDays(timer) = run.Days;
  panel.TimerHolidayMonth(timer) = run.Month;
  panel.TimerHolidayDate(timer) = run.Date;
  DataChanged = -1;
}

QString WhenOfTimer(int timer) {
  const TimerRun run = RunOfTimer(timer);
  return ToUnicode(TimerInWords(run.Time, run.Days, run.Month, run.Date));
}

QString Unreadable(const QString& typed) {
  return QStringLiteral(
             "\"%1\" is no time and no days (such as 7:00a, 30 min before sunset, Mon to Fri).")
      .arg(typed);
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
  txtWhen = grid->Add<TextBox>(
      "txtWhen", {.Chars = 30,
                  .Header = "lblWhenHeader",
                  .HeaderText = QStringLiteral("When"),
                  .Words = {QStringLiteral("999 min before sunset, Mon to Fri, not on holidays")},
                  .Refuses = [this](int row, const QString& typed) {
                    const bool reads = ReadTypedTimer(typed, RunOfTimer(TimerAt(row))).has_value();
                    return reads ? QString() : Unreadable(typed);
                  }});
  lblActs = grid->Add<Label>("lblActs", {.Chars = 24,
                                         .Header = "lblActsHeader",
                                         .HeaderText = QStringLiteral("What it does"),
                                         .Words = {QString(80, u'n')}});
  lblNext = grid->Add<Label>("lblNext", {.Chars = 13,
                                         .Header = "lblNextHeader",
                                         .HeaderText = QStringLiteral("Next"),
                                         .Words = {QStringLiteral("Dec 31 2027, 11:45 PM")}});
  lblNumber.OnEach(&Label::Click, this, &frmT3AllTimers::lblNumber_Click);
  lblNext.OnEach(&Label::Click, this, &frmT3AllTimers::lblNumber_Click);
  lblActs.OnEach(&Label::Click, this, &frmT3AllTimers::lblActs_Click);
  txtWhen.OnEach(&TextBox::Change, this, &frmT3AllTimers::txtWhen_Change);
  for (int row = 0; row < ItemCount; ++row) {
    TextBox& box = txtWhen(row);
    box.UndoesItself = true;
    box.setFixedHeight(lblNumber(row).sizeHint().height());
    connect(&box, &QLineEdit::editingFinished, this,
            [this, row] { RunHandler([this, row] { EndEdit(row); }); });
  }
  constexpr int leastLines = 8;
  AddWidget(AddScrolled(grid, leastLines));
  AddSortHeader("lblNumberHeader(0)", false);
  AddSortHeader("lblNextHeader(0)", true);
  auto* sort = new QShortcut(Qt::Key_F3, this);
  connect(sort, &QShortcut::activated, this, [this] { RunHandler([this] { SortOtherwise(); }); });

  lblInHand = AddLabel(AddRow(), "lblInHand", {});
  lblInHand->SetLook(Label::Look::Quiet);
  picWeek = new WeekPicture;
  picWeek->Open = [](int timer) { GoToItem(Screen::TimersConfigure, {ItemKind::Timer, timer}); };
  picWeek->InHandChanged = [this] {
    const QString words = picWeek->hasFocus() ? picWeek->InHand() : QString();
    lblInHand->SetCaption(
        words.isEmpty() ? QStringLiteral("What timers alone have on in the seven days from today")
                        : words);
  };
  AddWidget(AddScrolled(picWeek, leastLines));
  UseSpareHeight();
  AddHint(QStringLiteral(
      "Enter on a number opens the timer. Ctrl+C and Ctrl+V on numbers copy time, days and what is "
      "switched. F3 sorts by number or by the next time."));
}

/// A part of the screen that has its own scroll bar, and shows what has the focus.
QScrollArea* frmT3AllTimers::AddScrolled(QWidget* inner, int lines) {
  auto* area = new QScrollArea;
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setMinimumHeight(fontMetrics().height() * lines);
  area->setWidget(inner);
  connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
    if (now && now != area->widget() && area->isAncestorOf(now)) area->ensureWidgetVisible(now);
  });
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
  if (inHand < 0 || !grid->isAncestorOf(QApplication::focusWidget())) return;
  grid->FocusRow(
      static_cast<int>(std::find(order_.begin(), order_.end(), inHand) - order_.begin()));
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
    if (!edit_ || edit_->Timer != timer) txtWhen(row).setText(WhenOfTimer(timer));
    lblActs(row).SetCaption(ActsInWords(LiveProject, timer));
    const auto next = moments.Next(timer, now);
    lblNext(row).SetCaption(next ? MomentInWords(*next, now) : QStringLiteral("-"));
  }
  picWeek->Show(WeekOfTimers(LiveProject, now.date()));
}

bool frmT3AllTimers::ShowsToo(Screen, const Item& of) {
  if (of.Kind != ItemKind::Timer) return false;
  ShowAnew();
  grid->FocusRow(
      static_cast<int>(std::find(order_.begin(), order_.end(), of.Number) - order_.begin()));
  return true;
}

void frmT3AllTimers::lblNumber_Click(int row) {
  GoToItem(Screen::TimersConfigure, {ItemKind::Timer, TimerAt(row)});
}

void frmT3AllTimers::lblActs_Click(int row) {
  const auto acts = ActsOfTimer(LiveProject, TimerAt(row));
  if (acts.empty()) {
    GoToItem(Screen::TimerToGroupControl, {ItemKind::Timer, TimerAt(row)});
  } else {
    GoToItem(acts.front().On, acts.front().Where);
  }
}

void frmT3AllTimers::TakeOver(int row, int from) {
  const QString why = WhyNotCopied(LiveProject, from, TimerAt(row));
  if (!why.isEmpty()) throw RunTimeFailure(why.toStdString());
  CopyTimer(LiveProject, from, TimerAt(row));
  DataChanged = -1;
  ShowTimers();
}

/// What is typed counts at once where it can be read; else what was before it does.
void frmT3AllTimers::txtWhen_Change(int row) {
  const int timer = TimerAt(row);
  if (!edit_) edit_ = {timer, RunOfTimer(timer)};
  PutRunOfTimer(timer, ReadTypedTimer(txtWhen(row).Text(), edit_->Before).value_or(edit_->Before));
  ShowTimers();
}

void frmT3AllTimers::EndEdit(int row) {
  if (!edit_ || edit_->Timer != TimerAt(row)) return;
  const QString typed = txtWhen(row).Text();
  const bool reads = ReadTypedTimer(typed, edit_->Before).has_value();
  edit_.reset();
  ShowTimers();
  if (txtWhen(row).hasFocus()) txtWhen(row).selectAll();
  if (!reads) TellRefusal(Unreadable(typed));
}

/// Escape takes back what is being typed.
void frmT3AllTimers::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape || !edit_) {
    ChildForm::keyPressEvent(event);
    return;
  }
  RunHandler([this] {
    PutRunOfTimer(edit_->Timer, edit_->Before);
    edit_.reset();
    ShowTimers();
  });
}
