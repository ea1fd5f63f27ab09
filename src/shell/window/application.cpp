#include "shell/window/application.h"

#include <QLibrary>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QThread>
#include <QTimer>
#include <exception>
#include <thread>

#include "panel/live_dimmers.h"
#include "panel/program_state.h"
#include "shell/controls/dialogs.h"
#include "shell/controls/label.h"

namespace {

/// The desktop's style with three changes. Drop-down lists open below their field and scroll: a
/// list of a thousand items would otherwise cover the screen from top to bottom. The menu bar's
/// overflow button, which six entries never need, has no picture, so that no start waits for the
/// image plugins. Check boxes and option buttons, and in dark colours boxes for text, buttons and
/// drop-down lists have a frame that is seen: that of the style in use is nearly the colour of a
/// dark window. The one with the focus shows it from the first, not from the first Tab on.
class ListStyle : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isDark = IsDark(option->palette);
    const bool focused = option->state & State_HasFocus;
    const bool round = element == PE_IndicatorRadioButton;
    const auto* options = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool flat = options && options->features.testFlag(QStyleOptionButton::Flat);
    const bool raised = element == PE_PanelButtonCommand && !flat && (isDark || focused);
    const bool field = element == PE_FrameLineEdit && isDark && !focused;
    if (!round && !field && !raised && element != PE_IndicatorCheckBox) return;
    const QPen pen = focused ? QPen(option->palette.color(QPalette::Highlight), 2)
                             : QPen(StrongFrame(option->palette));
    const double inset = pen.widthF() / 2;
    const QRectF frame = QRectF(option->rect).adjusted(inset, inset, -inset, -inset);
    const double corner = raised ? 2 : 0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    round ? painter->drawEllipse(frame) : painter->drawRoundedRect(frame, corner, corner);
    painter->restore();
  }

  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override {
    return icon == SP_ToolBarHorizontalExtensionButton
               ? QIcon()
               : QProxyStyle::standardIcon(icon, option, widget);
  }
};

/// The configuration of the fonts is a third of what a start computes. It is read beside the
/// connection to the display, by the library that the toolkit asks for fonts, and kept there.
std::thread fontsAhead;

void ReadFontsAhead() {
  const auto init =
      reinterpret_cast<int (*)()>(QLibrary(QStringLiteral("fontconfig"), 1).resolve("FcInit"));
  if (init) fontsAhead = std::thread(init);
}

/// Of the desktop's window colour, so that quiet text is read as easily as the least that is asked
/// for: 4.5 to 1. Some dark desktops leave it the black of light ones, and the usual half is too
/// pale on grey.
void MendQuietText() {
  constexpr int quiet = 170;
  QPalette palette = QApplication::palette();
  QColor text = palette.color(QPalette::WindowText);
  text.setAlpha(quiet);
  if (palette.color(QPalette::PlaceholderText) == text) return;
  palette.setColor(QPalette::PlaceholderText, text);
  QApplication::setPalette(palette);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication((ReadFontsAhead(), argc), argv) {
  if (fontsAhead.joinable()) fontsAhead.join();
  setStyle(new ListStyle);
  MendQuietText();
  setApplicationName(ProgramTitle);
  // The image plugins that an icon brings along come after the window's first picture.
  constexpr int afterFirstPictureMs = 200;
  QTimer::singleShot(afterFirstPictureMs, this,
                     [] { setWindowIcon(QIcon(QStringLiteral(":/tamberloom3.png"))); });
  setDesktopFileName(QStringLiteral("com.example.tamberloom3"));
  DimmerAddressAlert = [](Int32 addr) {
    MsgBox(QString::number(addr), MsgIcon::None, ProgramTitle);
  };
}

bool Application::notify(QObject* receiver, QEvent* event) {
  // Qt's own threads deliver events through here too; handlers are the interface thread's.
  if (QThread::currentThread() != thread()) return QApplication::notify(receiver, event);
  bool result = true;
  RunEvent([&] { result = QApplication::notify(receiver, event); });
  return result;
}

bool Application::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) MendQuietText();
  return QApplication::event(event);
}
