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
#include "shell/controls/child_form.h"

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

std::function<void()> Opens(Screen screen) {
  return [screen] {
    UnloadAllForms();
    ShowForm(screen);
  };
}

}  // namespace

void ListFindings() {
  FindingsList::OfProgram().Check();
  UnloadAllForms();
  const ChildForm* form = ShowForm(Screen::Document);
  auto* list = form ? form->findChild<QWidget*>(QStringLiteral("lstFindings")) : nullptr;
  if (list && !FindingsList::OfProgram().Rows().empty()) list->setFocus();
}

std::vector<WorkStep> WorkStepsOfProgram() {
  const int points = InstalledPoints(LiveProject);
  std::set<Item> users, groups, inputs;
  for (const Use& use : UsesOfProject(LiveProject)) {
    users.insert(use.User);
    if (use.User.Kind == ItemKind::Group) groups.insert(use.User);
    // An input is at work that does something or is followed; its own pilot is neither.
    const Item& input = use.Effect == EffectFollows ? use.Used : use.User;
    if (input.Kind == ItemKind::Input || input.Kind == ItemKind::DeviceInput) inputs.insert(input);
  }
  const auto timers = std::count_if(users.begin(), users.end(),
                                    [](const Item& item) { return item.Kind == ItemKind::Timer; });
  const int idle = IdleTimers(users);
  const auto& found = FindingsList::OfProgram().Counts();
  return {
      points == 0
          ? WorkStep{QStringLiteral("No points yet: say what the panel has"), Opens(Screen::Setup)}
          : WorkStep{QStringLiteral("%1, %2 named")
                         .arg(Counted(points, QStringLiteral("relay")))
                         .arg(NamedOf(ItemKind::Relay, points)),
                     Opens(Screen::EditRelayNames)},
      {Counted(static_cast<qsizetype>(groups.size()), QStringLiteral("group")),
       Opens(Screen::RelayGrouping)},
      {Counted(static_cast<qsizetype>(inputs.size()), QStringLiteral("input at work"),
               QStringLiteral("inputs at work")),
       Opens(Screen::InputOptions)},
      {Counted(timers, QStringLiteral("timer at work"), QStringLiteral("timers at work")) +
           (idle > 0 ? QStringLiteral(", %1 idle").arg(idle) : QString()),
       Opens(Screen::TimersConfigure)},
      {CountOf(found.Errors, Severity::Error) + QStringLiteral(", ") +
           CountOf(found.Warnings, Severity::Warning),
       ListFindings},
      {SentInWords(), Opens(Screen::Connect)},
  };
}
