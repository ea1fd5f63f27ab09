#pragma once

#include <QStringList>
#include <functional>

/// Runs `work` for every file in a process of its own, as many at a time as the machine has cores,
/// and passes their standard output on in the order of the files. Gives the highest of the
/// statuses.
int ForEachFile(const QStringList& files, const std::function<int(const QString& file)>& work);
