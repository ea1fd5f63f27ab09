#include "shell/window/guide_window.h"

#include <QApplication>
#include <QDir>
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

QUrl UrlOf(const QString& page) {
  QUrl url;
  url.setScheme(GuideScheme);
  url.setPath(u'/' + page);
  return url;
}

/// The picture of a screen, which the reader has before him, goes behind the words.
QString WordsFirst(QString page) {
  static const QRegularExpression first(
      QStringLiteral("\\A(#[^#]*?)(!\\[[^\\]]*\\]\\([^)]*\\)\\n)"));
  const QRegularExpressionMatch picture = first.match(page);
  if (!picture.hasMatch()) return page;
  page.remove(picture.capturedStart(2), picture.capturedLength(2));
  return page + QStringLiteral("\n\n") + picture.captured(2);
}

}  // namespace

QRect RoomBeside(const QRect& window, const QRect& screen, QSize wanted, int least) {
  const int left = window.left() - screen.left();
  const int right = screen.right() - window.right();
  const int smallest = std::min(least, screen.width());
  const int width = std::clamp(std::max(left, right), smallest, std::max(least, wanted.width()));
  const int height = std::min(wanted.height(), screen.height());
  // Where neither side has the room the right half of the window is covered, not its menus.
  const int x = right >= left || left < smallest
                    ? std::min(window.right() + 1, screen.right() + 1 - width)
                    : std::max(window.left() - width, screen.left());
  const int y = std::clamp(window.top(), screen.top(), screen.bottom() + 1 - height);
  return {x, y, width, height};
}

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
    Q_INIT_RESOURCE(guide);
    shownGuide = new GuideWindow(QStringLiteral(":/guide"), below);
    if (MainWindow()) shownGuide->PlaceBeside(*MainWindow());
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
  setSource(UrlOf(page));
}

QStringList GuideView::PagesWith(const QString& text) {
  if (words_.empty()) {
    const QDir folder(folder_);
    for (const QString& name :
         folder.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name)) {
      QTextDocument page;
      page.setMarkdown(loadResource(QTextDocument::MarkdownResource, UrlOf(name)).toString());
      words_.emplace_back(name, page.toPlainText());
    }
  }
  QStringList pages;
  for (const auto& [name, words] : words_) {
    if (!text.isEmpty() && words.contains(text, Qt::CaseInsensitive)) pages << name;
  }
  return pages;
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
  if (!text.isEmpty() && !decoder.hasError()) return WordsFirst(text);
  return QStringLiteral("The page \"%1\" of the guide cannot be read.").arg(url.fileName());
}

/// What the page's text leaves open: the look of tables and links, the size of pictures. All of it
/// is one change, behind which the whole page is laid out: the toolkit, which lays a page out piece
/// by piece, leaves out paragraphs where one change comes in the middle of what another asks for.
void GuideView::DressPage() {
  constexpr int cellPadding = 4;
  QTextCursor all(document());
  all.beginEditBlock();
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
  document()->markContentsDirty(0, document()->characterCount());
  all.endEditBlock();
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
  const int width = std::clamp(picture.width() / 2, 1, std::max(room, 1));
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
  resize(Wanted());
}

QSize GuideWindow::Wanted() const {
  constexpr int chars = 100;
  constexpr int lines = 42;
  const QFontMetrics metrics = fontMetrics();
  return QSize(metrics.averageCharWidth() * chars, metrics.height() * lines)
      .boundedTo(screen()->availableSize() * 0.9);
}

void GuideWindow::PlaceBeside(const QWidget& window) {
  constexpr int leastChars = 60;
  const QRect frame = window.frameGeometry();
  const QRect inside = window.geometry();
  const QMargins border(inside.left() - frame.left(), inside.top() - frame.top(),
                        frame.right() - inside.right(), frame.bottom() - inside.bottom());
  const QRect room =
      RoomBeside(frame, window.screen()->availableGeometry(), Wanted().grownBy(border),
                 fontMetrics().averageCharWidth() * leastChars);
  setGeometry(room.marginsRemoved(border));
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
  auto* lines = new QVBoxLayout(findLine_);
  lines->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  lines->addLayout(row);
  txtFindInPage = new TextBox;
  txtFindInPage->UndoesItself = true;
  txtFindInPage->setObjectName(QStringLiteral("txtFindInPage"));
  txtFindInPage->setPlaceholderText(QStringLiteral("Find in the guide"));
  txtFindInPage->setAccessibleName(txtFindInPage->placeholderText());
  txtFindInPage->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
  txtFindInPage->Change = [this] { txtFindInPage_Change(); };
  txtFindInPage->Click = [this] { cmdNext_Click(); };
  row->addWidget(txtFindInPage);
  AddButton(row, "cmdNext", QStringLiteral("Next"), Qt::Key_F3, [this] { cmdNext_Click(); });
  AddButton(row, "cmdPrevious", QStringLiteral("Previous"), Qt::SHIFT | Qt::Key_F3,
            [this] { cmdPrevious_Click(); });
  lblNotFound = new Label;
  lblNotFound->setObjectName(QStringLiteral("lblNotFound"));
  lines->addWidget(lblNotFound);
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

/// While the text is typed its first place from here on is shown; other pages wait for Next.
void GuideWindow::txtFindInPage_Change() {
  QTextCursor from = view_->textCursor();
  from.setPosition(from.selectionStart());
  view_->setTextCursor(from);
  if (!ShowPlace(from, {})) ShowPlace(QTextCursor(view_->document()), {});
  TellPages();
}

/// Shows the next place of the text from here on in the page; false where there is none.
bool GuideWindow::ShowPlace(const QTextCursor& from, QTextDocument::FindFlags direction) {
  const QTextCursor found = view_->document()->find(txtFindInPage->Text(), from, direction);
  if (!found.isNull()) view_->setTextCursor(found);
  return !found.isNull();
}

/// Behind the last place of a page comes the first of the next page that has one.
void GuideWindow::FindOn(QTextDocument::FindFlags direction) {
  if (findLine_->isHidden()) cmdFind_Click();
  const bool back = direction & QTextDocument::FindBackward;
  if (!ShowPlace(view_->textCursor(), direction)) {
    const QStringList pages = view_->PagesWith(txtFindInPage->Text());
    const QString here = view_->source().fileName();
    const auto after =
        std::find_if(pages.begin(), pages.end(), [&](const QString& page) { return page > here; });
    const auto before = std::find_if(pages.rbegin(), pages.rend(),
                                     [&](const QString& page) { return page < here; });
    if (!pages.isEmpty()) {
      view_->ShowPage(back ? (before == pages.rend() ? pages.back() : *before)
                           : (after == pages.end() ? pages.front() : *after));
    }
    QTextCursor edge(view_->document());
    if (back) edge.movePosition(QTextCursor::End);
    ShowPlace(edge, direction);
  }
  TellPages();
}

/// Where else in the guide the text stands.
void GuideWindow::TellPages() {
  const QStringList pages = view_->PagesWith(txtFindInPage->Text());
  const bool here = pages.contains(view_->source().fileName());
  const auto others = pages.size() - (here ? 1 : 0);
  const QString count =
      others == 1 ? QStringLiteral("1 other page") : QStringLiteral("%1 other pages").arg(others);
  QString told;
  if (!txtFindInPage->Text().isEmpty() && pages.isEmpty()) {
    told = QStringLiteral("Not found in the guide");
  } else if (others > 0) {
    told = (here ? QStringLiteral("Also on %1") : QStringLiteral("Not here, but on %1")).arg(count);
  }
  lblNotFound->SetCaption(told);
}

void GuideWindow::Leave() {
  if (findLine_->isHidden()) {
    close();
    return;
  }
  findLine_->hide();
  view_->setFocus();
}
