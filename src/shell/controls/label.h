#pragma once

#include <QPoint>
#include <QRgb>
#include <QWidget>
#include <functional>
#include <optional>

#include "panel/stopwatch.h"

/// Colours with a meaning, red in the high byte.
namespace Colors {
constexpr QRgb White = 0xFFFFFF;
constexpr QRgb Grey = 0x808080;
constexpr QRgb LightGrey = 0xC0C0C0;
constexpr QRgb PaleGrey = 0xE0E0E0;
constexpr QRgb LightRed = 0xFF8080;
constexpr QRgb LightGreen = 0x80FF80;
constexpr QRgb Green = 0x00FF00;
constexpr QRgb Red = 0xFF0000;
constexpr QRgb Yellow = 0xFFFF00;
constexpr QRgb Blue = 0x0000FF;
}  // namespace Colors

/// Whether the colours are a dark desktop's.
bool IsDark(const QPalette& palette);
/// Of a frame that is seen on a dark window, too.
QColor StrongFrame(const QPalette& palette);
/// The colour of a link: many dark desktops leave it the dark blue of light ones.
QColor ReadableLink(const QPalette& palette);

/// Whether a value says that nothing is set; such values step back behind those that are.
bool MeansNothing(const QString& caption);

/// What a click on a value cell does. It is seen in the cell and told to screen readers.
enum class CellAct { Press, OpensList, Toggles, Cycles };

/// A press of the pointer, by which the second click of a pair is known.
struct PointerPress {
  quint64 Timestamp = 0;  ///< Milliseconds of the window system's clock.
  QPoint At;              ///< On the screen.
};

/// The last press on any label.
const PointerPress& LastPress();

/// A caption, or with a click handler a value cell: hover, focus ring, Space and Enter click it.
/// A caption that is too long is squeezed a little before it is cut; the tooltip tells a cut one in
/// full.
class Label : public QWidget {
  Q_OBJECT
 public:
  explicit Label(QWidget* parent = nullptr);

  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  /// A quiet word behind the caption, no part of the value: the name of what a number stands for.
  /// It is cut, or left out, where there is no room, and then told by the tooltip.
  void SetNote(const QString& note);
  QString Note() const { return note_; }

  /// What a click does, for a label with a click handler.
  void SetAct(CellAct act);
  CellAct Act() const { return act_; }
  /// Whether a cell that toggles is set.
  void SetChecked(bool checked);
  bool Checked() const { return checked_; }
  /// Whether the list of a cell that opens one is open over it.
  void SetExpanded(bool expanded);
  bool Expanded() const { return expanded_; }
  /// What the label shows by its colour alone, in a word for screen readers: "Lit".
  void SetState(const QString& state);
  /// A caption that changes fast is told to screen readers at most once in this time.
  void SetAnnounceMs(int ms) { announceMs_ = ms; }
  /// The state when there is one, otherwise the caption.
  QString Value() const;

  /// Fills the label with the colour and writes in black or white, whichever reads better;
  /// without a value the label is plain again.
  void SetBackColor(std::optional<QRgb> color);
  std::optional<QRgb> BackColor() const { return backColor_; }

  /// Room for this many average characters at the least.
  void SetWidthInChars(int chars);
  /// However short room is, none of these captions is cut; they are squeezed.
  void KeepWhole(const QStringList& captions);
  /// Wishes for the width of its caption where there is more room than the least.
  void SetGrowsWithCaption() { growsWithCaption_ = true; }
  void SetAlignment(Qt::Alignment alignment) { alignment_ = alignment; }
  /// Where a caption that is too long loses its text; at its end unless told otherwise.
  void SetElideMode(Qt::TextElideMode mode) { elideMode_ = mode; }
  /// What the tooltip tells of a text that does not fit; empty where it does.
  QString CutText() const;

  enum class Look { Plain, Quiet, WebLink };
  /// Quiet lines are grey; a link is a clickable text that is no cell.
  void SetLook(Look look);

  std::function<void()> Click;
  /// What a user's click runs.
  void Press(int shift = 0);
  /// Button 1 left, 2 right, 4 middle; Shift 1 when Shift alone is held. A key that clicks tells of
  /// its Shift as the left button; without a click handler Shift+Space stands for Shift and the
  /// right button.
  std::function<void(int button, int shift)> MouseDown;

  /// Makes the label reachable by keys although it has no click handler. `action` names what
  /// Shift+Space does on it, for screen readers.
  void MakeFocusable(const QString& action = {});
  const QString& MouseDownAction() const { return mouseDownAction_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void CaptionChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  bool IsCell() const { return Click && look_ != Look::WebLink; }
  int GlyphRoom() const;
  QRect TextRoom() const;
  QRect NoteRoom() const;
  void PaintText(QPainter& painter) const;
  void PaintGlyph(QPainter& painter, const QColor& color) const;
  void TellChange(const QString& before);
  void Announce();

  QString caption_;
  QString note_;
  QString state_;
  QString mouseDownAction_;
  CellAct act_ = CellAct::Press;
  bool checked_ = false;
  bool expanded_ = false;
  int announceMs_ = 0;
  std::optional<Stopwatch> announced_;
  std::optional<QRgb> backColor_;
  Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
  Qt::TextElideMode elideMode_ = Qt::ElideRight;
  int widthInChars_ = 0;
  QString widest_;  ///< Of the captions that are kept whole.
  bool growsWithCaption_ = false;
  Look look_ = Look::Plain;
};

/// Between a text and the note behind it.
inline const QString NoteGap = QStringLiteral("  ");

/// The ring round the control that has the focus.
void DrawFocusRing(QPainter& painter, const QWidget& control);

/// The shade over the control below the pointer.
void DrawHoverShade(QPainter& painter, const QWidget& control);
