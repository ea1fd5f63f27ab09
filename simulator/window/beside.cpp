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
  const int x = right >= left ? std::min(window.right() + 1, screen.right() + 1 - width)
                              : std::max(window.left() - width, screen.left());
  return {x, std::clamp(window.top(), screen.top(), screen.bottom() + 1 - height), width, height};
}

void StandBeside(QWidget& window, const QRect& other, int least) {
  // How wide a frame the desktop draws is not known before the window has been on show for a while,
  // and a window that is moved until then leaves no room for it.
  constexpr int border = 2;
  constexpr int title = 30;
  const QMargins frame(border, title, border, border);
  const QRect room = RoomBeside(other, window.screen()->availableGeometry(),
                                window.size().grownBy(frame), least + 2 * border);
  window.setWindowState(Qt::WindowNoState);
  window.setGeometry(room.marginsRemoved(frame));
}

}  // namespace simulator
