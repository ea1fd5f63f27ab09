#include "shell/controls/cell_value.h"

#include <QHash>
#include <algorithm>

#include "panel/typed_time.h"
#include "shell/controls/controls.h"

namespace {

bool IsSame(const QString& one, const QString& other) {
  return one.simplified().compare(other.simplified(), Qt::CaseInsensitive) == 0;
}

/// Letters that do not come apart into a plain one and its marks.
QString PlainLetters(const QString& text) {
  static const QHash<QChar, QString> plainOf = {
      {u'\u00DF', "SS"}, {u'\u1E9E', "SS"}, {u'\u00C6', "AE"}, {u'\u00E6', "AE"}, {u'\u00D8', "O"},
      {u'\u00F8', "O"},  {u'\u0152', "OE"}, {u'\u0153', "OE"}, {u'\u0141', "L"},  {u'\u0142', "L"},
      {u'\u0110', "D"},  {u'\u0111', "D"},  {u'\u00D0', "D"},  {u'\u00F0', "D"},  {u'\u00DE', "TH"},
      {u'\u00FE', "TH"}, {u'\u0131', "I"},  {u'\u2013', "-"},  {u'\u2014', "-"}};
  QString plain;
  for (const QChar c : text.normalized(QString::NormalizationForm_KD)) {
    if (!c.isMark()) plain += plainOf.value(c, c);
  }
  return plain;
}

/// Types a value through the key filter, up to its first line end, and returns what did not arrive.
QString TypeValue(TextBox& box, const QString& value) {
  const qsizetype end = value.indexOf(u'\n');
  const QString typed = box.KeyPress ? PlainLetters(value.left(end)) : value.left(end);
  box.TypeOver(typed);
  QString left;
  qsizetype arrived = 0;
  for (const QChar c : typed) {
    if (arrived < box.Text().size() && box.Text()[arrived].toUpper() == c.toUpper()) {
      ++arrived;
    } else {
      left += c;
    }
  }
  return end < 0 ? left : left + value.sliced(end + 1);
}

QStringList ItemsOf(const ComboBox& list) {
  QStringList items;
  for (int item = 0; item < list.count(); ++item) items << list.List(item);
  return items;
}

}  // namespace

std::optional<QString> CellValue(const QWidget& cell) {
  if (const auto* box = qobject_cast<const TextBox*>(&cell)) return box->Text();
  if (const auto* list = qobject_cast<const ComboBox*>(&cell)) return list->currentText();
  return std::nullopt;
}

std::optional<QStringList> CellChoices(const QWidget& cell) {
  const auto* list = qobject_cast<const ComboBox*>(&cell);
  return list ? std::optional(ItemsOf(*list)) : std::nullopt;
}

int ChoiceOf(const QStringList& choices, const QString& value) {
  const auto find = [&](auto matches) {
    const auto found = std::find_if(choices.begin(), choices.end(), matches);
    return found == choices.end() ? -1 : static_cast<int>(found - choices.begin());
  };
  const int same = find([&](const QString& choice) { return IsSame(choice, value); });
  if (same >= 0 || value.isEmpty()) return same;
  if (MeansNothing(value)) return find(MeansNothing);
  const auto minutes = MinutesOfTyped(value);
  return minutes ? find([&](const QString& choice) { return MinutesOfTyped(choice) == minutes; })
                 : -1;
}

QString InShort(QStringList choices) {
  constexpr qsizetype most = 6;
  constexpr qsizetype first = 2;
  for (QString& choice : choices) choice = choice.simplified();
  choices.removeAll(QString());
  choices.removeDuplicates();
  if (choices.size() > most) {
    choices = choices.first(first) + QStringList{QStringLiteral("..."), choices.last()};
  }
  return choices.join(QStringLiteral(", "));
}

QString PutCellValue(QWidget& cell, const QString& value) {
  if (auto* list = qobject_cast<ComboBox*>(&cell)) list->Choose(ChoiceOf(ItemsOf(*list), value));
  auto* box = qobject_cast<TextBox*>(&cell);
  return box ? TypeValue(*box, value) : QString();
}
