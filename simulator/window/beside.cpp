#include "simulator/window/beside.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace simulator {

QRect RoomBeside(const QRect& window, const QRect& screen, QSize wanted, int least) {
  const int left = window.left() - screen.left();
  const int right = screen.right() - window.right();
  const int smallest = std::min(least, screen.width());
  const int width = std::clamp(std::max(left, right), smallest, std::max(smallest, wanted.width()));
  const int height = std::min(wanted.height(), screen.height());
  // Where neither side has the room the right half of the window is covered, not its menus.
  const int x = right >= left || left < smallest
                    ? std::min(window.right() + 1, screen.right() + 1 - width)
                    : std::max(window.left() - width, screen.left());
  return {x, std::clamp(window.top(), screen.top(), screen.bottom() + 1 - height), width, height};
}

namespace {

/// How wide a frame the desktop draws is not known before the window has been on show for a while,
/// nor as long as it is maximized.
constexpr int Border = 2;
constexpr QMargins UsualFrame(Border, 30, Border, 6);

QMargins FrameOf(const QWidget& window) {
  const QRect inner = window.geometry();
  const QRect outer = window.frameGeometry();
  return {std::max(inner.left() - outer.left(), UsualFrame.left()),
          std::max(inner.top() - outer.top(), UsualFrame.top()),
          std::max(outer.right() - inner.right(), UsualFrame.right()),
          std::max(outer.bottom() - inner.bottom(), UsualFrame.bottom())};
}

}  // namespace

bool FitScreen(QWidget& window, QSize wanted) {
  const QMargins frame = FrameOf(window);
  const QRect room = window.screen()->availableGeometry().marginsRemoved(frame);
  const QSize size = wanted.boundedTo(room.size()).expandedTo(window.minimumSizeHint());
  const bool known = window.isVisible();  // else the desktop finds it a place
  window.resize(size);
  if (known) {
    const QPoint at = window.geometry().topLeft();
    const int x = std::max(std::min(at.x(), room.right() + 1 - size.width()), room.left());
    const int y = std::max(std::min(at.y(), room.bottom() + 1 - size.height()), room.top());
    if (QPoint(x, y) != at) window.setGeometry({{x, y}, size});
  }
  return size == wanted;
}

void StandBeside(QWidget& window, const QRect& other, int least) {
  // A window that is moved before its frame is known leaves no room for it.
  const QMargins& frame = UsualFrame;
  const QRect room = RoomBeside(
      other, window.screen()->availableGeometry(), window.size().grownBy(frame),
      std::max(least, window.minimumSizeHint().expandedTo(window.minimumSize()).width()) +
          2 * Border);
  window.setWindowState(Qt::WindowNoState);
  window.setGeometry(room.marginsRemoved(frame));
}

}  // namespace simulator
