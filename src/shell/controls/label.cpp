#include "shell/controls/label.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QSet>
#include <QTextDocument>
#include <QToolTip>
#include <QtMath>

#include "shell/controls/accessible_controls.h"
#include "shell/controls/dialogs.h"

namespace {

PointerPress lastPress;

constexpr int CellPadding = 5;
constexpr double mostSqueezed = 0.7;
constexpr double leastRoom = 0.8;
constexpr int hoverShade = 56;
constexpr int glyphStrength = 150;

/// Black or white, whichever stands out better from the colour.
QColor TextOn(QRgb color) {
  return qGray(color) >= 110 ? Qt::black : Qt::white;
}

QColor TextColor(Label::Look look, const QPalette& palette) {
  switch (look) {
    case Label::Look::Quiet:
      return palette.color(QPalette::PlaceholderText);
    case Label::Look::WebLink:
      return ReadableLink(palette);
    case Label::Look::Plain:
      break;
  }
  return palette.color(QPalette::WindowText);
}

}  // namespace

const PointerPress& LastPress() {
  return lastPress;
}

bool IsDark(const QPalette& palette) {
  constexpr int middle = 128;
  return palette.color(QPalette::Window).lightness() < middle;
}

QColor StrongFrame(const QPalette& palette) {
  constexpr int strength = 150;
  QColor line = palette.color(QPalette::WindowText);
  line.setAlpha(strength);
  return line;
}

QColor ReadableLink(const QPalette& palette) {
  const QColor link = palette.color(QPalette::Link);
  const bool dark = qGray(palette.color(QPalette::Window).rgb()) < 110;
  return dark && qGray(link.rgb()) < 110 ? link.lighter(160) : link;
}

bool MeansNothing(const QString& caption) {
  static const QSet<QString> words = {{},
                                      QStringLiteral("-"),
                                      QStringLiteral("Clear"),
                                      QStringLiteral("--:--"),
                                      QStringLiteral("None"),
                                      QStringLiteral("No Action"),
                                      QStringLiteral("No Blink")};
  return words.contains(caption.trimmed());
}

void DrawFocusRing(QPainter& painter, const QWidget& control) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(control.palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(control.rect()).adjusted(1, 1, -1, -1), 2, 2);
}

void DrawHoverShade(QPainter& painter, const QWidget& control) {
  QColor shade = control.palette().color(QPalette::Highlight);
  shade.setAlpha(hoverShade);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shade);
  painter.drawRoundedRect(QRectF(control.rect()).adjusted(1, 1, -1, -1), 2, 2);
}

Label::Label(QWidget* parent) : QWidget(parent) {
  InstallAccessibleControls();
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAttribute(Qt::WA_Hover);
}

void Label::SetCaption(const QString& caption) {
  if (caption == caption_) return;
  const bool sized = widthInChars_ > 0 && !growsWithCaption_;
  const QString before = Value();
  caption_ = caption;
  if (!sized) updateGeometry();
  update();
  TellChange(before);
  Q_EMIT CaptionChanged();
}

void Label::SetNote(const QString& note) {
  if (note == note_) return;
  note_ = note;
  update();
  Announce();
}

void Label::SetAct(CellAct act) {
  act_ = act;
  updateGeometry();
}

void Label::SetChecked(bool checked) {
  if (checked == checked_) return;
  checked_ = checked;
  update();
  QAccessible::State changed;
  changed.checked = true;
  QAccessibleStateChangeEvent event(this, changed);
  TellReadersSeam(event);
}

void Label::SetExpanded(bool expanded) {
  if (expanded == expanded_) return;
  expanded_ = expanded;
  QAccessible::State changed;
  changed.expanded = true;
  QAccessibleStateChangeEvent event(this, changed);
  TellReadersSeam(event);
}

void Label::SetState(const QString& state) {
  const QString before = Value();
  state_ = state;
  TellChange(before);
}

QString Label::Value() const {
  return state_.isEmpty() ? caption_.trimmed() : state_;
}

/// A cell tells its value apart from its name; what is only read has its value in its name.
void Label::TellChange(const QString& before) {
  if (Value() != before) Announce();
}

void Label::Announce() {
  if (announceMs_ > 0 && announced_ && announced_->ElapsedMs() < announceMs_) return;
  announced_.emplace();
  if (Click) {
    QAccessibleValueChangeEvent value(this, Value());
    TellReadersSeam(value);
  }
  QAccessibleEvent text(this, Click ? QAccessible::DescriptionChanged : QAccessible::NameChanged);
  TellReadersSeam(text);
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
  if (look == Look::WebLink) {
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
    setCursor(Qt::PointingHandCursor);
  }
}

void Label::MakeFocusable(const QString& action) {
  mouseDownAction_ = action;
  setFocusPolicy(Qt::StrongFocus);
}

QSize Label::sizeHint() const {
  const QFontMetrics metrics(font());
  int width = metrics.averageCharWidth() * widthInChars_;
  if (widthInChars_ == 0 || growsWithCaption_) {
    width = std::max(width, metrics.horizontalAdvance(caption_));
  }
  return {width + 2 * CellPadding + 2 + GlyphRoom(), metrics.height() + 6};
}

QSize Label::minimumSizeHint() const {
  const QFontMetrics metrics(font());
  // Where room is short the text is squeezed.
  const auto chars = static_cast<int>(metrics.averageCharWidth() * widthInChars_ * leastRoom);
  const int whole = qCeil((metrics.horizontalAdvance(widest_) + 1) * mostSqueezed);
  const int width = std::max(chars, whole) + 2 * CellPadding + 2 + GlyphRoom();
  return {widthInChars_ > 0 ? width : 0, metrics.height() + 4};
}

void Label::KeepWhole(const QStringList& captions) {
  const QFontMetrics metrics(font());
  const auto narrower = [&](const QString& a, const QString& b) {
    return metrics.horizontalAdvance(a) < metrics.horizontalAdvance(b);
  };
  const auto widest = std::max_element(captions.begin(), captions.end(), narrower);
  if (widest != captions.end()) widest_ = *widest;
  updateGeometry();
}

int Label::GlyphRoom() const {
  return IsCell() && act_ != CellAct::Press ? QFontMetrics(font()).height() * 3 / 4 : 0;
}

QRect Label::TextRoom() const {
  // A caption without a frame may run up to its end.
  const bool toEnd = !Click && !backColor_ && alignment_.testFlag(Qt::AlignLeft);
  return rect().adjusted(CellPadding, 0, toEnd ? 0 : -CellPadding - GlyphRoom(), 0);
}

QRect Label::NoteRoom() const {
  const int before = QFontMetrics(font()).horizontalAdvance(caption_ + NoteGap);
  return TextRoom().adjusted(before, 0, 0, 0);
}

QString Label::CutText() const {
  const QFontMetrics metrics(font());
  const QString text = caption_.trimmed();
  const bool cut = metrics.horizontalAdvance(text) * mostSqueezed > TextRoom().width() ||
                   metrics.horizontalAdvance(note_) > std::max(NoteRoom().width(), 0);
  if (!cut) return {};
  const QString before = toolTip().isEmpty() ? QString() : toolTip() + QStringLiteral(": ");
  return before + (note_.isEmpty() ? text : text + NoteGap + note_);
}

void Label::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool hovered = (IsCell() || focusPolicy() != Qt::NoFocus) && underMouse() && isEnabled();
  QColor text = TextColor(look_, palette());
  if (IsCell() || backColor_) {
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(IsDark(palette()) ? StrongFrame(palette()) : palette().color(QPalette::Mid));
    painter.setBrush(backColor_ ? QColor(*backColor_) : palette().color(QPalette::Base));
    painter.drawRoundedRect(frame, 2, 2);
    if (hovered) DrawHoverShade(painter, *this);
    if (backColor_) {
      text = TextOn(*backColor_);
    } else {
      text = palette().color(MeansNothing(caption_) ? QPalette::PlaceholderText : QPalette::Text);
    }
  }
  if (hasFocus()) DrawFocusRing(painter, *this);
  if (!isEnabled()) text = palette().color(QPalette::Disabled, QPalette::WindowText);
  painter.setPen(text);
  PaintText(painter);
  if (GlyphRoom() > 0) PaintGlyph(painter, text);
}

/// Squeezes a caption that is a little too long before it cuts it.
void Label::PaintText(QPainter& painter) const {
  const QRectF room = TextRoom();
  const QFontMetricsF metrics(font());
  const double needed = metrics.horizontalAdvance(caption_.trimmed()) + 1;
  const double squeeze = std::clamp(room.width() / needed, mostSqueezed, 1.0);
  painter.save();
  painter.translate(room.topLeft());
  painter.scale(squeeze, 1);
  const QRectF wide(0, 0, room.width() / squeeze, room.height());
  // The blanks around a value never cost it a letter.
  const bool fits = metrics.horizontalAdvance(caption_) <= room.width();
  const QString& text = fits ? caption_ : caption_.trimmed();
  painter.drawText(wide, static_cast<int>(alignment_),
                   metrics.elidedText(text, elideMode_, wide.width()));
  painter.restore();
  constexpr int leastChars = 4;
  const QRect noteRoom = NoteRoom();
  if (note_.isEmpty() || noteRoom.width() < metrics.averageCharWidth() * leastChars) return;
  painter.save();
  if (isEnabled()) painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(noteRoom, static_cast<int>(alignment_),
                   metrics.elidedText(note_, Qt::ElideRight, noteRoom.width()));
  painter.restore();
}

/// At the right end: an arrow down for a list, a box with or without its tick for what toggles, two
/// small arrows for what takes the next value.
void Label::PaintGlyph(QPainter& painter, const QColor& color) const {
  const double size = GlyphRoom() * 0.55;
  const QRectF box(width() - CellPadding - size, (height() - size) / 2, size, size);
  QColor line = color;
  line.setAlpha(glyphStrength);
  painter.setPen(QPen(line, 1.2));
  painter.setBrush(Qt::NoBrush);
  const QPointF centre = box.center();
  const auto arrow = [&](double y, double step) {
    const QPointF points[] = {{box.left(), y}, {centre.x(), y + step}, {box.right(), y}};
    painter.drawPolyline(points, 3);
  };
  switch (act_) {
    case CellAct::OpensList:
      arrow(centre.y() - size / 4, size / 2);
      break;
    case CellAct::Cycles:
      arrow(centre.y() - size / 5, -size / 2.5);
      arrow(centre.y() + size / 5, size / 2.5);
      break;
    case CellAct::Toggles:
      painter.drawRect(box);
      if (checked_) {
        painter.setPen(QPen(color, 1.8));
        const QPointF tick[] = {{box.left() + size * 0.2, centre.y()},
                                {box.left() + size * 0.45, box.bottom() - size * 0.2},
                                {box.right() - size * 0.1, box.top() + size * 0.15}};
        painter.drawPolyline(tick, 3);
      }
      break;
    case CellAct::Press:
      break;
  }
}

void Label::mousePressEvent(QMouseEvent* event) {
  lastPress = {event->timestamp(), event->globalPosition().toPoint()};
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

void Label::Press(int shift) {
  RunHandler([&] {
    if (MouseDown) MouseDown(1, shift);
    Click();
  });
}

void Label::keyPressEvent(QKeyEvent* event) {
  const bool space = event->key() == Qt::Key_Space;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if ((space || enter) && Click) {
    Press(event->modifiers() & Qt::ShiftModifier ? 1 : 0);
  } else if (space && MouseDown && event->modifiers() == Qt::ShiftModifier) {
    RunHandler([this] { MouseDown(2, 1); });
  } else {
    event->ignore();
  }
}

bool Label::event(QEvent* event) {
  // A handler may be given after the label was made; it is there by the time the label is polished.
  if (event->type() == QEvent::Polish && Click) setFocusPolicy(Qt::StrongFocus);
  if (event->type() == QEvent::FontChange) updateGeometry();
  const QString cut = event->type() == QEvent::ToolTip ? CutText() : QString();
  if (!cut.isEmpty()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), Qt::convertFromPlainText(cut),
                       this);
    return true;
  }
  return QWidget::event(event);
}
