#pragma once

#include <QDateTime>
#include <QString>
#include <span>
#include <vector>

/// An item that somebody has tried at the panel.
struct TestedItem {
  QString Item;  ///< "RELAY 03", "FL 1A INPUT 2".
  QString By;    ///< May be empty.
  QDateTime At;
};

/// None where there is no such file. Throws RunTimeFailure, which names the file and the line, for
/// one that is damaged or something else.
std::vector<TestedItem> ReadTested(const QString& projectFile);

/// Keeps them beside the project; without any there is no file. Throws RunTimeFailure where it
/// cannot be written.
void WriteTested(const QString& projectFile, std::span<const TestedItem> tested);

/// The row of an item; null where it has none.
const TestedItem* FindTested(std::span<const TestedItem> tested, const QString& item);
