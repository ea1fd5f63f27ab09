#include <QMouseEvent>

#include "bench_program.h"
#include "dimmer/dimmer_output_form.h"
#include "panel/live_dimmers.h"
#include "panel/program_state.h"
#include "ratio.h"

// What a user waits for on the dimmer outputs' screen, layout and painting included.

namespace {

void FillDimmers() {
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    DimSetEnabled(dev, 1);
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      DimSetTrackMode(dev, out, static_cast<Int16>(out % 2 == 0 ? 1 : 3));
      DimSetPowerOn(dev, out, static_cast<Int16>(out * 20));
      DimSetMin(dev, out, static_cast<Int16>(dev));
      DimSetDMX(dev, out, static_cast<Int16>(dev * 40 + out));
      for (Int16 slot = 0; slot < ControlSlotCount; ++slot) {
        DimSetCtlType(dev, out, slot, static_cast<Int16>((slot + out + 1) % 5));
        DimSetCtlDevice(dev, out, slot, static_cast<Int16>(slot % 2 * 7));
        DimSetCtlAction(dev, out, slot, static_cast<Int16>((slot + dev) * 4));
        DimSetCtlRevert(dev, out, slot, static_cast<Int16>(slot + out));
      }
    }
  }
}

/// The longest of `count` choices until it is laid out and painted, each at its best of several
/// rounds.
double LongestChoice(int count, const std::function<void(int)>& choose) {
  constexpr int rounds = 15;
  std::vector<double> best(static_cast<std::size_t>(count), 1e12);
  for (int round = 0; round < rounds; ++round) {
    for (int i = 0; i < count; ++i) {
      double& fastest = best[static_cast<std::size_t>(i)];
      fastest = std::min(fastest, BestMicroseconds(
                                      [&] {
                                        choose(i);
                                        QApplication::processEvents();
                                      },
                                      1));
    }
  }
  return *std::max_element(best.begin(), best.end()) / 1000;
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::No);
  frmT3MasterMDI& window = program.Window;
  FillDimmers();
  window.UnloadAllForms();
  window.ShowForm(Screen::DimmerOutput);
  QApplication::processEvents();
  const auto list = [&window](const char* name) {
    return window.findChild<ComboBox*>(QString::fromLatin1(name));
  };
  ComboBox* output = list("cboDOut");
  ComboBox* slot = list("cboCONum");
  auto* graph = window.findChild<QWidget*>(QStringLiteral("picScale"));

  RatioReport report;
  constexpr double limitMilliseconds = 10;
  const double outputs = LongestChoice(4, [output](int i) { output->SetListIndex(i); });
  report.Within("another output", outputs, limitMilliseconds);
  const double slots = LongestChoice(16, [slot](int i) { slot->SetListIndex(i); });
  report.Within("another slot", slots, limitMilliseconds);

  const auto mouse = [graph](QEvent::Type type, double x, Qt::MouseButtons buttons) {
    const QPointF at(x, 40);
    QMouseEvent event(type, at, graph->mapToGlobal(at), Qt::LeftButton, buttons, {});
    QApplication::sendEvent(graph, &event);
  };
  output->SetListIndex(0);
  auto* scale = window.findChild<frmScale*>();
  scale->picScale_MouseDown(1, 0, 0, 0);
  constexpr double movesEachSecond = 120;
  const double moves = LongestChoice(
      graph->width(), [&mouse](int i) { mouse(QEvent::MouseMove, i, Qt::LeftButton); });
  report.Within("a move of the curve", moves, 1000 / movesEachSecond);
  if (DataChanged == 0) return 1;
  return report.ExitCode();
}
