#include "panel/remembered.h"

#include <QFileInfo>
#include <QSettings>
#include <algorithm>

#include "panel/program_state.h"

namespace {

const QString ProjectsKey = QStringLiteral("Projects");

QSettings Store() {
  return QSettings(DataPath(QStringLiteral("Recent.ini")), QSettings::IniFormat);
}

QString KeyOf(Typed box) {
  return box == Typed::TcpAddress ? QStringLiteral("Addresses") : QStringLiteral("Numbers");
}

/// The path comes last, as it may hold anything.
QString ToLine(const RecentProject& project) {
  return QStringList{project.When.toString(Qt::ISODate), project.SentAt.toString(Qt::ISODate),
                     project.SentTo, project.Path}
      .join(u'\t');
}

std::vector<RecentProject> AllProjects() {
  std::vector<RecentProject> projects;
  for (const QString& line : Store().value(ProjectsKey).toStringList()) {
    const auto time = [&](int at) {
      return QDateTime::fromString(line.section(u'\t', at, at), Qt::ISODate);
    };
    projects.push_back(
        {line.section(u'\t', 3), time(0), time(1), line.section(u'\t', 2, 2).simplified()});
  }
  return projects;
}

/// The project's own row, taken out of the others.
RecentProject TakeOut(std::vector<RecentProject>& projects, const QString& path) {
  const auto own = std::find_if(projects.begin(), projects.end(),
                                [&](const RecentProject& one) { return one.Path == path; });
  if (own == projects.end()) return {path, {}};
  RecentProject taken = *own;
  projects.erase(own);
  return taken;
}

void PutFirst(std::vector<RecentProject> projects, const RecentProject& first) {
  constexpr std::size_t most = 20;
  projects.insert(projects.begin(), first);
  if (projects.size() > most) projects.resize(most);
  QStringList lines;
  for (const RecentProject& one : projects) lines << ToLine(one);
  Store().setValue(ProjectsKey, lines);
}

}  // namespace

std::vector<RecentProject> RecentProjects() {
  std::vector<RecentProject> projects = AllProjects();
  std::erase_if(projects, [](const RecentProject& one) { return !QFileInfo::exists(one.Path); });
  return projects;
}

void RememberProject(const QString& path, const QDateTime& when) {
  std::vector<RecentProject> projects = AllProjects();
  RecentProject own = TakeOut(projects, path);
  own.When = when;
  PutFirst(projects, own);
}

void RememberSent(const QString& path, const QDateTime& when, const QString& panel) {
  std::vector<RecentProject> projects = AllProjects();
  RecentProject own = TakeOut(projects, path);
  if (!own.When.isValid()) own.When = when;
  own.SentAt = when;
  own.SentTo = panel;
  PutFirst(projects, own);
}

QStringList RecentlyTyped(Typed box) {
  return Store().value(KeyOf(box)).toStringList();
}

void RememberTyped(Typed box, const QString& text) {
  constexpr qsizetype most = 4;
  const QString typed = text.trimmed();
  if (typed.isEmpty()) return;
  QStringList texts = RecentlyTyped(box);
  texts.removeAll(typed);
  texts.prepend(typed);
  Store().setValue(KeyOf(box), texts.mid(0, most));
}
