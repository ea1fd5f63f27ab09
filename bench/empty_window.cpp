#include <QApplication>
#include <QMainWindow>

#include "first_paint.h"

/// What a Qt program costs that does nothing: the base of shell_bench.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(737, 543);
  return ReportFirstPaint(
      window, [&] { window.show(); }, [] {});
}
