#include "shell/controls.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOption>
#include <QWheelEvent>

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
  setMaxVisibleItems(18);
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QComboBox::activated, this, [this] { RunHandler(Click); });
}

void ComboBox::SetListIndex(int index) {
  if (index < 0 || index >= count()) {
    setCurrentIndex(-1);
  } else if (index != currentIndex()) {
    setCurrentIndex(index);
    if (Click) Click();
  }
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

OptionButton::OptionButton(const QString& text, QWidget* parent) : QRadioButton(text, parent) {
  connect(this, &QRadioButton::clicked, this, [this] { RunHandler(Click); });
}

void OptionButton::Select() {
  if (isChecked()) return;
  setChecked(true);
  if (Click) Click();
}

CheckBox::CheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
  connect(this, &QCheckBox::clicked, this, [this] { RunHandler(Click); });
}

void CheckBox::SetValue(int value) {
  if (isChecked() == (value != 0)) return;
  setChecked(value != 0);
  if (Click) Click();
}

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textEdited, this, [this] { RunHandler(Change); });
  connect(this, &QLineEdit::returnPressed, this, [this] { RunHandler(Click); });
}

void TextBox::SetText(const QString& text) {
  setText(text);
  if (Change) Change();
}

void TextBox::keyPressEvent(QKeyEvent* event) {
  constexpr char16_t backspace = 8;
  const QString typed = event->text();
  const bool character = !typed.isEmpty() &&
                         (typed[0].isPrint() || typed[0].isSurrogate() || typed[0] == backspace) &&
                         !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (!KeyPress || !character) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  char16_t code = 0;
  RunHandler([&] { code = KeyPress(typed[0].unicode()); });
  if (code == backspace) {
    QLineEdit::keyPressEvent(event);
  } else if (code != 0) {
    insert(QString(QChar(code)));
  }
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
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
