#include "simulator/window/files.h"

#include <QDateTime>
#include <QMenu>
#include <algorithm>
#include <stdexcept>

#include "simulator/memory/write_file.h"
#include "simulator/rehearsal/rehearsal.h"

namespace simulator {

void Files::Record() {
  Source.Touched = [this](const std::string& words) {
    const QString time = Source.Time().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss "));
    Presses += time.toStdString() + words + "\n";
  };
}

void Files::AddEntries(QMenu& menu) {
  menu.addAction(QStringLiteral("&Load a Script of Presses..."), &menu, [this] { LoadPresses(); });
  menu.addSeparator();
  const auto add = [&](const char* caption, const char* suffix,
                       const std::function<std::string()>& content) {
    const QString title = QString::fromLatin1(caption);
    menu.addAction(title + QStringLiteral("..."), &menu, [this, title, suffix, &content] {
      Save(QString(title).remove(QLatin1Char('&')), QString::fromLatin1(suffix), content);
    });
  };
  QAction* presses = menu.addAction(QStringLiteral("&Save My Presses..."), &menu, [this] {
    Save(QStringLiteral("Save My Presses"), QStringLiteral("txt"),
         [this] { return "# What was done in the simulated panel's window.\n" + Presses; });
  });
  menu.setToolTipsVisible(true);
  presses->setToolTip(
      QStringLiteral("What was done by hand; what a loaded script has done stands in that script"));
  add("Save the L&og As Rows", "tsv", Rows);
  add("Save the &Picture's Days", "svg", Plan);
  add("Save Their &Burn Hours", "tsv", BurnHours);
}

void Files::LoadPresses() {
  const QString path =
      AskPath(QStringLiteral("Load a Script of Presses"), QStringLiteral("txt"), false);
  if (path.isEmpty()) return;
  try {
    const std::vector<ScriptedAct> acts = ReadScript(path);
    const Engine& runner = Source.Runner();
    const auto past = std::count_if(acts.begin(), acts.end(), [&runner](const ScriptedAct& act) {
      return runner.Days().FromWall(act.Wall) < runner.Now();
    });
    Source.Runner().SetScript(acts);
    const auto coming = static_cast<qsizetype>(acts.size()) - past;
    Tell(QStringLiteral("%1 presses are to come, %2 are past.").arg(coming).arg(past));
  } catch (const std::exception& failure) {
    TellFailure(QString::fromUtf8(failure.what()));
  }
}

void Files::Save(const QString& title, const QString& suffix,
                 const std::function<std::string()>& content) {
  const QString path = AskPath(title, suffix, true);
  if (path.isEmpty()) return;
  try {
    WriteFile(path, content(), "The file");
    Tell(QStringLiteral("Saved: %1").arg(path));
  } catch (const std::exception& failure) {
    TellFailure(QString::fromUtf8(failure.what()));
  }
}

}  // namespace simulator
