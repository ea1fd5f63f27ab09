#pragma once

#include <QStringList>
#include <optional>

class QWidget;

// The values of a grid's cells as text. Text boxes and lists know their own; what labels hold is
// told by their column.

/// Nothing for a control that is neither.
std::optional<QString> CellValue(const QWidget& cell);

/// The items of a list; nothing for a text, which takes what is typed.
std::optional<QStringList> CellChoices(const QWidget& cell);

/// The place of a value among choices; -1 where it is none. Letter case and blanks do not count, a
/// word for nothing stands for another, and times are taken as people write them: "7:00 AM",
/// "07:00".
int ChoiceOf(const QStringList& choices, const QString& value);

/// Choices in one line: all of them, or the first and the last.
QString InShort(QStringList choices);

/// Gives a control a value that it takes, by what a user's keys run. In a text that filters its
/// keys a letter that is lacking is typed as its plain letter; returns what is left out all the
/// same.
QString PutCellValue(QWidget& cell, const QString& value);
