#include "shell/window/guide_window.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QDialog>
#include <QDir>
#include <QMenu>
#include <QTextBlock>

#include "screen_test.h"

class GuideTest : public ScreenTest {
 protected:
  GuideView& View() { return Find<GuideView>("GuideView"); }
  QString Page() { return View().source().fileName(); }

  void Write(const char* name, const QByteArray& bytes) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  /// A guide of pages that the test has written.
  GuideWindow& Open(const char* page) {
    auto* guide = new GuideWindow(folder.path(), window.get());
    guide->ShowPage(QString::fromLatin1(page));
    guide->show();
    guide->activateWindow();
    QApplication::processEvents();
    return *guide;
  }

  qsizetype PlaceOfPicture() {
    return View().toPlainText().indexOf(QChar::ObjectReplacementCharacter);
  }

  void Follow(const char* link) {
    Q_EMIT View().anchorClicked(View().source().resolved(QUrl(QString::fromLatin1(link))));
  }

  QTextImageFormat Picture() {
    const QTextDocument& page = *View().document();
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        if (format.isImageFormat()) return format.toImageFormat();
      }
    }
    return {};
  }
};

TEST_F(GuideTest, F1ShowsThePageOfTheScreenInFrontInOneWindow) {
  const GuideWindow* first = nullptr;
  for (const ScreenEntry& entry : ScreenTable()) {
    if (entry.Name == Screen::None) continue;
    window->UnloadAllForms();
    if (window->ShowForm(entry.Name)) {
      QTest::keyClick(window.get(), Qt::Key_F1);
    } else {
      ShowGuide(GuidePage(entry.Name));
    }
    auto& guide = Find<GuideWindow>("GuideWindow");
    if (!first) first = &guide;
    EXPECT_EQ(&guide, first);
    EXPECT_EQ(Page(), GuidePage(entry.Name));
    EXPECT_FALSE(View().toPlainText().contains("cannot be read")) << ScreenName(entry.Name);
    EXPECT_GT(Picture().width(), 200) << ScreenName(entry.Name);
    EXPECT_LE(Picture().width(), View().viewport()->width()) << ScreenName(entry.Name);
    EXPECT_GT(PlaceOfPicture(), View().toPlainText().indexOf("See also")) << "words first";
    const QVariant drawn =
        View().document()->resource(QTextDocument::ImageResource, QUrl(Picture().name()));
    EXPECT_EQ(drawn.value<QImage>().width(), Picture().width()) << "smoothly scaled";
  }
  window->UnloadAllForms();
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(Page(), "index.md");
  EXPECT_EQ(GuidePage(Screen::AddOnModuleModBus), "add_on_module_mod_bus.md");
}

/// The toolkit lays out what has changed, and must come to what it makes of the whole page.
TEST_F(GuideTest, EveryPartOfEveryPageHasItsPlaceAtEveryWidth) {
  const auto places = [](const QTextDocument& page) {
    std::vector<QRectF> rects{{QPointF(), page.size()}};
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
      rects.push_back(page.documentLayout()->blockBoundingRect(block));
    }
    return rects;
  };
  constexpr int leastWidth = 300;
  int step = 0;
  Q_INIT_RESOURCE(guide);
  for (const QString& name : QDir(":/guide").entryList({"*.md"})) {
    auto* guide = new GuideWindow(":/guide", window.get());
    for (const bool shownAlready : {false, true}) {
      guide->resize(leastWidth + step++ * 70 % 900, 588);
      if (!shownAlready) guide->ShowPage(name);
      guide->show();
      QApplication::processEvents();
      QTextDocument& page = *View().document();
      const auto shown = places(page);
      page.markContentsDirty(0, page.characterCount());
      EXPECT_TRUE(shown == places(page)) << name.toStdString() << " at " << guide->width();
    }
    delete guide;
  }
}

TEST_F(GuideTest, F1IsTheGuidesWhateverHasTheFocus) {
  Menu("mnuRelayOutputOptions");
  Click(Cell("lblTimerType", 0));
  QTest::keyClick(&Find<InPlaceList>("cboNewTimerType"), Qt::Key_F1);
  EXPECT_EQ(Page(), "relay_output_options.md");

  auto* edit = Find<QAction>("mnuEdit").menu();
  edit->popup({});
  QTest::keyClick(edit, Qt::Key_F1);
  EXPECT_FALSE(edit->isVisible());

  Menu("mnuConfigureDimmers");
  QTimer::singleShot(0, window.get(), [&] {
    auto* dialog = window->findChild<QDialog*>();
    QTest::keyClick(dialog, Qt::Key_F1);
    EXPECT_EQ(Page(), "dim_copy_cnf.md");
    EXPECT_EQ(Find<GuideWindow>("GuideWindow").parentWidget(), dialog) << "or it cannot be worked";
    dialog->reject();
  });
  Press("cmdCopyConfig");
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(Page(), "dimmer_output.md");
  EXPECT_EQ(Find<GuideWindow>("GuideWindow").parentWidget(), window.get());
}

/// A window that hung under what hangs under it would never answer again.
TEST_F(GuideTest, EveryDialogMayComeOverTheGuideAndTheGuideOverEveryDialog) {
  const auto ask = [this] { shownMsgBox({"Why?", MsgIcon::None, "", MsgButtons::Ok}); };
  const auto save = [this] { shownFileDialog({FileRequest::Kind::Save, ProjectFileFilter, {}}); };
  const auto copy = [this] { Press("cmdCopyConfig"); };
  const auto find = [] { AllScreens().Find(); };
  Menu("mnuConfigureDimmers");
  for (const std::function<void()>& open :
       std::vector<std::function<void()>>{ask, save, copy, find}) {
    QTest::keyClick(window.get(), Qt::Key_F1);
    Find<GuideWindow>("GuideWindow").activateWindow();
    bool opened = false;
    QTimer::singleShot(0, window.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      opened = true;
      for (int i = 0; i < 2; ++i) QTest::keyClick(dialog, Qt::Key_F1);
      EXPECT_EQ(Find<GuideWindow>("GuideWindow").parentWidget(), dialog);
      EXPECT_EQ(dialog->parentWidget(), window.get());
      // And one more over the guide.
      QTimer::singleShot(0, window.get(), [dialog] {
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QTest::keyClick(box, Qt::Key_F1);
        EXPECT_EQ(box->parentWidget(), dialog);
        box->reject();
      });
      ask();
      dialog->reject();
    });
    open();
    EXPECT_TRUE(opened);
  }
}

TEST_F(GuideTest, LinksStayInTheGuideOrGoToTheWeb) {
  Write("index.md", "# Contents\n\n[One](one.md)");
  Write("one.md", "# One\n\n[Contents](index.md)");
  GuideWindow& guide = Open("index.md");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&guide)->role(), QAccessible::Window);
  auto& back = Find<Button>("cmdBack");
  EXPECT_FALSE(back.isEnabled());
  QTest::keyClick(&View(), Qt::Key_Tab);
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_EQ(guide.windowTitle(), "One - Guide");
  QTest::keyClick(&guide, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Page(), "index.md");
  QTest::keyClick(&guide, Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(Page(), "one.md");
  Press("cmdContents");
  EXPECT_EQ(Page(), "index.md");

  QStringList opened;
  const auto usual = OpenUrlSeam;
  OpenUrlSeam = [&opened](const QString& address) { opened << address; };
  for (const char* link : {"https://www.example.com/a", "http://www.example.com", "file:///bin/sh",
                           "mailto:a@example.com", "javascript:1", "qrc:/guide/one.md"}) {
    Follow(link);
    EXPECT_EQ(Page(), "index.md") << link;
  }
  OpenUrlSeam = usual;
  EXPECT_EQ(opened, QStringList({"https://www.example.com/a", "http://www.example.com"}));
}

TEST_F(GuideTest, ADialogHasItsPageAndAQuestionThatOfWhatAsks) {
  const auto shown = [this](const std::function<void()>& open) {
    QString page;
    QTimer::singleShot(0, window.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      QTest::keyClick(dialog, Qt::Key_F1);
      page = Page();
      dialog->reject();
    });
    open();
    return page;
  };
  const auto ask = [this] { shownMsgBox({"Why?", MsgIcon::None, "", MsgButtons::Ok}); };
  Menu("mnuDocument");
  EXPECT_EQ(shown([] { AllScreens().Find(); }), "find.md");
  EXPECT_EQ(shown([this] {
              shownFileDialog({FileRequest::Kind::Open, ProjectFileFilter, {}});
            }),
            "files.md");
  Find<Button>("cmdCheck").setFocus();
  EXPECT_EQ(shown(ask), "check.md");
  Menu("mnuRelayOutputOptions");
  EXPECT_EQ(shown(ask), "relay_output_options.md");
}

TEST(GuidePlace, TheSecondWindowStandsBesideTheFirstWhereThereIsRoom) {
  const QRect screen(0, 0, 1280, 800);
  const QSize wanted(700, 600);
  const auto beside = [&](const QRect& window) { return RoomBeside(window, screen, wanted, 420); };
  EXPECT_EQ(beside({0, 40, 740, 580}), QRect(740, 40, 540, 600));
  EXPECT_EQ(beside({540, 300, 740, 480}), QRect(0, 200, 540, 600));
  EXPECT_EQ(beside({270, 0, 740, 580}), QRect(860, 0, 420, 600)) << "over it, but readable";
  EXPECT_EQ(beside({280, 0, 740, 580}), QRect(860, 0, 420, 600)) << "not over its menus";
  EXPECT_EQ(RoomBeside({0, 0, 740, 580}, {0, 0, 1920, 1080}, wanted, 420), QRect(740, 0, 700, 600));
}

TEST_F(GuideTest, FindsInThePageRoundAndRound) {
  Write("index.md", "# Lamps\n\nA lamp, a switch.\n\nAnother LAMP.");
  GuideWindow& guide = Open("index.md");
  QTest::keyClick(&guide, Qt::Key_F, Qt::ControlModifier);
  auto& text = Find<TextBox>("txtFindInPage");
  EXPECT_TRUE(text.isVisible());
  const auto at = [this] { return View().textCursor().selectionStart(); };
  QTest::keyClicks(&text, "lamp");
  EXPECT_EQ(at(), 0);
  QTest::keyClick(&text, Qt::Key_Return);
  EXPECT_EQ(at(), 8);
  Press("cmdNext");
  EXPECT_EQ(at(), 32);
  QTest::keyClick(&guide, Qt::Key_F3);
  EXPECT_EQ(at(), 0);
  QTest::keyClick(&guide, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(View().textCursor().selectedText(), "LAMP");
  EXPECT_EQ(Text("lblNotFound"), "");
  QTest::keyClicks(&text, "shade");
  EXPECT_EQ(Text("lblNotFound"), "Not found in the guide");

  const QPointer<GuideWindow> shown = &guide;
  QTest::keyClick(&text, Qt::Key_Escape);
  EXPECT_FALSE(text.isVisible());
  EXPECT_TRUE(guide.isVisible());
  QTest::keyClick(&guide, Qt::Key_F3);
  EXPECT_TRUE(text.isVisible());
  Find<QWidget>("GuideView").setFocus();
  for (int i = 0; i < 2; ++i) QTest::keyClick(&guide, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(shown.isNull());
}

TEST_F(GuideTest, FindsOnFromPageToPage) {
  Write("a.md", "# Lamps\n\nTwo lamps.");
  Write("b.md", "# Doors");
  Write("c.md", "# Lamp posts");
  Open("b.md");
  Press("cmdFind");
  auto& text = Find<TextBox>("txtFindInPage");
  QTest::keyClicks(&text, "LAMP");
  EXPECT_EQ(Page(), "b.md") << "no page runs away while one types";
  EXPECT_EQ(Text("lblNotFound"), "Not here, but on 2 other pages");
  EXPECT_EQ(Find<Label>("lblNotFound").CutText(), "");
  EXPECT_GE(Find<Label>("lblNotFound").width(), Find<Label>("lblNotFound").sizeHint().width());
  std::vector<std::pair<QString, int>> places;
  const auto note = [&] { places.emplace_back(Page(), View().textCursor().selectionStart()); };
  for (int i = 0; i < 4; ++i) {
    QTest::keyClick(&text, Qt::Key_Return);
    note();
  }
  for (int i = 0; i < 2; ++i) {
    Press("cmdPrevious");
    note();
  }
  EXPECT_EQ(places,
            (std::vector<std::pair<QString, int>>{
                {"c.md", 0}, {"a.md", 0}, {"a.md", 10}, {"c.md", 0}, {"a.md", 10}, {"a.md", 0}}));
  EXPECT_EQ(Text("lblNotFound"), "Also on 1 other page");
}

TEST_F(GuideTest, WhatIsMissingOrDamagedIsToldInItsPlace) {
  Write("index.md", "# Contents\n\n![A](pictures/a.png)\n\n![B](b.png)\n\nAnd so on.");
  Write("b.png", "\x89PNG no more");
  Write("damaged.md", QByteArray("# \xff\xfe\0 broken", 11));
  Write("empty.md", "");
  Open("index.md");
  EXPECT_EQ(View().toPlainText(),
            "Contents\nThe picture \"b.png\" of the guide cannot be read.\nAnd so on.\n"
            "The picture \"a.png\" of the guide cannot be read.");
  for (const char* page : {"missing.md", "damaged.md", "empty.md", "../../etc/hostname"}) {
    Follow(page);
    EXPECT_EQ(View().toPlainText(), QStringLiteral("The page \"%1\" of the guide cannot be read.")
                                        .arg(QString::fromLatin1(page).section(u'/', -1)));
  }
}
