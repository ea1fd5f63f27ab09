#pragma once

class QWidget;

namespace simulator {

/// Lets the keys of the window's menus work from its fields, too, which would take some of them for
/// keys of their own.
void LetMenuKeysThrough(QWidget& window);

}  // namespace simulator
