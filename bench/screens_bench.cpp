#include <cstring>
#include <string>

#include "bench_program.h"
#include "ratio.h"
#include "screen_table.h"

namespace {

struct Opening {
  Screen Shown;
  double First;  ///< Milliseconds from the click on a menu leaf until the screen is painted.
  double Best;   ///< The same when it has been open before.
};

Opening Open(frmT3MasterMDI& window, Screen screen) {
  constexpr int runs = 7;
  Opening opening{screen, 0, 1e12};
  for (int run = 0; run < runs; ++run) {
    window.UnloadAllForms();
    window.ShowForm(Screen::About);
    QApplication::processEvents();
    const auto open = [&] {
      window.UnloadAllForms();
      window.ShowForm(screen);
      QApplication::processEvents();
      window.repaint();
    };
    const double milliseconds = BestMicroseconds(open, 1) / 1000;
    if (run == 0) opening.First = milliseconds;
    opening.Best = std::min(opening.Best, milliseconds);
  }
  return opening;
}

/// The lists that choose which item a screen shows.
constexpr const char* Selectors[] = {"cboGroup",       "cboInput",        "cboFennlinkDevice",
                                     "cboFLinkDevice", "cboPresetNumber", "cboTimerNumber",
                                     "cboTimer",       "cboDDev",         "cboDOut"};

struct Change {
  std::string Topic;
  double Milliseconds;  ///< From the choice of another item until the screen is painted.
};

/// Walks each selector of the screen once; the change in the middle of their order counts.
void AddChanges(frmT3MasterMDI& window, Screen screen, std::vector<Change>& changes) {
  window.UnloadAllForms();
  ChildForm* form = window.ShowForm(screen);
  QApplication::processEvents();
  for (const char* selector : Selectors) {
    auto* list = form->findChild<ComboBox*>(QLatin1String(selector));
    if (!list || !list->isVisible()) continue;
    std::vector<double> times;
    for (int item = 0; item < list->count(); ++item) {
      const auto choose = [&] {
        list->setCurrentIndex(item);
        QApplication::processEvents();
        window.repaint();
      };
      times.push_back(BestMicroseconds(choose, 1) / 1000);
    }
    changes.push_back(
        {std::string(ScreenName(screen) + std::strlen("frmT3")) + ' ' + selector, Median(times)});
  }
}

const char* ShortName(const Opening& opening) {
  return ScreenName(opening.Shown) + std::strlen("frmT3");
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::No);
  frmT3MasterMDI& window = program.Window;
  UseWholePanel();

  // A screen of one label costs what every screen costs.
  const Opening empty = Open(window, Screen::AddOnModuleNone);
  std::vector<Opening> openings;
  std::vector<Change> changes;
  for (const ScreenEntry& entry : ScreenTable()) {
    if (!entry.Create || entry.Name == Screen::About) continue;
    openings.push_back(Open(window, entry.Name));
    AddChanges(window, entry.Name, changes);
  }
  constexpr std::size_t shown = 10;
  constexpr double limitMilliseconds = 30;
  RatioReport report;
  std::sort(openings.begin(), openings.end(),
            [](const Opening& a, const Opening& b) { return a.First > b.First; });
  openings.resize(std::min(openings.size(), shown));
  for (const Opening& opening : openings) {
    report.Within(ShortName(opening), opening.First, limitMilliseconds);
    report.Line("  again", opening.Best, "empty screen", empty.Best, 60, "ms");
  }
  constexpr double changeLimitMilliseconds = 10;
  for (const Change& change : changes) {
    report.Within(change.Topic.c_str(), change.Milliseconds, changeLimitMilliseconds);
  }
  return report.ExitCode();
}
