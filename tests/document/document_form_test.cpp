#include <sys/stat.h>

#include "document/rules/text/doc_file.h"
#include "limited.h"
#include "panel/document_fixture.h"
#include "screen_test.h"

class DocumentFormTest : public ScreenTest {
 protected:
  CheckBox& Box(int index) { return Find<CheckBox>("chkPrintOptions", index); }
  bool OpenOffered() { return Shows("lblOpenDocument"); }

  static std::string OnDisk() { return FileText(DocumentFileName); }
};

TEST_F(DocumentFormTest, WritesTheTickedSections) {
  QStringList opened;
  OpenUrlSeam = [&opened](const QString& address) { opened << address; };
  PanelRecord.AddOnModuleType = 1;
  Menu("mnuDocument");
  EXPECT_EQ(Text("lblDocFileName"),
            folder.filePath("Orv Tamberloom 3/Documentation/Tamberloom 3.txt"));
  EXPECT_FALSE(OpenOffered());
  DocumentChoice chosen;
  chosen.fill(true);
  for (const int left : {0, 7}) {
    Click(Box(left));
    chosen[static_cast<std::size_t>(left)] = false;
  }
  Press("cmdDocument");
  const std::string document = OnDisk();
  const std::string created = "Document Created\t";
  const std::size_t stamp = document.find(created);
  ASSERT_NE(stamp, std::string::npos) << document;
  EXPECT_EQ(document, RenderDocument(LiveProject, CurrentFileName,
                                     document.substr(stamp + created.size(), 19), chosen));
  EXPECT_EQ(OnlyMessage(), "Documentation Complete.");
  EXPECT_EQ(DataChanged, 0);

  Click(Find<Label>("lblOpenDocument"));
  EXPECT_EQ(opened, QStringList(DocumentFileName));
}

TEST_F(DocumentFormTest, TheChoiceLastsUntilNew) {
  Menu("mnuDocument");
  for (int box = 0; box < DMXSection; box += 2) QTest::keyClick(&Box(box), Qt::Key_Space);
  Menu("mnuAbout");
  Menu("mnuDocument");
  for (int box = 0; box < DMXSection; ++box) EXPECT_EQ(Box(box).isChecked(), box % 2 != 0) << box;
  Menu("mnuNew");
  Menu("mnuDocument");
  for (int box = 0; box < DMXSection; ++box) EXPECT_TRUE(Box(box).isChecked()) << box;
}

TEST_F(DocumentFormTest, TheDMXBoxFailsAndStaysTicked) {
  PanelRecord.AddOnModuleType = 2;
  Menu("mnuDocument");
  EXPECT_FALSE(Shown(Box(DMXSection)));
  PanelRecord.AddOnModuleType = 1;
  Menu("mnuDocument");
  ASSERT_TRUE(Shown(Box(DMXSection)));
  for (std::size_t clicks = 1; clicks <= 2; ++clicks) {
    Click(Box(DMXSection));
    EXPECT_TRUE(Box(DMXSection).isChecked());
    ASSERT_EQ(messages.size(), clicks);
    EXPECT_TRUE(messages.back().Text.startsWith("Subscript out of range"));
  }
}

TEST_F(DocumentFormTest, BrowseChoosesTheTarget) {
  Menu("mnuDocument");
  const QString before = DocumentFileName;
  const QString mask = folder.filePath("Orv Tamberloom 3/Documentation/*.TXT");
  for (const QString& refused : {QString(), mask}) {
    nextFileName = refused;
    Press("cmdBrowse");
    EXPECT_EQ(DocumentFileName, before);
  }
  nextFileName = folder.filePath("Hall #1.TXT");
  Press("cmdBrowse");
  EXPECT_EQ(DocumentFileName, nextFileName);
  EXPECT_EQ(Text("lblDocFileName"), nextFileName);
  EXPECT_EQ(fileRequests[0].Mode, FileRequest::Kind::Save);
  EXPECT_EQ(fileRequests[0].FileName, mask);
  EXPECT_EQ(fileRequests[1].FileName, before);
  Press("cmdDocument");
  EXPECT_TRUE(OnDisk().ends_with("[End Of File]\r\n"));
  EXPECT_TRUE(OpenOffered());
  nextFileName = folder.filePath("Hall #2.TXT");
  Press("cmdBrowse");
  EXPECT_FALSE(OpenOffered());
}

TEST_F(DocumentFormTest, AFailureIsToldAndKeepsTheOldFile) {
  Menu("mnuDocument");
  Press("cmdDocument");
  const QString target = DocumentFileName;
  const std::string old = OnDisk();
  const auto fails = [this](const QString& what) {
    SCOPED_TRACE(what.toStdString());
    messages.clear();
    Press("cmdDocument");
    EXPECT_TRUE(OnlyMessage().contains(what)) << OnlyMessage().toStdString();
    EXPECT_FALSE(OpenOffered());
  };
  DimmerBlock.elements.fill(32767);
  fails("\"Dimmer Outputs\": dimmer device 01, output 1: Overflow");
  Click(Box(11));
  const QString pipe = folder.filePath("pipe");
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  const QString missing = folder.filePath("none/Hall.TXT");
  const std::pair<QString, QString> wrong[] = {{folder.path(), "it is a folder"},
                                               {missing, "(No such file or directory)"},
                                               {pipe, "it is not a regular file"}};
  for (const auto& [path, reason] : wrong) {
    nextFileName = path;
    Press("cmdBrowse");
    fails(reason);
  }
  EXPECT_TRUE(QFile::remove(pipe));
  DocumentFileName = target;
  {
    const Limited full(RLIMIT_FSIZE, 100);
    fails(target);
  }
  EXPECT_EQ(OnDisk(), old);
  EXPECT_EQ(QFileInfo(target).dir().entryList(QDir::Files | QDir::Hidden).size(), 1);

  Click(Box(0));
  Press("cmdDocument");
  EXPECT_LT(OnDisk().size(), old.size());
}
