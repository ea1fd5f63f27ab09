#pragma once

#include <QString>
#include <optional>

class QWidget;

// The value of a cell of a grid as text, read and set as a user would.

/// Nothing for a control that holds no value, such as a button or a caption.
std::optional<QString> CellValue(const QWidget& cell);

/// Whether a user could give the cell that value; looking changes nothing. `words` is all that a
/// cell which toggles or cycles can show.
bool CellTakes(QWidget& cell, const QString& value, const QStringList& words);

/// Gives the cell a value that it takes, by what a user's clicks or keys run. A name loses the
/// characters that cannot be typed into it.
void PutCellValue(QWidget& cell, const QString& value, const QStringList& words);
