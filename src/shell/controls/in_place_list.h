#pragma once

#include <QListView>
#include <QPointer>
#include <QStringListModel>

#include "shell/controls/child_form.h"

/// Texts with a note behind each, which is shown and read but is no part of the text.
class NotedTexts : public QStringListModel {
 public:
  QStringList Notes;
  QVariant data(const QModelIndex& index, int role) const override;
};

/// The list that opens over a clicked cell. It stays open until a choice, Escape or a click on the
/// background closes it, or its cell leaves the screen. Opening it selects the stored value and
/// runs nothing.
class InPlaceList : public QListView {
  Q_OBJECT
 public:
  InPlaceList(ChildForm* form, const char* name, const QStringList& items = {});

  void SetItems(const QStringList& items);
  /// The names of what the items stand for, where these are numbers.
  void SetNotes(const QStringList& notes) { model_.Notes = notes; }
  void Clear() { SetItems({}); }
  int ListCount() const { return model_.rowCount(); }
  QStringList Items() const { return model_.stringList(); }
  /// The text of an item, empty outside the list.
  QString List(int index) const;
  /// What a value cell shows for a stored value: the item's text and a blank.
  QString ValueText(int index) const { return List(index) + u' '; }

  /// Opens over the cell with item `index` selected, or with no selection outside the list.
  void Open(QWidget& cell, int index);
  void Close();
  bool IsOver(const QWidget& cell) const { return isVisible() && cell_ == &cell; }

  int ListIndex() const { return currentIndex().row(); }
  /// Chooses an item as a user does; an index that the list does not hold runs nothing.
  void Choose(int index);

  /// Runs when the user has chosen an item.
  std::function<void()> Click;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsSecondOfPair(const QMouseEvent& press);

  ChildForm* form_;
  LetterSearch search_;
  std::optional<PointerPress> openedBy_;  ///< Until the second click of its pair or another.
  bool ignoring_ = false;                 ///< The second click of the pair is under way.
  NotedTexts model_;
  QPointer<QWidget> cell_;
};
