#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "document/rules/check/mend.h"
#include "panel/difference.h"

/// What Document lists and F8 walks: the findings of the check, or what differs from another
/// project. It stays as screens come and go, and is made anew when the project has changed.
class FindingsList : public QObject {
  Q_OBJECT
 public:
  struct Row {
    QStringList Cells;
    Item Where;
    Screen On = Screen::None;                   ///< Where a finding leads; none: nowhere.
    std::optional<Setting> Of = {};             ///< What differs.
    std::shared_ptr<const Finding> Found = {};  ///< What the check has found.
    bool Accepted = false;
  };
  /// The two sides of a comparison.
  struct Sides {
    Project This;
    Project Other;
  };
  using MakeSides = std::function<std::unique_ptr<Sides>()>;
  static std::unique_ptr<Sides> NewSides(const Project& one, const Project& other);

  /// The one of the program, which lives as long as the main window.
  static FindingsList& OfProgram();

  void Check();
  /// Lists what differs from a project file. Throws RunTimeFailure where it cannot be read.
  void CompareWithFile(const QString& name);
  /// Lists what differs; `other` stands over the other side's column. The sides are asked for again
  /// whenever the project has changed.
  void Compare(const QString& other, MakeSides sides);
  /// Makes the list anew if the project has changed since; the row in hand stays in hand.
  void Refresh();

  /// Of the check while nothing is listed.
  const QStringList& Headers() const { return headers_; }
  /// What the first column can say.
  const QStringList& Kinds() const { return kinds_; }
  /// The rows of the kind chosen, in the order chosen.
  const std::vector<Row>& Rows() const { return rows_; }
  const QString& Told() const { return told_; }
  bool Compares() const { return sides_ != nullptr; }

  bool Names() const { return names_; }
  void SetNames(bool names);
  /// The place in Kinds; -1 for all.
  int Kind() const { return static_cast<int>(kinds_.indexOf(kind_)); }
  void SetKind(int kind);
  /// By the words of a column; of the same column once more, the other way round.
  void SortBy(int column);

  int Current() const { return current_; }
  void SetCurrent(int row);
  /// Opens the screen where the row is mended.
  void Open(int row);
  /// Opens the next (1) or the one before (-1).
  void Step(int step);
  struct FindingCounts {
    int Errors = 0;
    int Warnings = 0;
  };
  /// Findings in the project in memory that nobody has accepted; counted when it has changed.
  const FindingCounts& Counts();
  /// How many findings are accepted beside the project's file, and whether they are listed too.
  int AcceptedCount() const { return acceptedCount_; }
  bool ShowsAccepted() const { return showsAccepted_; }
  void ShowAccepted(bool shows);
  /// Keeps beside the project's file that these findings are to stay, or that they are not any
  /// more. Throws RunTimeFailure when that cannot be written.
  void Accept(const std::vector<int>& rows, const QString& reason);
  void TakeBack(const std::vector<int>& rows);
  /// What some rows tell, a line each; of many the first ones, and how many more they are.
  QString SentencesOf(const std::vector<int>& rows) const;
  /// What puts the row right, if there is one right answer.
  std::optional<Mending> MendingOfRow(int row) const;
  void Mend(const std::vector<int>& rows);
  /// The other side's values of these rows come into the project.
  void TakeOver(const std::vector<int>& rows);

 private:
  explicit FindingsList(QObject* parent) : QObject(parent) {}
  void Begin();
  void Make();
  void KeepRow(const std::function<void()>& change);
  void ChangeAccepted(const std::function<void(std::vector<struct Acceptance>& accepted)>& change);
  const Row& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  void ListFindings();
  void ListDifferences();
  void ShowRows();

  std::function<void()> list_;  ///< Fills what is below.
  QString other_;
  MakeSides sides_;
  std::unique_ptr<Project> madeOf_;
  QStringList headers_ = {QStringLiteral("Severity"), QStringLiteral("Item"),
                          QStringLiteral("Finding")};
  QStringList kinds_;
  std::vector<Row> all_;
  std::vector<Row> rows_;
  QString told_;
  bool names_ = false;
  QString kind_;  ///< Empty for all.
  int sortColumn_ = -1;
  bool fallsDown_ = false;
  FindingCounts counts_;
  std::unique_ptr<Project> countedOf_;  ///< Null until it is counted, and when it counts anew.
  QString countedIn_;                   ///< The file beside which findings may be accepted.
  int acceptedCount_ = 0;
  bool showsAccepted_ = false;
  int current_ = -1;
  bool left_ = false;  ///< The row in hand is mended; `current_` is the one that came up.
};
