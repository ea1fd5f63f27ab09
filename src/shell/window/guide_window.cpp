#include "shell/window/guide_window.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextTable>

#include "shell/shell.h"

namespace {

const QString GuideScheme = QStringLiteral("guide");
const QString ContentsPage = QStringLiteral("index.md");

QPointer<GuideWindow> shownGuide;

}  // namespace

QString GuidePage(Screen screen) {
  if (screen == Screen::None) return ContentsPage;
  static const QRegularExpression wordStart(QStringLiteral("([a-z])([A-Z])"));
  QString name = QString::fromLatin1(ScreenName(screen));
  name.remove(QStringLiteral("frmT3")).replace(wordStart, QStringLiteral("\\1_\\2"));
  return name.toLower() + QStringLiteral(".md");
}

void ShowGuide(const QString& page) {
  // A menu or a list that is open would keep the keys.
  while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  // While a dialog waits for its answer only windows over it can be worked.
  QWidget* dialog = QApplication::activeModalWidget();
  QWidget* below = dialog ? dialog : MainWindow();
  if (!shownGuide) {
    shownGuide = new GuideWindow(QStringLiteral(":/guide"), below);
  } else if (shownGuide->parentWidget() != below) {
    shownGuide->setParent(below, Qt::Window);
  }
  shownGuide->ShowPage(page);
  shownGuide->show();
  shownGuide->activateWindow();
}

GuideView::GuideView(const QString& folder) : folder_(folder) {
  setObjectName(QStringLiteral("GuideView"));
  constexpr int margin = 12;
  document()->setDocumentMargin(margin);
  setOpenLinks(false);
  // A bar that came and went with the height of a picture would change the picture's width.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  connect(this, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& target) { RunHandler([&] { FollowLink(target); }); });
  connect(this, &QTextBrowser::sourceChanged, this, [this] { DressPage(); });
}

void GuideView::ShowPage(const QString& page) {
  QUrl url;
  url.setScheme(GuideScheme);
  url.setPath(u'/' + page);
  setSource(url);
}

QString GuideView::Title() const {
  return document()->begin().text();
}

void GuideView::FollowLink(const QUrl& target) {
  if (target.scheme() == GuideScheme) {
    setSource(target);
  } else if (target.scheme() == QLatin1String("https") ||
             target.scheme() == QLatin1String("http")) {
    OpenUrl(target.toString());
  }
}

QVariant GuideView::loadResource(int type, const QUrl& name) {
  const QUrl url = document()->baseUrl().resolved(name);
  QFile file(folder_ + url.path());
  QByteArray bytes;
  if (url.scheme() == GuideScheme && file.open(QIODevice::ReadOnly)) bytes = file.readAll();
  if (type == QTextDocument::ImageResource) return QImage::fromData(bytes);
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder(bytes);
  if (!text.isEmpty() && !decoder.hasError()) return text;
  return QStringLiteral("The page \"%1\" of the guide cannot be read.").arg(url.fileName());
}

/// What the page's text leaves open: the look of tables and links, the size of pictures.
void GuideView::DressPage() {
  constexpr int cellPadding = 4;
  for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (!table) continue;
    QTextTableFormat format = table->format();
    format.setCellPadding(cellPadding);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(palette().mid());
    table->setFormat(format);
  }
  std::vector<QTextCursor> links;
  std::vector<QTextCursor> pictures;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextFragment fragment = part.fragment();
      const QTextCharFormat format = fragment.charFormat();
      if (!format.isAnchor() && !format.isImageFormat()) continue;
      QTextCursor place(document());
      place.setPosition(fragment.position());
      place.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
      (format.isAnchor() ? links : pictures).push_back(place);
    }
  }
  QTextCharFormat look;
  look.setForeground(ReadableLink(palette()));
  look.setFontUnderline(true);
  for (QTextCursor& link : links) link.mergeCharFormat(look);
  for (QTextCursor& picture : pictures) FitPicture(picture);
}

void GuideView::FitPicture(QTextCursor& place) {
  QTextImageFormat format = place.charFormat().toImageFormat();
  const QUrl name(format.name());
  auto picture = loadResource(QTextDocument::ImageResource, name).value<QImage>();
  if (picture.isNull()) {
    place.insertText(
        QStringLiteral("The picture \"%1\" of the guide cannot be read.").arg(name.fileName()),
        QTextCharFormat());
    return;
  }
  const int room = viewport()->width() - 2 * qRound(document()->documentMargin());
  const int width = std::clamp(picture.width(), 1, std::max(room, 1));
  if (width < picture.width()) {
    const double ratio = devicePixelRatioF();
    picture = picture.scaledToWidth(qRound(width * ratio), Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
  }
  document()->addResource(QTextDocument::ImageResource, document()->baseUrl().resolved(name),
                          picture);
  format.setWidth(width);
  place.setCharFormat(format);
}

void GuideView::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) DressPage();
}

void GuideView::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) DressPage();
}

GuideWindow::GuideWindow(const QString& folder, QWidget* parent)
    : QWidget(parent, Qt::Window), view_(new GuideView(folder)) {
  setObjectName(QStringLiteral("GuideWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_QuitOnClose, false);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(6, 6, 6, 6);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  Button* back = AddButton(row, "cmdBack", QStringLiteral("Back"), QKeySequence::Back,
                           [this] { view_->backward(); });
  Button* forward = AddButton(row, "cmdForward", QStringLiteral("Forward"), QKeySequence::Forward,
                              [this] { view_->forward(); });
  AddButton(row, "cmdContents", QStringLiteral("Contents"), Qt::ALT | Qt::Key_Home,
            [this] { cmdContents_Click(); });
  AddButton(row, "cmdFind", QStringLiteral("Find"), QKeySequence::Find,
            [this] { cmdFind_Click(); });
  row->addStretch(1);
  for (Button* button : {back, forward}) button->setEnabled(false);
  connect(view_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(view_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(view_, &QTextBrowser::sourceChanged, this, [this] {
    setWindowTitle(QStringLiteral("%1 - Guide").arg(view_->Title()));
    view_->setAccessibleName(windowTitle());
    lblNotFound->SetCaption({});
  });
  column->addWidget(view_);
  BuildFindLine();
  column->addWidget(findLine_);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] { Leave(); });
  view_->setFocus();
  // Room for a picture of the main window where the screen has it.
  const QFontMetrics metrics = fontMetrics();
  resize(QSize(metrics.averageCharWidth() * 135, metrics.height() * 42)
             .boundedTo(screen()->availableSize() * 0.9));
}

Button* GuideWindow::AddButton(QBoxLayout* row, const char* name, const QString& caption,
                               const QKeySequence& keys, std::function<void()> click) {
  auto* button = new Button(caption);
  button->setObjectName(QString::fromLatin1(name));
  // A button's own shortcut presses it late, and not at all while it is hidden.
  connect(new QShortcut(keys, this), &QShortcut::activated, this, [click] { RunHandler(click); });
  button->setToolTip(keys.toString(QKeySequence::NativeText));
  button->setAutoDefault(true);
  button->Click = std::move(click);
  row->addWidget(button);
  return button;
}

void GuideWindow::BuildFindLine() {
  findLine_ = new QWidget;
  auto* row = new QHBoxLayout(findLine_);
  row->setContentsMargins(0, 0, 0, 0);
  txtFindInPage = new TextBox;
  txtFindInPage->UndoesItself = true;
  txtFindInPage->setObjectName(QStringLiteral("txtFindInPage"));
  txtFindInPage->setPlaceholderText(QStringLiteral("Find in this page"));
  txtFindInPage->setAccessibleName(txtFindInPage->placeholderText());
  txtFindInPage->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
  txtFindInPage->Change = [this] { txtFindInPage_Change(); };
  txtFindInPage->Click = [this] { cmdNext_Click(); };
  row->addWidget(txtFindInPage);
  AddButton(row, "cmdNext", QStringLiteral("Next"), Qt::Key_F3, [this] { cmdNext_Click(); });
  AddButton(row, "cmdPrevious", QStringLiteral("Previous"), Qt::SHIFT | Qt::Key_F3,
            [this] { cmdPrevious_Click(); });
  lblNotFound = new Label;
  lblNotFound->setObjectName(QStringLiteral("lblNotFound"));
  row->addWidget(lblNotFound, 1);
  findLine_->hide();
}

void GuideWindow::cmdContents_Click() {
  ShowPage(ContentsPage);
}

void GuideWindow::cmdFind_Click() {
  findLine_->show();
  txtFindInPage->selectAll();
  txtFindInPage->setFocus(Qt::ShortcutFocusReason);
}

/// While the text is typed its first place from here on is shown.
void GuideWindow::txtFindInPage_Change() {
  QTextCursor from = view_->textCursor();
  from.setPosition(from.selectionStart());
  view_->setTextCursor(from);
  FindInPage({});
}

/// Behind the last place comes the first.
void GuideWindow::FindInPage(QTextDocument::FindFlags direction) {
  if (findLine_->isHidden()) cmdFind_Click();
  const QString text = txtFindInPage->Text();
  const QTextDocument& page = *view_->document();
  QTextCursor found = page.find(text, view_->textCursor(), direction);
  if (found.isNull()) {
    QTextCursor edge(view_->document());
    if (direction & QTextDocument::FindBackward) edge.movePosition(QTextCursor::End);
    found = page.find(text, edge, direction);
  }
  if (!found.isNull()) view_->setTextCursor(found);
  lblNotFound->SetCaption(
      found.isNull() && !text.isEmpty() ? QStringLiteral("Not found in this page") : QString());
}

void GuideWindow::Leave() {
  if (findLine_->isHidden()) {
    close();
    return;
  }
  findLine_->hide();
  view_->setFocus();
}
