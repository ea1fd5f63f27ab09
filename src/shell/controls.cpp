#include "shell/controls.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOption>
#include <QTextDocument>
#include <QToolTip>
#include <QWheelEvent>

namespace {

constexpr int CellPadding = 5;

class AccessibleLabel : public QAccessibleWidget {
 public:
  explicit AccessibleLabel(Label* label)
      : QAccessibleWidget(label, label->Click ? QAccessible::Button : QAccessible::StaticText),
        label_(label) {}

  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
    const QString name = label_->accessibleName();
    const QString caption = label_->Caption().trimmed();
    return name.isEmpty() ? caption : name + QStringLiteral(": ") + caption;
  }

 private:
  Label* label_;
};

QAccessibleInterface* AccessibleLabelFactory(const QString& className, QObject* object) {
  auto* label = className == QLatin1String("Label") ? qobject_cast<Label*>(object) : nullptr;
  return label ? new AccessibleLabel(label) : nullptr;
}

/// Black or white, whichever stands out better from the colour.
QColor TextOn(QRgb color) {
  return qGray(color) >= 110 ? Qt::black : Qt::white;
}

void DrawFocusRing(QPainter& painter, const QWidget& control) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(control.palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(control.rect()).adjusted(1, 1, -1, -1), 2, 2);
}

/// Many dark desktops leave links the dark blue of light ones.
QColor ReadableLink(const QPalette& palette) {
  const QColor link = palette.color(QPalette::Link);
  const bool dark = qGray(palette.color(QPalette::Window).rgb()) < 110;
  return dark && qGray(link.rgb()) < 110 ? link.lighter(160) : link;
}

QColor TextColor(Label::Look look, const QPalette& palette) {
  switch (look) {
    case Label::Look::Quiet:
      return palette.color(QPalette::PlaceholderText);
    case Label::Look::Link:
      return ReadableLink(palette);
    case Label::Look::Plain:
      break;
  }
  return palette.color(QPalette::WindowText);
}

}  // namespace

Label::Label(QWidget* parent) : QWidget(parent) {
  static const bool installed = [] {
    QAccessible::installFactory(AccessibleLabelFactory);
    return true;
  }();
  Q_UNUSED(installed)
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAttribute(Qt::WA_Hover);
}

void Label::SetCaption(const QString& caption) {
  if (caption == caption_) return;
  const bool sized = widthInChars_ > 0 && !growsWithCaption_;
  caption_ = caption;
  if (!sized) updateGeometry();
  update();
}

void Label::SetBackColor(std::optional<QRgb> color) {
  if (color == backColor_) return;
  backColor_ = color;
  update();
}

void Label::SetWidthInChars(int chars) {
  widthInChars_ = chars;
  updateGeometry();
}

void Label::SetLook(Look look) {
  look_ = look;
  if (look == Look::Link) {
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
    setCursor(Qt::PointingHandCursor);
  }
}

void Label::MakeFocusable() {
  setFocusPolicy(Qt::StrongFocus);
}

QSize Label::sizeHint() const {
  const QFontMetrics metrics(font());
  int width = metrics.averageCharWidth() * widthInChars_;
  if (widthInChars_ == 0 || growsWithCaption_) {
    width = std::max(width, metrics.horizontalAdvance(caption_));
  }
  return {width + 2 * CellPadding + 2, metrics.height() + 6};
}

QSize Label::minimumSizeHint() const {
  const QFontMetrics metrics(font());
  const int width = metrics.averageCharWidth() * widthInChars_ + 2 * CellPadding + 2;
  return {widthInChars_ > 0 ? width : 0, metrics.height() + 6};
}

QRect Label::TextRoom() const {
  // A caption without a frame may run up to its end.
  const bool toEnd = !Click && !backColor_ && alignment_.testFlag(Qt::AlignLeft);
  return rect().adjusted(CellPadding, 0, toEnd ? 0 : -CellPadding, 0);
}

void Label::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool cell = Click && look_ != Look::Link;
  const bool hovered = (cell || focusPolicy() != Qt::NoFocus) && underMouse() && isEnabled();
  QColor text = TextColor(look_, palette());
  if (cell || backColor_) {
    const QColor fill = backColor_ ? QColor(*backColor_) : palette().color(QPalette::Base);
    if (backColor_) {
      text = TextOn(*backColor_);
    } else {
      text = palette().color(QPalette::Text);
    }
    QColor line = palette().color(QPalette::Mid);
    if (hovered) line = palette().color(QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
  }
  if (hasFocus()) DrawFocusRing(painter, *this);
  if (!isEnabled()) text = palette().color(QPalette::Disabled, QPalette::WindowText);
  painter.setPen(text);
  const QRect room = TextRoom();
  painter.drawText(room, static_cast<int>(alignment_),
                   QFontMetrics(font()).elidedText(caption_, elideMode_, room.width()));
}

void Label::mousePressEvent(QMouseEvent* event) {
  const int button = static_cast<int>(event->button());
  if (MouseDown && button <= static_cast<int>(Qt::MiddleButton)) {
    int shift = event->modifiers() & Qt::ShiftModifier ? 1 : 0;
    if (event->modifiers() & Qt::ControlModifier) shift += 2;
    if (event->modifiers() & Qt::AltModifier) shift += 4;
    RunHandler([&] { MouseDown(button, shift); });
  } else if (!Click || event->button() != Qt::LeftButton) {
    event->ignore();
  }
}

void Label::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
    RunHandler(Click);
  }
}

void Label::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void Label::keyPressEvent(QKeyEvent* event) {
  const bool space = event->key() == Qt::Key_Space;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if ((space || enter) && Click) {
    RunHandler([&] {
      if (MouseDown) MouseDown(1, event->modifiers() & Qt::ShiftModifier ? 1 : 0);
      Click();
    });
  } else if (space && MouseDown && event->modifiers() == Qt::ShiftModifier) {
    RunHandler([this] { MouseDown(2, 1); });
  } else {
    event->ignore();
  }
}

bool Label::event(QEvent* event) {
  // A handler may be given after the label was made; it is there by the time the label is polished.
  if (event->type() == QEvent::Polish && Click) MakeFocusable();
  if (event->type() == QEvent::FontChange) updateGeometry();
  if (event->type() == QEvent::ToolTip &&
      QFontMetrics(font()).horizontalAdvance(caption_) > TextRoom().width()) {
    const QString before = toolTip().isEmpty() ? QString() : toolTip() + QStringLiteral(": ");
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       Qt::convertFromPlainText(before + caption_.trimmed()), this);
    return true;
  }
  return QWidget::event(event);
}

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
