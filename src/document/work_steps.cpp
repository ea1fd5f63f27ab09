#include "document/work_steps.h"

#include <algorithm>
#include <set>

#include "document/findings_list.h"
#include "document/rules/uses.h"
#include "panel/lists_in_words.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/remembered.h"

namespace {

int NamedOf(ItemKind kind, int count) {
  int named = 0;
  for (int i = 0; i < count; ++i) named += OwnName(LiveProject, {kind, i}).isEmpty() ? 0 : 1;
  return named;
}

/// Timers that are named and do nothing.
int IdleTimers(const std::set<Item>& users) {
  int idle = 0;
  for (int i = 0; i < ItemCount; ++i) {
    const Item timer{ItemKind::Timer, i};
    if (!OwnName(LiveProject, timer).isEmpty() && !users.contains(timer)) ++idle;
  }
  return idle;
}

QString SentInWords() {
  for (const RecentProject& project : RecentProjects()) {
    if (project.Path != CurrentFileName || !project.SentAt.isValid()) continue;
    return QStringLiteral("Last sent %1 to %2")
        .arg(project.SentAt.toString(QStringLiteral("yyyy-MM-dd HH:mm")), project.SentTo);
  }
  return QStringLiteral("Not sent to a panel from here yet");
}

}  // namespace

std::vector<WorkStep> WorkStepsOfProgram() {
  const int points = InstalledPoints(LiveProject);
  std::set<Item> users, groups;
  int inputs = 0;
  for (const Use& use : UsesOfProject(LiveProject)) {
    const bool first = users.insert(use.User).second;
    if (first && (use.User.Kind == ItemKind::Input || use.User.Kind == ItemKind::DeviceInput)) {
      ++inputs;
    }
    if (use.User.Kind == ItemKind::Group) groups.insert(use.User);
  }
  const auto timers = std::count_if(users.begin(), users.end(),
                                    [](const Item& item) { return item.Kind == ItemKind::Timer; });
  const int idle = IdleTimers(users);
  const auto& found = FindingsList::OfProgram().Counts();
  return {
      points == 0 ? WorkStep{QStringLiteral("No points yet: say what the panel has"), Screen::Setup}
                  : WorkStep{QStringLiteral("%1, %2 named")
                                 .arg(Counted(points, QStringLiteral("relay")))
                                 .arg(NamedOf(ItemKind::Relay, points)),
                             Screen::EditRelayNames},
      {Counted(static_cast<qsizetype>(groups.size()), QStringLiteral("group")),
       Screen::RelayGrouping},
      {Counted(inputs, QStringLiteral("input at work"), QStringLiteral("inputs at work")),
       Screen::InputOptions},
      {Counted(timers, QStringLiteral("timer at work"), QStringLiteral("timers at work")) +
           (idle > 0 ? QStringLiteral(", %1 idle").arg(idle) : QString()),
       Screen::TimersConfigure},
      {CountOf(found.Errors, Severity::Error) + QStringLiteral(", ") +
           CountOf(found.Warnings, Severity::Warning),
       Screen::Document},
      {SentInWords(), Screen::Connect},
  };
}
