#pragma once

#include <QRect>

class QWidget;

namespace simulator {

/// On the screen, on that side of a window which has more room: as wide as wanted where there is
/// room, over the window as far as the least width needs it.
QRect RoomBeside(const QRect& window, const QRect& screen, QSize wanted, int least);

/// Puts a window there, at its present size.
void StandBeside(QWidget& window, const QRect& other, int least);

/// Gives a window this size or what the screen has of it, its frame included, and moves it there.
/// Whether there was room for all of it.
bool FitScreen(QWidget& window, QSize wanted);

}  // namespace simulator
