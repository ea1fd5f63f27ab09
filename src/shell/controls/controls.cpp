#include "shell/controls/controls.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStyleOption>
#include <QWheelEvent>
#include <algorithm>
#include <memory>
#include <utility>

#include "shell/controls/accessible_controls.h"
#include "shell/shell.h"

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
  InstallAccessibleControls();
  setMaxVisibleItems(18);
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QComboBox::activated, this, [this] { RunHandler([this] { RunClick(); }); });
}

void ComboBox::RunClick() {
  std::optional<Showing> showing;
  if (ChoosesItem) showing.emplace();
  if (Click) Click();
}

void KeepRoomWhileHidden(QWidget& control) {
  QSizePolicy policy = control.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  control.setSizePolicy(policy);
}

void ScrollToFocus(QScrollArea& area) {
  QObject::connect(qApp, &QApplication::focusChanged, &area, [&area](QWidget*, QWidget* now) {
    // Nothing moves away under a press of the mouse.
    if (!now || QApplication::mouseButtons() != Qt::NoButton || !area.isAncestorOf(now)) return;
    if (now != area.widget()) area.ensureWidgetVisible(now, 0, 0);
  });
}

bool LetterSearch::Takes(const QKeyEvent& key) {
  const QString text = key.text();
  if (text.isEmpty() || !text[0].isPrint() ||
      key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
    return false;
  }
  const bool running =
      sinceLetter_ && sinceLetter_->ElapsedMs() < QApplication::keyboardInputInterval();
  if (text == u' ' && !running) return false;
  sinceLetter_.emplace();
  return true;
}

void ComboBox::keyPressEvent(QKeyEvent* event) {
  const bool searched = search_.Takes(*event);
  if (!searched || event->key() != Qt::Key_Space) {
    QComboBox::keyPressEvent(event);
    return;
  }
  view()->setCurrentIndex(model()->index(currentIndex(), modelColumn(), rootModelIndex()));
  view()->keyboardSearch(event->text());
  const int found = view()->currentIndex().row();
  if (found < 0 || found == currentIndex()) return;
  Choose(found);
}

void ComboBox::showPopup() {
  view()->removeEventFilter(this);
  view()->installEventFilter(this);
  QComboBox::showPopup();
}

bool ComboBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QComboBox::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  const bool searched = search_.Takes(*key);
  if (key->key() != Qt::Key_Space) return QComboBox::eventFilter(watched, event);
  if (searched) {
    view()->keyboardSearch(key->text());
  } else if (view()->currentIndex().isValid()) {
    const int chosen = view()->currentIndex().row();
    hidePopup();
    Choose(chosen);
  }
  return true;
}

void ComboBox::SetListIndex(int index) {
  if (index < 0 || index >= count()) {
    setCurrentIndex(-1);
  } else if (index != currentIndex()) {
    setCurrentIndex(index);
    RunClick();
  }
}

void ComboBox::Choose(int index) {
  setCurrentIndex(index);
  Q_EMIT activated(index);
}

void ComboBox::SetItems(const QStringList& items) {
  clear();
  addItems(items);
  setCurrentIndex(-1);
}

void ComboBox::SetWidthInChars(int chars) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(chars);
}

void ComboBox::wheelEvent(QWheelEvent* event) {
  hasFocus() ? QComboBox::wheelEvent(event) : event->ignore();
}

namespace {

/// Runs the handler once for whatever a user does, with a click that changes nothing too, and once
/// for a change through a screen reader, which is no click. Where an option is selected another
/// gives up its mark, which is nothing that a user did to it.
template <typename Control>
void RunOnUse(Control* control, bool marksOnly) {
  const auto changed = std::make_shared<bool>(false);
  QObject::connect(control, &Control::pressed, control, [changed] { *changed = false; });
  QObject::connect(control, &Control::toggled, control, [=](bool on) {
    if (marksOnly && !on) return;
    *changed = true;
    RunHandler(control->Click);
  });
  QObject::connect(control, &Control::clicked, control, [=] {
    if (!std::exchange(*changed, false)) RunHandler(control->Click);
  });
}

}  // namespace

OptionButton::OptionButton(const QString& text, QWidget* parent) : QRadioButton(text, parent) {
  RunOnUse(this, true);
}

void OptionButton::Select() {
  if (isChecked()) return;
  ShowValue(true);
  if (Click) Click();
}

void OptionButton::ShowValue(bool value) {
  const QSignalBlocker silent(this);
  setChecked(value);
}

OptionButton* OptionButton::Chosen() {
  if (!parentWidget()) return this;
  for (auto* option :
       parentWidget()->findChildren<OptionButton*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (option->isChecked() && option->isEnabled() && !option->isHidden()) return option;
  }
  return this;
}

/// Tab goes to the chosen one, or Space would choose another.
void OptionButton::focusInEvent(QFocusEvent* event) {
  QRadioButton::focusInEvent(event);
  const bool tabbed =
      event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (tabbed && Chosen() != this) Chosen()->setFocus(Qt::OtherFocusReason);
}

CheckBox::CheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
  RunOnUse(this, false);
}

void CheckBox::SetValue(int value) {
  if (isChecked() == (value != 0)) return;
  ShowValue(value != 0);
  if (Click) Click();
}

void CheckBox::ShowValue(bool value) {
  const QSignalBlocker silent(this);
  setChecked(value);
}

namespace {

QString WithoutControls(const QString& text) {
  static const QRegularExpression lineEnd(QStringLiteral("[\\n\\r\\x{85}\\x{2028}\\x{2029}]"));
  QString clean = text.section(lineEnd, 0, 0);
  clean.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
  return clean;
}

}  // namespace

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textEdited, this, [this] {
    CleanEdit();
    RunHandler(Change);
  });
  connect(this, &QLineEdit::textChanged, this, [this] { before_ = text(); });
  connect(this, &QLineEdit::returnPressed, this, [this] { RunHandler(Click); });
}

void TextBox::SetText(const QString& text) {
  setText(text);
  if (Change) Change();
}

void TextBox::ShowValue(const QString& value) {
  if (value != text()) setText(value);
  if (!hasFocus() && cursorPosition() != 0) setCursorPosition(0);
  if (value == toolTip()) return;
  setToolTip(value);
  QAccessibleEvent told(this, QAccessible::DescriptionChanged);
  TellReadersSeam(told);
}

/// What has come in stands between what the text before and after have in common.
void TextBox::CleanEdit() {
  const QString now = text();
  const auto same = [](auto a, auto aEnd, auto b, auto bEnd) -> qsizetype {
    return std::mismatch(a, aEnd, b, bEnd).first - a;
  };
  const qsizetype start = same(now.cbegin(), now.cend(), before_.cbegin(), before_.cend());
  const qsizetype end =
      std::min(same(now.crbegin(), now.crend(), before_.crbegin(), before_.crend()),
               std::min(now.size(), before_.size()) - start);
  const QString in = now.sliced(start, now.size() - start - end);
  const QString clean = WithoutControls(in);
  if (clean == in) return;
  setText(now.first(start) + clean + now.last(end));
  setCursorPosition(static_cast<int>(start + clean.size()));
}

/// What a key types goes through the filter whatever is held with it; commands of the toolkit, such
/// as a paste or Delete, type nothing.
void TextBox::keyPressEvent(QKeyEvent* event) {
  constexpr char16_t backspace = 8;
  const QString typed = event->text();
  const bool control = (event->modifiers() & ~Qt::ShiftModifier) == Qt::ControlModifier;
  const bool command = control || typed.isEmpty() || typed[0] == u'\x7f' ||
                       (typed[0] < u' ' && typed[0] != backspace) ||
                       (typed[0] == backspace && event->modifiers() != Qt::NoModifier);
  if (!KeyPress || command) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  if (typed[0] != backspace) {
    Type(typed);
    return;
  }
  char16_t code = 0;
  RunHandler([&] { code = KeyPress(backspace); });
  if (code == backspace) QLineEdit::keyPressEvent(event);
}

void TextBox::inputMethodEvent(QInputMethodEvent* event) {
  if (!KeyPress || event->commitString().isEmpty()) {
    QLineEdit::inputMethodEvent(event);
    return;
  }
  QInputMethodEvent preedit(event->preeditString(), event->attributes());
  QLineEdit::inputMethodEvent(&preedit);
  Type(event->commitString());
  event->accept();
}

void TextBox::Type(const QString& text) {
  for (const QChar character : text) {
    char16_t code = 0;
    RunHandler([&] { code = KeyPress(character.unicode()); });
    if (code >= u' ') insert(QString(QChar(code)));
  }
}

void TextBox::TypeOver(const QString& text) {
  selectAll();
  if (text.isEmpty()) {
    del();
  } else if (KeyPress) {
    Type(text);
  } else {
    insert(text);
  }
}

/// The toolkit's menu. Its first entries would take back what was typed into the box past the
/// program's own steps.
void TextBox::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  constexpr int undoRedoAndLine = 3;
  const QList<QAction*> entries = menu->actions();
  for (int i = 0; !UndoesItself && !isReadOnly() && i < undoRedoAndLine; ++i) {
    menu->removeAction(entries[i]);
  }
  menu->popup(event->globalPos());
}

/// A text without the room for it ends in dots while nobody types in it.
void TextBox::paintEvent(QPaintEvent* event) {
  constexpr int toolkitsMargin = 2;
  QStyleOptionFrame option;
  initStyleOption(&option);
  const QRect room = style()
                         ->subElementRect(QStyle::SE_LineEditContents, &option, this)
                         .marginsRemoved(textMargins())
                         .adjusted(toolkitsMargin, 0, -toolkitsMargin, 0);
  if (hasFocus() || fontMetrics().horizontalAdvance(displayText()) <= room.width()) {
    QLineEdit::paintEvent(event);
    return;
  }
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
  const QString cut = fontMetrics().elidedText(displayText(), Qt::ElideRight, room.width());
  style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                        palette(), isEnabled(), cut, QPalette::Text);
}

/// Whichever way the focus comes, what is typed next replaces the whole text.
void TextBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  clickedInto_ = event->reason() == Qt::MouseFocusReason;
  const bool back =
      event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
  if (!clickedInto_ && !back) selectAll();
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (std::exchange(clickedInto_, false) && !hasSelectedText()) selectAll();
  if (event->button() == Qt::LeftButton) RunHandler(Click);
}

ScrollBar::ScrollBar(QWidget* parent) : QScrollBar(Qt::Horizontal, parent) {
  // Bars that move a page have their keys and the wheel turned round; these hold a value.
  setInvertedControls(false);
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QScrollBar::valueChanged, this, [this] { RunHandler(Change); });
}

void ScrollBar::SetValue(int value) {
  const int old = this->value();
  {
    const QSignalBlocker silent(this);
    setValue(value);
  }
  if (this->value() == value && value != old && Change) Change();
}

void ScrollBar::paintEvent(QPaintEvent* event) {
  QScrollBar::paintEvent(event);
  // The style draws the slider in the colour of its track, and a bar with the focus like any other.
  QStyleOptionSlider option;
  initStyleOption(&option);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
  const QRectF slider =
      style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  painter.drawRoundedRect(slider.adjusted(1, 2, -1, -2), 2, 2);
  if (hasFocus()) DrawFocusRing(painter, *this);
}

void ScrollBar::wheelEvent(QWheelEvent* event) {
  hasFocus() ? QScrollBar::wheelEvent(event) : event->ignore();
}

Button::Button(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] { RunHandler(Click); });
}

Timer::Timer(QObject* parent, const char* name, int intervalMs) : QTimer(parent) {
  setObjectName(QString::fromLatin1(name));
  setInterval(intervalMs);
  connect(this, &QTimer::timeout, this, [this] { RunHandler(Tick); });
}

void Timer::SetEnabled(bool enabled) {
  if (enabled == isActive()) return;
  enabled ? start() : stop();
}
