#pragma once

#include <QBoxLayout>
#include <QTextBrowser>

#include "panel/screens.h"
#include "shell/controls/controls.h"

/// The page of a screen: "relay_status.md" for "frmT3RelayStatus", the contents for no screen.
QString GuidePage(Screen screen);

/// Shows a page of the guide in its one window.
void ShowGuide(const QString& page);

/// Pages of one folder with the links between them. Pictures are no wider than the view; a page or
/// a picture that cannot be read is told of in its place.
class GuideView : public QTextBrowser {
  Q_OBJECT
 public:
  explicit GuideView(const QString& folder);

  void ShowPage(const QString& page);
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
};

/// The guide beside the program: pages, a way back, the contents, and a search in the page. It
/// remembers nothing once it is closed.
class GuideWindow : public QWidget {
  Q_OBJECT
 public:
  /// Pages and pictures are read from the folder.
  GuideWindow(const QString& folder, QWidget* parent);

  void ShowPage(const QString& page) { view_->ShowPage(page); }

  void cmdContents_Click();
  void cmdFind_Click();
  void cmdNext_Click() { FindInPage({}); }
  void cmdPrevious_Click() { FindInPage(QTextDocument::FindBackward); }
  void txtFindInPage_Change();

 private:
  Button* AddButton(QBoxLayout* row, const char* name, const QString& caption,
                    const QKeySequence& keys, std::function<void()> click);
  void BuildFindLine();
  void FindInPage(QTextDocument::FindFlags direction);
  void Leave();

  GuideView* view_;
  QWidget* findLine_;
  TextBox* txtFindInPage;
  Label* lblNotFound;
};
