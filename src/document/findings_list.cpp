#include "document/findings_list.h"

#include <QFileInfo>
#include <QWidget>
#include <algorithm>

#include "document/rules/check/accepted.h"
#include "panel/defaults.h"
#include "panel/lists_in_words.h"
#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "panel/stopwatch.h"
#include "shell/controls/go_to_item.h"
#include "shell/shell.h"

namespace {

/// Of the project in memory. `trouble` tells why nothing counts as accepted, if so.
CheckedFindings CheckLive(QString* trouble = nullptr) {
  std::vector<Acceptance> accepted;
  try {
    const bool hasFile = ProjectHasFile();
    if (hasFile) accepted = ReadAccepted(CurrentFileName);
  } catch (const RunTimeFailure& failure) {
    if (trouble) *trouble = QString::fromUtf8(failure.what());
  }
  const CheckFacts facts{.FileEndsEarly = FileEndsEarly(), .LastTransfer = &PanelImage};
  return PartAccepted(CheckProject(LiveProject, facts), accepted);
}

}  // namespace

FindingsList& FindingsList::OfProgram() {
  QWidget* owner = MainWindow();
  auto* list = owner->findChild<FindingsList*>(QString(), Qt::FindDirectChildrenOnly);
  return list ? *list : *new FindingsList(owner);
}

void FindingsList::Check() {
  sides_ = nullptr;
  list_ = [this] { ListFindings(); };
  Begin();
}

std::unique_ptr<FindingsList::Sides> FindingsList::NewSides(const Project& one,
                                                            const Project& other) {
  return std::make_unique<Sides>(Sides{one, other});
}

void FindingsList::CompareWithFile(const QString& name) {
  const auto other = std::make_shared<const Project>(ReadProject(name, NewProject()).Content);
  Compare(QFileInfo(name).fileName(), [other] { return NewSides(LiveProject, *other); });
}

void FindingsList::Compare(const QString& other, MakeSides sides) {
  other_ = other;
  sides_ = std::move(sides);
  list_ = [this] { ListDifferences(); };
  Begin();
}

void FindingsList::Begin() {
  kind_.clear();
  current_ = sortColumn_ = -1;
  left_ = false;
  Make();
}

void FindingsList::Refresh() {
  // The other side of a comparison may be another by now.
  if (!list_ || (!Compares() && LiveProject == *madeOf_)) return;
  KeepRow([this] { Make(); });
}

/// The row in hand stays in hand. If it is gone, the one that came up in its place is the next.
void FindingsList::KeepRow(const std::function<void()>& change) {
  const bool has = current_ >= 0 && current_ < static_cast<int>(rows_.size()) && !left_;
  const Row inHand = has ? RowAt(current_) : Row();
  change();
  if (!has) return;
  const auto same = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) {
    return row.Where == inHand.Where && row.Cells.mid(0, 3) == inHand.Cells.mid(0, 3);
  });
  left_ = same == rows_.end();
  if (!left_) current_ = static_cast<int>(same - rows_.begin());
}

void FindingsList::Make() {
  all_.clear();
  kinds_.clear();
  rows_.clear();
  madeOf_ = std::make_unique<Project>(LiveProject);
  list_();
  ShowRows();
}

void FindingsList::ListFindings() {
  headers_ = {QStringLiteral("Severity"), QStringLiteral("Item"), QStringLiteral("Finding")};
  kinds_ = {SeverityWord(Severity::Error), SeverityWord(Severity::Warning),
            SeverityWord(Severity::Note)};
  const auto add = [this](const Finding& finding, const QString& sentence, bool accepted) {
    all_.push_back({{SeverityWord(finding.Level), ItemCode(finding.Where), sentence},
                    finding.Where,
                    finding.On,
                    finding.Of,
                    std::make_shared<const Finding>(finding),
                    accepted});
  };
  QString trouble;
  const CheckedFindings checked = CheckLive(&trouble);
  for (const Finding& finding : checked.Open) add(finding, finding.Sentence, false);
  acceptedCount_ = static_cast<int>(checked.Accepted.size());
  if (showsAccepted_) {
    for (const AcceptedFinding& one : checked.Accepted) add(one.What, InWords(one), true);
  }
  told_ = trouble.isEmpty() ? QStringLiteral("%1, %2. Enter opens the screen.")
                                  .arg(CountOf(Severity::Error, checked.Open),
                                       CountOf(Severity::Warning, checked.Open))
                            : trouble;
}

void FindingsList::ListDifferences() {
  headers_ = {QStringLiteral("Area"), QStringLiteral("Item"), QStringLiteral("Field"),
              QStringLiteral("This project"), other_};
  const auto sides = sides_();
  for (const Difference& difference : CompareProjects(sides->This, sides->Other, names_)) {
    if (!kinds_.contains(difference.Area)) kinds_ << difference.Area;
    all_.push_back({{difference.Area, ItemText(sides->This, difference.Where), difference.Field,
                     difference.This, difference.Other},
                    difference.Where,
                    EditorOf(difference.Of).On,
                    difference.Of});
  }
  const auto count = static_cast<int>(all_.size());
  told_ = count == 0 ? QStringLiteral("Both are equal.")
                     : QStringLiteral("%1 %2. Enter opens the screen.")
                           .arg(Counted(count, QStringLiteral("setting")),
                                QLatin1String(count == 1 ? "differs" : "differ"));
}

void FindingsList::ShowRows() {
  rows_.clear();
  std::copy_if(all_.begin(), all_.end(), std::back_inserter(rows_),
               [this](const Row& row) { return Kind() < 0 || row.Cells[0] == kind_; });
  if (sortColumn_ >= 0) {
    std::stable_sort(rows_.begin(), rows_.end(), [this](const Row& a, const Row& b) {
      const auto& [first, second] = fallsDown_ ? std::tie(b, a) : std::tie(a, b);
      if (sortColumn_ == 0) {
        return kinds_.indexOf(first.Cells[0]) < kinds_.indexOf(second.Cells[0]);
      }
      return first.Cells[sortColumn_].localeAwareCompare(second.Cells[sortColumn_]) < 0;
    });
  }
  current_ = std::min(current_, static_cast<int>(rows_.size()) - 1);
}

void FindingsList::SetNames(bool names) {
  names_ = names;
  if (Compares()) KeepRow([this] { Make(); });
}

void FindingsList::SetKind(int kind) {
  kind_ = kind < 0 ? QString() : kinds_[kind];
  KeepRow([this] { ShowRows(); });
}

void FindingsList::SortBy(int column) {
  fallsDown_ = column == sortColumn_ && !fallsDown_;
  sortColumn_ = column;
  KeepRow([this] { ShowRows(); });
}

void FindingsList::SetCurrent(int row) {
  current_ = row;
  left_ = false;
}

void FindingsList::Open(int row) {
  SetCurrent(row);
  const Row opened = RowAt(row);
  if (opened.On == Screen::None) return;
  if (opened.Of) {
    GoToSetting(nullptr, *opened.Of);
  } else {
    GoToItem(opened.On, opened.Where);
  }
  TellNews(QStringLiteral("%1 of %2: %3")
               .arg(row + 1)
               .arg(rows_.size())
               .arg(opened.Of ? opened.Cells.mid(1).join(u' ') : opened.Cells.last()));
}

void FindingsList::Step(int step) {
  Refresh();
  const int count = static_cast<int>(rows_.size());
  int row = left_ && step > 0 ? current_ : current_ + step;
  while (row >= 0 && row < count && RowAt(row).On == Screen::None) row += step;
  if (!list_) {
    TellNews(QStringLiteral("Nothing is listed: check or compare on Document first."));
  } else if (row < 0 || row >= count) {
    TellNews(step > 0 ? QStringLiteral("There is no further row. ") + told_
                      : QStringLiteral("There is no row before."));
  } else {
    Open(row);
  }
}

const FindingsList::FindingCounts& FindingsList::Counts() {
  if (countedOf_ && *countedOf_ == LiveProject && countedIn_ == CurrentFileName) return counts_;
  countedOf_ = std::make_unique<Project>(LiveProject);
  countedIn_ = CurrentFileName;
  counts_ = {};
  for (const Finding& finding : CheckLive().Open) {
    counts_.Errors += finding.Level == Severity::Error ? 1 : 0;
    counts_.Warnings += finding.Level == Severity::Warning ? 1 : 0;
  }
  return counts_;
}

void FindingsList::ShowAccepted(bool shows) {
  showsAccepted_ = shows;
  KeepRow([this] { Make(); });
}

/// Reads what is accepted beside the project's file, changes it, writes it and lists anew.
void FindingsList::ChangeAccepted(
    const std::function<void(std::vector<Acceptance>& accepted)>& change) {
  if (!ProjectHasFile()) {
    throw RunTimeFailure("Save the project first: what is accepted is kept beside its file.");
  }
  std::vector<Acceptance> accepted = ReadAccepted(CurrentFileName);
  change(accepted);
  WriteAccepted(CurrentFileName, accepted);
  countedOf_.reset();
  KeepRow([this] { Make(); });
}

void FindingsList::Accept(const std::vector<int>& rows, const QString& reason) {
  ChangeAccepted([&](std::vector<Acceptance>& accepted) {
    for (const int row : rows) {
      accepted.push_back(::Accept(*RowAt(row).Found, reason, Now().date()));
    }
  });
}

void FindingsList::TakeBack(const std::vector<int>& rows) {
  ChangeAccepted([&](std::vector<Acceptance>& accepted) {
    for (const int row : rows) {
      const Acceptance same = ::Accept(*RowAt(row).Found, {}, {});
      std::erase_if(accepted, [&](const Acceptance& one) { return SameFinding(one, same); });
    }
  });
}

QString FindingsList::SentencesOf(const std::vector<int>& rows) const {
  constexpr std::size_t most = 5;
  QStringList sentences;
  for (const int row : rows) {
    if (sentences.size() < static_cast<qsizetype>(most)) sentences << RowAt(row).Cells.last();
  }
  if (rows.size() > most) sentences << QStringLiteral("and %1 more").arg(rows.size() - most);
  return sentences.join(u'\n');
}

std::optional<Mending> FindingsList::MendingOfRow(int row) const {
  const auto& found = RowAt(row).Found;
  return found ? MendingOf(LiveProject, *found) : std::nullopt;
}

void FindingsList::Mend(const std::vector<int>& rows) {
  std::vector<Mending> mendings;
  for (const int row : rows) {
    if (auto mending = MendingOfRow(row)) mendings.push_back(*mending);
  }
  for (const Mending& mending : mendings) mending.Apply(LiveProject);
  if (!mendings.empty()) DataChanged = -1;
  Refresh();
}

void FindingsList::TakeOver(const std::vector<int>& rows) {
  if (!Compares()) return;
  const auto sides = sides_();
  const auto before = std::make_unique<const Project>(LiveProject);
  std::size_t left = 0;
  for (const int row : rows) {
    const Setting& setting = *RowAt(row).Of;
    if (Connected != 0 && EditorOf(setting).On == Screen::Connect) {
      ++left;
      continue;
    }
    ::TakeOver(LiveProject, sides->Other, setting);
  }
  if (left < rows.size()) DataChanged = -1;
  Refresh();
  if (left > 0) {
    TellRefusal(
        QStringLiteral("How the panel is reached was left as it is while it is connected."));
  } else {
    // As Undo counts them: a row may bring several settings with it.
    const std::size_t taken = DifferentSettings(LiveProject, *before, true).size();
    TellNews(QStringLiteral("Settings taken over: %1").arg(taken));
  }
}
