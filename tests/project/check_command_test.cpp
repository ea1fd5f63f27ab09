#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "document/rules/check/check.h"
#include "panel/live_project.h"
#include "project/project_program.h"

// The program for scripts as it checks many projects.

TEST_F(ProjectProgramTest, ChecksManyFilesInTheirOrder) {
  const QString good = Save("good.T3");
  PanelRecord.DMXOnLevel = 100;
  const QString bad = Save("bad.T3");
  EXPECT_EQ(Run({"check", good}), 0);
  EXPECT_EQ(Lines()[0], "File\tSeverity\tRule\tItem\tSentence");
  EXPECT_TRUE(Lines()[1].startsWith(good + "\twarning\tunused-relay\tRELAY 01\t"));
  EXPECT_EQ(Run({"check", good, bad, good}), 1);
  EXPECT_TRUE(Lines().filter("\terror\timage-element\tPANEL\t").first().startsWith(bad));
  EXPECT_EQ(Run({"check", folder.filePath("none.T3"), bad, "--json"}), 2);
  EXPECT_TRUE(errors.contains("none.T3"));
  EXPECT_EQ(QJsonDocument::fromJson(Lines()[0].toUtf8()).object()["File"].toString(), bad);
}

TEST_F(ProjectProgramTest, ListsTheRulesOfTheCheck) {
  EXPECT_EQ(Run({"rules"}), 0);
  const QStringList lines = Lines();
  EXPECT_EQ(lines[0], "Rule\tSeverity\tAbout");
  EXPECT_EQ(lines.size(), static_cast<qsizetype>(AllRules().size()) + 1);
  EXPECT_TRUE(lines.contains("unused-relay\twarning\tNothing switches a relay."));
  for (const QString& line : lines.mid(1)) {
    EXPECT_TRUE(line.count(u'\t') == 2 && line.endsWith(u'.')) << line.toStdString();
  }
  EXPECT_EQ(Run({"rules", "a"}), 2);
}

TEST_F(ProjectProgramTest, TheGuideTellsTheSameRules) {
  EXPECT_EQ(Run({"rules"}), 0);
  const QStringList rules = Lines().mid(1);
  QStringList told;
  QString severity;
  const QByteArray page = QByteArray::fromStdString(FileText(GUIDE_FOLDER "/check.md"));
  for (const QString& line : QString::fromUtf8(page).split(u'\n')) {
    if (line.startsWith(u"**")) severity = line.section(u'*', 2, 2).chopped(1).toLower();
    const QStringList cells = line.split(QStringLiteral(" | "));
    if (!line.startsWith(u"| `")) continue;
    told << QStringList{cells[0].mid(3).chopped(1), severity, cells[1]}.join(u'\t');
  }
  for (const QString& rule : rules) EXPECT_TRUE(told.contains(rule)) << rule.toStdString();
  for (const QString& row : told) EXPECT_TRUE(rules.contains(row)) << row.toStdString();
}

TEST_F(ProjectProgramTest, ChecksFoldersAndLists) {
  const QDir root(folder.path());
  ASSERT_TRUE(root.mkpath("site/deep/.git") && root.mkdir("bare"));
  for (const char* file : {"site/b.T3", "site/a.t3", "site/deep/c d.T3", "site/deep/.git/e.T3"}) {
    Save(file);
  }
  Save("site/notes.txt");
  const auto checked = [&] {
    QStringList files;
    for (const QString& line : Lines().mid(1)) {
      const QString file = root.relativeFilePath(line.section(u'\t', 0, 0));
      if (!files.contains(file)) files << file;
    }
    return files;
  };
  const QString site = folder.filePath("site");
  EXPECT_EQ(Run({"check", site}), 0);
  EXPECT_EQ(checked(), (QStringList{"site/a.t3", "site/b.T3"}));
  const qsizetype once = Lines().size();
  EXPECT_EQ(Run({"check", site, site + "/./b.T3", site + "/../site"}), 0);
  EXPECT_EQ(Lines().size(), once) << "a file that is named twice is told once";
  ASSERT_TRUE(QFile::link(site, folder.filePath("site/deep/back")));
  EXPECT_EQ(Run({"check", "-r", site}), 0);
  EXPECT_EQ(checked(), (QStringList{"site/a.t3", "site/b.T3", "site/deep/c d.T3"}));
  EXPECT_EQ(Run({"check", folder.filePath("bare"), site}), 2);
  EXPECT_TRUE(errors.contains("bare: there is no .T3 file in the folder")) << errors.toStdString();
  EXPECT_EQ(checked().size(), 2);

  const QByteArray names = QFile::encodeName(site) + "/deep/c d.T3";
  for (const QByteArray& list :
       {names + "\n\n", QFile::encodeName(site) + '\0' + names + '\0', QByteArray("\n")}) {
    QFile file(folder.filePath("list"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(list);
    file.close();
    input = file.fileName();
    EXPECT_EQ(Run({"check", "--files-from", "-"}), list.size() > 1 ? 0 : 2) << errors.toStdString();
    EXPECT_EQ(errors.contains("there is no file in the list"), list.size() == 1);
    EXPECT_EQ(checked().size(), list.count('\0') == 2 ? 3 : list.size() > 1 ? 1 : 0);
    EXPECT_EQ(Run({"check", folder.filePath("site/b.T3"), "--files-from=" + input}), 0);
    EXPECT_TRUE(checked().contains("site/b.T3"));
  }
  EXPECT_EQ(Run({"check", "--files-from", folder.filePath("gone")}), 2);
  EXPECT_EQ(Run({"check", "-", "--files-from", "-"}), 2);
  EXPECT_EQ(Run({"check", "--files-from="}), 2);
}

TEST_F(ProjectProgramTest, StandardInputStandsOnceAndWhatIsCutIsTold) {
  const QString whole = Save("whole.T3");
  input = whole;
  for (const QStringList& twice : {QStringList{"compare", "-", "-"}, {"check", "-", "-"}}) {
    EXPECT_EQ(Run(twice), 2);
    EXPECT_TRUE(errors.contains("standard input, -, can stand for one")) << errors.toStdString();
  }
  EXPECT_EQ(Run({"compare", "-", whole}), 0);
  EXPECT_EQ(errors, "");
  input.clear();
  Write("cut.T3", {});
  for (const QStringList& cut : {QStringList{"compare", folder.filePath("cut.T3"), whole},
                                 {"document", folder.filePath("cut.T3")}}) {
    Run(cut);
    EXPECT_TRUE(errors.contains("ends early, or is empty")) << cut[0].toStdString();
  }
}

TEST_F(ProjectProgramTest, TellsTheFindingsThatAreAskedFor) {
  PanelRecord.DMXOnLevel = 100;
  const QString bad = Save("bad.T3");
  const auto rules = [&] {
    QSet<QString> names;
    for (const QString& line : Lines().mid(1)) names << line.section(u'\t', 2, 2);
    return names;
  };
  struct Case {
    QStringList Options;
    int Status;
    QSet<QString> Rules;
  };
  const QSet<QString> all = {"image-element", "unused-relay", "items-in-use"};
  for (const Case& row :
       {Case{{}, 1, all},
        {{"--severity", "error"}, 1, {"image-element"}},
        {{"--severity", "warning"}, 1, {"image-element", "unused-relay"}},
        {{"--rule", "unused-relay"}, 0, {"unused-relay"}},
        {{"--rule", "unused-relay", "--warnings-as-errors"}, 1, {"unused-relay"}},
        {{"--rule", "items-in-use,never-on", "--warnings-as-errors"}, 0, {"items-in-use"}},
        {{"--rule", "items-in-use", "--rule", "unused-relay"},
         0,
         all - QSet<QString>{"image-element"}},
        {{"--ignore", "image-element"}, 0, all - QSet<QString>{"image-element"}},
        {{"--ignore", "image-element,unused-relay", "--warnings-as-errors"}, 0, {"items-in-use"}},
        {{"--rule", "unused-relay", "--ignore", "unused-relay"}, 0, {}}}) {
    SCOPED_TRACE(row.Options.join(u' ').toStdString());
    EXPECT_EQ(Run(QStringList{"check", bad} + row.Options), row.Status);
    EXPECT_TRUE(rules() == row.Rules) << output.toStdString();
  }
  EXPECT_EQ(Run({"check", bad, "--rule", "image-element"}), 1);
  const QStringList found = Lines().value(1).split(u'\t');
  ASSERT_EQ(found.size(), 5);
  Write("bad.T3.accepted", "Rule\tItem\tReason\tDate\tFinding\nimage-element\t" +
                               found[3].toUtf8() + "\tfor a test\t2026-11-26\t" +
                               found[4].toUtf8() + "\n");
  EXPECT_EQ(Run({"check", bad}), 0) << "what is accepted does not count";
  EXPECT_FALSE(rules().contains("image-element"));
  EXPECT_EQ(Run({"check", bad, "--all"}), 0);
  EXPECT_EQ(Lines().last().section(u'\t', 4), found[4] + " Accepted on 2026-11-26: for a test");
  Write("bad.T3.accepted", "<<<<<<< ours\n");
  EXPECT_EQ(Run({"check", bad}), 2);
  EXPECT_TRUE(rules().contains("image-element")) << "a damaged list hides nothing";
  EXPECT_TRUE(errors.contains("see line 1")) << errors.toStdString();
  const QString pdf = folder.filePath("bad.pdf");
  EXPECT_EQ(Run({"report", bad, "--pdf", pdf}), 2);
  EXPECT_TRUE(errors.contains("see line 1") && QFile::exists(pdf)) << errors.toStdString();

  EXPECT_EQ(Run({"check", bad, "--rule", "loud"}), 2);
  EXPECT_TRUE(errors.contains("there is no rule \"loud\"")) << errors.toStdString();
  EXPECT_EQ(Run({"check", bad, "--severity", "loud"}), 2);
}
