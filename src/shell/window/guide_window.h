#pragma once

#include <QBoxLayout>
#include <QTextBrowser>

#include "panel/screens.h"
#include "shell/controls/controls.h"

/// The page of a screen: "relay_status.md" for "frmT3RelayStatus", the contents for no screen.
QString GuidePage(Screen screen);

/// Shows a page of the guide in its one window.
void ShowGuide(const QString& page);

/// Where a second window stands on the screen: on that side of the first which has more room, as
/// wide as wanted where there is room; over the first as far as its least width needs it.
QRect RoomBeside(const QRect& window, const QRect& screen, QSize wanted, int least);

/// Pages of one folder with the links between them: words first, a screen's picture behind them.
/// Pictures have half their width, and never more than the view; a page or a picture that cannot be
/// read is told of in its place.
class GuideView : public QTextBrowser {
  Q_OBJECT
 public:
  explicit GuideView(const QString& folder);

  void ShowPage(const QString& page);
  /// The pages that hold the text, in whatever letter case, in order of their names.
  QStringList PagesWith(const QString& text);
  /// The first line of the page on show.
  QString Title() const;

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FollowLink(const QUrl& target);
  void DressPage();
  void FitPicture(QTextCursor& place);

  QString folder_;
  std::vector<std::pair<QString, QString>> words_;  ///< Of each page by its name, once asked for.
};

/// The guide beside the program: pages, a way back, the contents, and a search in all pages.
/// It remembers nothing once it is closed.
class GuideWindow : public QWidget {
  Q_OBJECT
 public:
  /// Pages and pictures are read from the folder.
  GuideWindow(const QString& folder, QWidget* parent);

  void ShowPage(const QString& page) { view_->ShowPage(page); }
  /// Takes the room beside a window, as RoomBeside tells.
  void PlaceBeside(const QWidget& window);

  void cmdContents_Click();
  void cmdFind_Click();
  void cmdNext_Click() { FindOn({}); }
  void cmdPrevious_Click() { FindOn(QTextDocument::FindBackward); }
  void txtFindInPage_Change();

 private:
  Button* AddButton(QBoxLayout* row, const char* name, const QString& caption,
                    const QKeySequence& keys, std::function<void()> click);
  void BuildFindLine();
  QSize Wanted() const;
  bool ShowPlace(const QTextCursor& from, QTextDocument::FindFlags direction);
  void FindOn(QTextDocument::FindFlags direction);
  void TellPages();
  void Leave();

  GuideView* view_;
  QWidget* findLine_;
  TextBox* txtFindInPage;
  Label* lblNotFound;
};
