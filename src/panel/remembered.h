#pragma once

#include <QDateTime>
#include <QStringList>
#include <optional>
#include <vector>

// What the program remembers from one start to the next, in the file Recent.ini of the data folder.
// Nothing is said where it cannot be written.

struct RecentProject {
  QString Path;
  QDateTime When;         ///< Opened or saved last.
  QDateTime SentAt = {};  ///< Not valid until it has been sent to a panel from here.
  QString SentTo = {};    ///< "10.0.0.7".
};

/// Newest first, those that are there.
std::vector<RecentProject> RecentProjects();
void RememberProject(const QString& path, const QDateTime& when);
/// All of an open project has been sent to a panel.
void RememberSent(const QString& path, const QDateTime& when, const QString& panel);

/// What was typed into a box and led somewhere.
enum class Typed { TcpAddress, PhoneNumber };
/// Newest first.
QStringList RecentlyTyped(Typed box);
void RememberTyped(Typed box, const QString& text);
