#include "panel/project_file.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <csignal>

#include "limited.h"
#include "panel/document_fixture.h"

class ProjectFileTest : public DocumentTest {
 protected:
  ProjectFileTest() { CurrentFileName = Path("Hall.T3"); }

  QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }

  static std::string OnDisk() { return FileText(CurrentFileName); }

  qsizetype FilesInFolder() const {
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size();
  }

  /// What the failure of `action` says; the document and its mark must not change.
  template <typename Action>
  static std::string Failure(Action action) {
    const std::string before = Document();
    std::string message;
    try {
      action();
    } catch (const RunTimeFailure& failure) {
      message = failure.what();
    }
    EXPECT_EQ(Document(), before);
    EXPECT_EQ(DataChanged, 0);
    return message;
  }

  static void Save() { WriteProjectFile(); }

  QTemporaryDir folder_;
};

TEST_F(ProjectFileTest, SaveAndOpenKeepTheOldTail) {
  PanelRecord.PanelName = "A rather long name";
  PanelRecord.RelayTimerType(3) = FennlinkRecords(64).DeviceType = DimmerBlock(6155) = 1;
  WriteProjectFile();
  const std::string longer = OnDisk();
  PanelRecord.PanelName = "Hall";
  WriteProjectFile();
  EXPECT_EQ(OnDisk(), Document() + longer.substr(longer.size() - 14));
  const std::string saved = Document();
  LoadDefaults();
  ReadProjectFile();
  EXPECT_EQ(Document(), saved);
  EXPECT_EQ(FilesInFolder(), 1);

  ASSERT_TRUE(QFile::resize(CurrentFileName, 100));
  ReadProjectFile();
  EXPECT_TRUE(FileEndsEarly());
  WriteProjectFile();
  EXPECT_FALSE(FileEndsEarly());
}

TEST_F(ProjectFileTest, FailuresNameFileAndReasonAndTouchNothing) {
  EXPECT_NE(Failure(ReadProjectFile).find("Hall.T3\": No such file"), std::string::npos);
  WriteProjectFile();
  QFile file(CurrentFileName);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(36194));
  file.write("\xFF\xFF");
  file.close();
  EXPECT_NE(Failure(ReadProjectFile).find("Hall.T3\": a name in it"), std::string::npos);

  ASSERT_EQ(mkfifo(QFile::encodeName(Path("pipe")).constData(), 0600), 0);
  const std::pair<QString, const char*> wrong[] = {{folder_.path(), "it is a folder"},
                                                   {Path("pipe"), "not a regular file"},
                                                   {Path("Hall.T3/x.T3"), "ot a directory"},
                                                   {QStringLiteral("/proc/x.T3"), "No such file"}};
  for (const auto& [path, reason] : wrong) {
    CurrentFileName = path;
    for (const auto action : {ReadProjectFile, Save}) {
      const std::string message = Failure(action);
      EXPECT_NE(message.find(path.toStdString()), std::string::npos) << message;
      EXPECT_NE(message.find(reason), std::string::npos) << message;
    }
  }
}

TEST_F(ProjectFileTest, AFullDiskLeavesTheOldFile) {
  PanelRecord.PanelName = "Hall";
  WriteProjectFile();
  const std::string old = OnDisk();
  PanelRecord.PanelName = "";
  for (const rlim_t size : {rlim_t{0}, rlim_t{100'000}, rlim_t{177'013}}) {
    const std::string message = [size] {
      const Limited full(RLIMIT_FSIZE, size);
      return Failure(Save);
    }();
    EXPECT_NE(message.find("Hall.T3\": File too large"), std::string::npos) << message;
    EXPECT_EQ(OnDisk(), old) << size;
    EXPECT_EQ(FilesInFolder(), 1);
  }
}

TEST_F(ProjectFileTest, WhereOnlyTheFileMayBeWrittenItIsSavedInPlace) {
  WriteProjectFile();
  const std::string old = OnDisk();
  PanelRecord.PanelName = "Yard";
  chmod(QFile::encodeName(CurrentFileName).constData(), 0666);
  const bool root = geteuid() == 0;
  // As a user for whom rights count, in a folder of these.
  const auto inFolder = [&](mode_t rights, const std::function<void()>& save) {
    chmod(QFile::encodeName(folder_.path()).constData(), rights);
    EXPECT_EQ(seteuid(root ? 65534 : geteuid()), 0);
    std::string message = Failure(save);
    EXPECT_EQ(seteuid(root ? 0 : geteuid()), 0);
    chmod(QFile::encodeName(folder_.path()).constData(), 0755);
    return message;
  };
  // It takes new files and keeps those of others.
  if (root) {
    EXPECT_NE(inFolder(01777, Save).find("Hall.T3\": Operation not permitted"), std::string::npos);
  }
  const std::string message = inFolder(0555, [] {
    EXPECT_THROW(Save(), FolderRefuses);
    Save();
  });
  EXPECT_NE(message.find("in the folder \"" + folder_.path().toStdString()), std::string::npos)
      << message;
  EXPECT_EQ(OnDisk(), old);
  EXPECT_EQ(inFolder(0555, [] { WriteProjectFile(Saving::InPlace); }), "");
  EXPECT_EQ(OnDisk(), Document());
}

TEST_F(ProjectFileTest, AnyNameThatAFolderTakesIsSaved) {
  CurrentFileName = Path(std::string(255, 'n').c_str());
  WriteProjectFile();
  EXPECT_EQ(OnDisk(), Document());
  ASSERT_TRUE(QFile::link(QStringLiteral("round.T3"), Path("round.T3")));
  CurrentFileName = Path("round.T3");
  EXPECT_NE(Failure(Save).find("a link that leads to itself"), std::string::npos);
}

TEST_F(ProjectFileTest, LinksAndPermissionsStay) {
  WriteProjectFile();
  const QByteArray target = QFile::encodeName(CurrentFileName);
  ASSERT_EQ(chmod(target.constData(), 0640), 0);
  ASSERT_TRUE(QFile::link(QStringLiteral("Hall.T3"), Path("near.T3")));
  ASSERT_TRUE(QFile::link(QStringLiteral("near.T3"), Path("far.T3")));
  CurrentFileName = Path("far.T3");
  ++PanelRecord.ComPort;
  WriteProjectFile();
  EXPECT_EQ(FileText(Path("Hall.T3")), Document());
  struct stat status {};
  ASSERT_EQ(lstat(target.constData(), &status), 0);
  EXPECT_EQ(status.st_mode, mode_t{S_IFREG | 0640});
  EXPECT_TRUE(QFileInfo(Path("near.T3")).isSymLink() && QFileInfo(Path("far.T3")).isSymLink());
}

TEST_F(ProjectFileTest, AKilledSaveLeavesTheOldFileOrTheNewOne) {
  const auto fill = [](int value) {
    PanelRecord.InputTimedOnTime.elements.fill(value);
    DimmerBlock.elements.fill(static_cast<Int16>(value));
    return Document();
  };
  const std::string bytes[] = {fill(0), fill(1)};
  QElapsedTimer clock;
  clock.start();
  WriteProjectFile();
  const auto longestWait = static_cast<useconds_t>(clock.nsecsElapsed() / 1000 * 2);
  std::minstd_rand random(std::random_device{}());
  int started[2];
  ASSERT_EQ(pipe(started), 0);
  for (int i = 0; i < 50; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      for (int turn = i;; ++turn) {
        fill(turn % 2);
        if (write(started[1], "", 1) == 1) WriteProjectFile();
      }
    }
    char signal = 0;
    ASSERT_EQ(read(started[0], &signal, 1), 1);
    usleep(static_cast<useconds_t>(random()) % longestWait);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string disk = OnDisk();
    ASSERT_TRUE(disk == bytes[0] || disk == bytes[1]) << "after kill " << i;
  }
  close(started[0]);
  close(started[1]);
}

/// The files were written by the program as it stood before its parts were moved; they are packed
/// with qCompress.
TEST_F(ProjectFileTest, FilesOfAnEarlierBuildComeBackByteForByte) {
  for (const char* name : {"new-panel", "full-panel"}) {
    const std::string packed =
        FileText(QStringLiteral(TEST_DATA_DIR "/panel/golden/%1.T3.z").arg(QLatin1String(name)));
    const std::string bytes = qUncompress(QByteArray::fromStdString(packed)).toStdString();
    ASSERT_GT(bytes.size(), 176'000U) << name;
    (void)DecodeProject(bytes, LiveProject);
    EXPECT_TRUE(Document() == bytes) << name;
  }
  EXPECT_EQ(PanelRecord.PanelName, "OLD HOUSE");
  EXPECT_EQ(PanelRecord.Latitude, 60);
}
