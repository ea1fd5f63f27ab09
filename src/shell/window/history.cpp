#include "shell/window/history.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QUndoCommand>
#include <algorithm>
#include <memory>
#include <tuple>

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "shell/controls/controls.h"
#include "shell/shell.h"

namespace {

constexpr std::size_t MostBytes = std::size_t{32} * 1024 * 1024;
constexpr qint64 TypingPauseMs = 2000;

/// By what, and where, the panel is reached.
auto Connection(const Project& project) {
  const PanelRecordType& panel = project.Panel;
  return std::tuple(ConnectionType(panel), panel.ComPort, PhoneNumber(panel), TcpAddress(panel));
}

bool AreOfOneItem(const std::vector<Setting>& some, const std::vector<Setting>& others) {
  const auto is = [&some](const Setting& setting) { return ItemOf(setting) == ItemOf(some[0]); };
  return !some.empty() && std::all_of(some.begin(), some.end(), is) &&
         std::all_of(others.begin(), others.end(), is);
}

/// The words of a step. What it changes stands in the history, which moves it.
class Step : public QUndoCommand {
 public:
  /// `typing` is the same for steps that become one; `empty` when the one that becomes of this and
  /// the step before changes nothing.
  Step(const QString& words, int typing, bool empty)
      : QUndoCommand(words), typing_(typing), empty_(empty) {}

  int id() const override { return typing_; }
  bool mergeWith(const QUndoCommand* later) override {
    setText(later->text());
    setObsolete(static_cast<const Step*>(later)->empty_);
    return true;
  }

 private:
  int typing_;
  bool empty_;
};

}  // namespace

History::History(QObject* parent, Hooks hooks) : QObject(parent), hooks_(std::move(hooks)) {
  connect(&stack_, &QUndoStack::indexChanged, this, &History::GoTo);
  connect(qApp, &QApplication::focusChanged, this, [this] { typedInto_ = nullptr; });
}

void History::Begin() {
  begun_ = false;
  stack_.clear();
  changes_.clear();
  held_ = 0;
  dropped_ = 0;
  done_ = 0;
  known_ = LiveProject;
  content_ = EncodeProject(known_);
  typedInto_ = nullptr;
  begun_ = true;
}

void History::Record() {
  dragged_ = QApplication::mouseButtons() != Qt::NoButton;
  if (!dragged_) RecordStep();
}

void History::RecordStep() {
  if (!begun_ || paused_ > 0 || LiveProject == known_) return;
  std::string now;
  try {
    now = EncodeProject(LiveProject);
  } catch (const RunTimeFailure&) {
    return;  // No file holds it; what becomes of it will be the step.
  }
  const QScopedValueRollback pause(paused_, paused_ + 1);
  const std::vector<Setting> changes = DifferentSettings(LiveProject, known_, true);
  const QString words = WordsOf(changes);
  const int before = typingId_;
  const int typing = TypingId(changes);
  const bool goesOn = typing >= 0 && typing == before && done_ == stack_.count();
  Patch change(goesOn ? changes_.back().Before(content_) : content_, now);
  const bool empty = goesOn && change.Empty();
  if (empty) typedInto_ = nullptr;
  if (goesOn) --done_;
  while (static_cast<int>(changes_.size()) > done_) {
    held_ -= changes_.back().Size();
    changes_.pop_back();
  }
  if (!empty) {
    held_ += change.Size();
    changes_.push_back(std::move(change));
    ++done_;
  }
  known_ = LiveProject;
  content_ = std::move(now);
  stack_.push(new Step(words, typing, empty));
  for (; held_ > MostBytes && dropped_ + 1 < done_; ++dropped_) {
    Patch& oldest = changes_[static_cast<std::size_t>(dropped_)];
    held_ -= oldest.Size();
    oldest = {};
    held_ += oldest.Size();
  }
}

int History::TypingId(const std::vector<Setting>& changes) {
  QWidget* control = QApplication::focusWidget();
  const bool takesKeys = qobject_cast<TextBox*>(control) || qobject_cast<ScrollBar*>(control) ||
                         qobject_cast<ComboBox*>(control);
  if (!typing_ || !takesKeys || changes.empty()) {
    typedInto_ = nullptr;
    return -1;
  }
  // A text that has steps of its own while it is typed is one for the project.
  const auto* box = qobject_cast<TextBox*>(control);
  const bool same = box && box->UndoesItself
                        ? AreOfOneItem(typed_, changes)
                        : typed_ == changes && sinceTyped_.ElapsedMs() <= TypingPauseMs;
  const bool goesOn = typedInto_ == control && same;
  if (!goesOn) ++typingId_;
  typedInto_ = control;
  typed_ = changes;
  sinceTyped_.Restart();
  return typingId_;
}

QString History::WordsOf(const std::vector<Setting>& changes) const {
  if (changes.empty()) return QStringLiteral("Change on %1").arg(hooks_.ScreenCaption());
  if (changes.size() > 1) {
    return QStringLiteral("%1 settings of %2").arg(changes.size()).arg(hooks_.ScreenCaption());
  }
  const Difference change = DifferenceIn(changes.front(), LiveProject, known_);
  constexpr int most = 40;
  QString value = change.This.trimmed();
  if (value.size() > most) value = value.first(most) + QStringLiteral("...");
  return QStringLiteral("%1 %2: %3")
      .arg(ItemCode(change.Where), change.Field, value.isEmpty() ? QStringLiteral("blank") : value);
}

void History::BeginShowing() {
  RecordStep();
  typedInto_ = nullptr;
  ++paused_;
}

/// The step before now ends, and the next begins, where the project stands.
void History::EndShowing() {
  --paused_;
  if (!begun_ || paused_ > 0 || LiveProject == known_) return;
  std::string now;
  try {
    now = EncodeProject(LiveProject);
  } catch (const RunTimeFailure&) {
    return;
  }
  const auto step = static_cast<std::size_t>(done_);
  if (step > 0 && done_ > dropped_) {
    Replace(changes_[step - 1], Patch(changes_[step - 1].Before(content_), now));
  }
  if (step < changes_.size()) {
    Replace(changes_[step], Patch(now, changes_[step].After(content_)));
  }
  known_ = LiveProject;
  content_ = std::move(now);
}

void History::Replace(Patch& change, Patch by) {
  held_ = held_ - change.Size() + by.Size();
  change = std::move(by);
}

void History::Undo() {
  RecordStep();
  stack_.undo();
}

void History::Redo() {
  RecordStep();
  stack_.redo();
}

/// The stack has been moved: the project follows, or the stack goes back.
void History::GoTo(int index) {
  if (!begun_ || index == done_) return;
  typedInto_ = nullptr;
  std::string content = content_;
  for (int i = done_; i > index && i > dropped_; --i) {
    content = changes_[static_cast<std::size_t>(i) - 1].Before(std::move(content));
  }
  for (int i = done_; i < index; ++i) {
    content = changes_[static_cast<std::size_t>(i)].After(std::move(content));
  }
  const auto target = std::make_unique<Project>();
  const bool whole = DecodeProject(content, *target);
  QString rests = hooks_.Rests();
  if (index < dropped_ || !whole) {
    rests = QStringLiteral("What was before is not kept any more.");
  } else if (Connected != 0 && Connection(*target) != Connection(known_)) {
    rests = QStringLiteral("This would change how the panel is reached. Disconnect first.");
  }
  if (!rests.isEmpty()) {
    stack_.setIndex(done_);
    TellRefusal(rests);
    return;
  }
  const int steps = done_ - index;
  const QString words = steps > 0 ? stack_.text(index) : stack_.text(index - 1);
  const std::vector<Setting> changes = DifferentSettings(*target, known_, true);
  known_ = *target;
  content_ = std::move(content);
  done_ = index;
  LiveProject = known_;
  DataChanged = -1;
  {
    const QScopedValueRollback pause(paused_, paused_ + 1);
    hooks_.Show(changes, [this] {
      if (LiveProject == known_) return true;
      LiveProject = known_;
      return false;
    });
  }
  const QString told = steps > 0 ? QStringLiteral("Undone: ") : QStringLiteral("Redone: ");
  TellNews(told + (std::abs(steps) == 1 ? words : QStringLiteral("%1 steps").arg(std::abs(steps))));
}
