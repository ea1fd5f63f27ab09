#pragma once

#include <QStringList>
#include <optional>

class QWidget;

// The value of a cell of a grid as text, read and set as a user would.

/// Nothing for a control that holds no value, such as a button or a caption.
std::optional<QString> CellValue(const QWidget& cell);

/// All that a user could choose for the cell, in their order; nothing for a text, which takes what
/// is typed. Looking changes nothing. `words` is all that a cell which toggles or cycles can show.
std::optional<QStringList> CellChoices(QWidget& cell, const QStringList& words);

/// The place of a value among choices; -1 where it is none. Letter case and blanks do not count, a
/// word for nothing stands for another, and times are taken as people write them: "7:00 AM",
/// "07:00".
int ChoiceOf(const QStringList& choices, const QString& value);

/// Choices in one line: all of them, or the first and the last.
QString InShort(QStringList choices);

/// Gives the cell a value that it takes, by what a user's clicks or keys run. In a text that
/// filters its keys a letter that is lacking is typed as its plain letter; returns what is left out
/// all the same.
QString PutCellValue(QWidget& cell, const QString& value, const QStringList& words);
