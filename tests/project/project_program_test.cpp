#include "project/project_program.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "document/rules/check/check.h"
#include "document/rules/text/doc_file.h"
#include "document/sample_panel.h"
#include "panel/code_page.h"
#include "panel/panel_image.h"
#include "panel/project_file.h"

// The program itself, as a script runs it.

TEST_F(ProjectProgramTest, AnOptionThatACommandDoesNotTakeIsRefused) {
  const QString file = Save("hall.T3");
  const std::pair<QStringList, const char*> wrong[] = {
      {{"check", file, "--pdf", "x"}, "check does not take --pdf"},
      {{"check", file, "--names"}, "check does not take --names"},
      {{"document", file, "--json"}, "document does not take --json"},
      {{"--set", "rules"}, "rules does not take --set"},
      {{"compare", file, file, "-o", "x"}, "compare does not take -o"},
      {{"compare", file, file, "--names=x"}, "names"}};
  for (const auto& [call, reason] : wrong) {
    EXPECT_EQ(Run(call), 2) << call.join(u' ').toStdString();
    EXPECT_TRUE(errors.contains(reason)) << errors.toStdString();
  }
  EXPECT_EQ(Run({"--help"}), 0);
  const QByteArray help = output;
  EXPECT_TRUE(help.contains("compare, project: The names, too. status, watch:"));
  EXPECT_EQ(Run({"clock", "--help"}), 0);
  EXPECT_TRUE(output.contains("--set") && output.contains("--json")) << output.toStdString();
  EXPECT_FALSE(output.contains("--pdf") || help.size() < 2 * output.size());
}

TEST_F(ProjectProgramTest, OnlyTheProgramItselfSpeaksOnStandardError) {
  const QString file = Save("hall.T3");
  const QString pdf = folder.filePath("hall.pdf");
  for (const char* setting : {"LC_ALL=C", "QT_DEBUG_PLUGINS=1", "QT_LOGGING_RULES=*=true"}) {
    EXPECT_EQ(Run({"report", file, "--pdf", pdf}, {}, setting), 0);
    EXPECT_EQ(errors.toStdString(), "") << setting;
  }
}

TEST_F(ProjectProgramTest, ThePageForTheShellCompletesCommandsOptionsAndRules) {
  const auto completed = [&](const QStringList& words) {
    QProcess shell;
    const QString program = QFileInfo(QStringLiteral(PROJECT_PROGRAM)).absolutePath();
    shell.setEnvironment(Environment() << "PATH=" + program + ":/usr/bin:/bin");
    const QString script =
        QStringLiteral("source '" GUIDE_FOLDER
                       "/../../packaging/tamberloom3-project.completion'\n"
                       "COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1))\n_tamberloom3_project\n"
                       "echo \"${COMPREPLY[*]}\"");
    shell.start("bash", QStringList{"-c", script} + (QStringList{"bash", "x"} + words));
    EXPECT_TRUE(shell.waitForFinished(30'000));
    EXPECT_EQ(shell.readAllStandardError().toStdString(), "");
    return QString::fromUtf8(shell.readAllStandardOutput()).split(u' ').replaceInStrings("\n", "");
  };
  EXPECT_EQ(completed({"chec"}), QStringList{"check"});
  EXPECT_TRUE(completed({""}).contains("rules"));
  EXPECT_EQ(completed({"--json", "sta"}), QStringList{"status"});
  EXPECT_EQ(completed({"--rule", "idle-t", "check"}), QStringList{"check"});
  EXPECT_EQ(completed({"check", "--rule", "never"}), (QStringList{"never-off", "never-on"}));
  EXPECT_EQ(completed({"check", "--ignore", "=", "never-of"}), QStringList{"never-off"});
  EXPECT_EQ(completed({"check", "--rule", "no-day,never-of"}), QStringList{"no-day,never-off"});
  EXPECT_EQ(completed({"check", "--severity", ""}), (QStringList{"error", "warning", "note"}));
  EXPECT_EQ(completed({"check", "--w"}), QStringList{"--warnings-as-errors"});
  EXPECT_EQ(completed({"--js"}), QStringList{"--json"});
  EXPECT_EQ(completed({"clock", "--se"}), QStringList{"--set"});
  EXPECT_EQ(completed({"clock", "--pd"}), QStringList{""});
  const QStringList states = {"on", "off"};
  EXPECT_EQ(completed({"switch", "tcp", ":", "10.0.0.1", "\"RELAY 01\"", ""}), states);
  EXPECT_EQ(completed({"switch", "/dev/ttyS0", "group", "2", "of"}), QStringList{"off"});
  EXPECT_EQ(completed({"switch", "tcp", ":", "10.0.0.1", ""}), QStringList{""});
  EXPECT_EQ(completed({"switch", "/dev/ttyS0", ""}), QStringList{""});
  EXPECT_EQ(completed({"check", "--rule", "never-on", "offic"}), QStringList{""}) << "a file";
}

TEST_F(ProjectProgramTest, ComparesAndTellsDifferentFromEqual) {
  const QString one = Save("one.T3");
  PanelRecord.RelayName(0) = "FOYER";
  const QString renamed = Save("renamed.T3");
  PanelRecord.RelayPowerOnType(4) = 1;
  const QString other = Save("other.T3");
  EXPECT_EQ(Run({"compare", one, renamed}), 0);
  EXPECT_EQ(Run({"compare", "--names", one, renamed}), 1);
  EXPECT_EQ(Run({"compare", one, other}), 1);
  EXPECT_EQ(Lines(),
            (QStringList{"Area\tItem\tField\tA\tB", "Relays\tRELAY 05\tpower-on type\tOff\tOn"}));
}

TEST_F(ProjectProgramTest, WhatCompareTellsIsAppliedOrRefusedAsAWhole) {
  const QString one = Save("one.T3");
  const QString third = Save("third.T3");
  PanelRecord.RelayName(0) = "HALL\t2";
  PanelRecord.InputRelayControl(3, 2) = 1;
  PanelRecord.InputType(3) = 9;
  const QString other = Save("other.T3");
  QFile tailed(one);
  ASSERT_TRUE(tailed.open(QIODevice::Append));
  tailed.write("old tail");
  tailed.close();
  const QString rows = folder.filePath("rows");
  for (const char* form : {"--names", "--json"}) {
    SCOPED_TRACE(form);
    EXPECT_EQ(Run({"compare", one, other, "--names", form}, rows), 1);
    const std::string before = FileText(other);
    EXPECT_EQ(Run({"apply", other, rows}), 2);
    EXPECT_TRUE(FileText(other) == before);
    EXPECT_EQ(errors.count('\n'), 3) << errors.toStdString();
    EXPECT_TRUE(errors.contains("INPUT 04, type: there stands \"Input Disable\""))
        << errors.toStdString();
    EXPECT_EQ(Run({"apply", third, rows}), 0) << errors.toStdString();
    EXPECT_EQ(Run({"compare", third, other, "--names"}), 0);
    QFile::remove(third);
    QFile::copy(one, third);
  }
  EXPECT_EQ(Run({"apply", one, rows}), 0);
  EXPECT_TRUE(FileText(one) == Document() + "old tail");
  const QByteArray on = "Relays\tRELAY 05\tpower-on type\tOff\tOn";
  const std::pair<QByteArray, const char*> wrong[] = {
      {"Relays\tRELAY 01", "row 1: is not a row of a comparison"},
      {"{\"Area\": 1}", "row 1: is not a row of a comparison"},
      {on + "\r\n" + on, "power-on type: it is told twice"},
      {on + "ly", "\"Only\" is no value of it"},
      {"Relays\tRELAY 99\tpower-on type\tOff\tOn", "RELAY 99, power-on type: there is no such"}};
  for (const auto& [told, reason] : wrong) {
    QFile file(rows);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(told);
    file.close();
    EXPECT_EQ(Run({"apply", one, rows}), 2);
    EXPECT_TRUE(errors.contains(reason)) << errors.toStdString();
  }
  EXPECT_TRUE(FileText(one) == Document() + "old tail");
}

TEST_F(ProjectProgramTest, MergesIntoOursAndTellsWhatBothChanged) {
  const QString base = Save("base.T3");
  PanelRecord.RelayPowerOnType(0) = PanelRecord.RelayTimerType(1) = 1;
  PanelRecord.RelayName(0) = "OURS";
  const QString ours = Save("ours.T3");
  LoadDefaults();
  PanelRecord.RelayPowerOnType(0) = PanelRecord.RelayTimerType(2) = 2;
  const QString theirs = Save("theirs.T3");
  const std::string before = FileText(ours);
  const QString out = folder.filePath("out.T3");
  EXPECT_EQ(Run({"merge", base, base, theirs, "-o", out}), 0);
  EXPECT_TRUE(FileText(out) == FileText(theirs));

  for (const QStringList& wrong : {QStringList{"merge", base, ours, theirs, "-o", theirs},
                                   {"merge", base, ours, theirs, "-o", "-"},
                                   {"merge", base, "image:x", theirs},
                                   {"merge", QStringLiteral(PROJECT_PROGRAM), ours, theirs}}) {
    EXPECT_EQ(Run(wrong), 2) << wrong.join(u' ').toStdString();
  }
  EXPECT_EQ(Run({"merge", base, ours, theirs}, "/dev/full"), 2);
  EXPECT_TRUE(FileText(ours) == before);
  ASSERT_TRUE(QFile::resize(out, 100'000));
  EXPECT_EQ(Run({"merge", base, ours, out}), 2) << "it ends early";
  ASSERT_TRUE(QFile::resize(out, 0));
  EXPECT_EQ(Run({"merge", out, ours, ours, "-o", out + "2"}), 0) << "both added it";

  QFile tailed(ours);
  ASSERT_TRUE(tailed.open(QIODevice::Append));
  tailed.write("old tail");
  tailed.close();
  EXPECT_EQ(Run({"merge", base, ours, theirs, "-o", out, "--path", "halls/hall.T3"}), 1);
  EXPECT_EQ(Lines(),
            (QStringList{"File\tArea\tItem\tField\tBase\tOurs\tTheirs",
                         "halls/hall.T3\tRelays\tRELAY 01\tpower-on type\tOff\tOn\tOn/In:1"}));
  EXPECT_EQ(Run({"merge", base, folder.filePath("gone"), theirs, "--path", "halls/hall.T3"}), 2);
  EXPECT_TRUE(errors.contains("halls/hall.T3: ")) << errors.toStdString();
  EXPECT_EQ(Run({"merge", base, ours, theirs}), 1);
  EXPECT_EQ(Lines(), (QStringList{"Area\tItem\tField\tBase\tOurs\tTheirs",
                                  "Relays\tRELAY 01\tpower-on type\tOff\tOn\tOn/In:1"}));
  PanelRecord.RelayPowerOnType(0) = PanelRecord.RelayTimerType(1) = 1;
  PanelRecord.RelayName(0) = "OURS";
  EXPECT_TRUE(FileText(ours) == Document() + "old tail");
}

TEST_F(ProjectProgramTest, DocumentsByteForByteAndConvertsThereAndBack) {
  PanelRecord.RelayTimerType(7) = 2;
  PanelRecord.RelayName(1) =
      "K\xDC"
      "CHE";
  const QString file = Save("hall.T3");
  HostSoftwareVersion = VersionText();
  DocumentChoice all;
  all.fill(true);
  const QDateTime date(QDate(2026, 11, 25), QTime(10, 0));
  EXPECT_EQ(Run({"document", file, "--date", "2026-11-25 10:00"}), 0);
  EXPECT_TRUE(output == QByteArray::fromStdString(RenderDocument(LiveProject, CurrentFileName,
                                                                 DocumentTimeStamp(date), all)));
  EXPECT_TRUE(
      output.contains("K\xDC"
                      "CHE"));
  const QString text = ToUnicode(output.toStdString());
  EXPECT_EQ(Run({"document", file, "--date", "2026-11-25 10:00", "--utf8"}), 0);
  EXPECT_TRUE(QString::fromUtf8(output) == text && text.contains(u"K\u00DCCHE"));

  const QString memory = folder.filePath("memory");
  EXPECT_EQ(Run({"image", file, memory}), 0);
  EXPECT_EQ(FileText(memory).size(), 40960U);
  EXPECT_EQ(FileText(memory)[0x06F7], 2);
  const QString back = folder.filePath("back.T3");
  EXPECT_EQ(Run({"project", memory, back}), 0);
  EXPECT_EQ(Run({"compare", file, back}), 0);
}

TEST_F(ProjectProgramTest, ReportsWholeOrNotAtAll) {
  LoadEveryCode();
  const QString file = Save("hall.T3");
  const QString pdf = folder.filePath("hall.pdf");
  const QString workbook = folder.filePath("hall.xlsx");
  EXPECT_EQ(Run({"report", file, "--pdf", pdf, "--xlsx", workbook, "--paper", "letter"}), 0)
      << errors.toStdString();
  EXPECT_TRUE(FileText(pdf).starts_with("%PDF-"));
  EXPECT_NE(FileText(pdf).find("/MediaBox [0 0 612"), std::string::npos);
  EXPECT_TRUE(FileText(workbook).starts_with("PK"));
  EXPECT_EQ(Run({"report", file, "--pdf", "-", "--xlsx", workbook}), 0) << errors.toStdString();
  EXPECT_TRUE(output.startsWith("%PDF-") && output.trimmed().endsWith("%%EOF"));
  EXPECT_EQ(Run({"report", file, "--xlsx", "-"}), 0) << errors.toStdString();
  EXPECT_TRUE(output.startsWith("PK"));
  DimmerBlock(3) = 32767;
  const std::string old = FileText(pdf);
  EXPECT_EQ(Run({"report", Save("damaged.T3"), "--pdf", pdf}), 2);
  EXPECT_TRUE(errors.contains("hall.pdf")) << errors.toStdString();
  EXPECT_TRUE(FileText(pdf) == old);
  EXPECT_EQ(Run({"report", file, "--xlsx", folder.path()}), 2);
  EXPECT_TRUE(errors.contains("it is a folder")) << errors.toStdString();
}

TEST_F(ProjectProgramTest, TheSameDateGivesTheSameReportAndDamagedFilesBesideStopNone) {
  LoadEveryCode();
  const QString file = Save("hall.T3");
  const QString pdf = folder.filePath("hall.pdf");
  const QString workbook = folder.filePath("hall.xlsx");
  const auto report = [&](const char* date) {
    EXPECT_EQ(Run({"report", file, "--pdf", pdf, "--xlsx", workbook, "--date", date}), 0)
        << errors.toStdString();
    return std::pair(FileText(pdf), FileText(workbook));
  };
  const auto first = report("2026-11-25 10:00");
  EXPECT_TRUE(report("2026-11-25 10:00") == first);
  const auto later = report("2026-11-25 10:01");
  EXPECT_TRUE(later.first != first.first && later.second != first.second);
  for (const char* ending : {".report", ".accepted", ".tested"}) {
    QFile damaged(file + ending);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("Dear Sirs,");
    damaged.close();
    EXPECT_EQ(Run({"report", file, "--pdf", pdf, "--date", "2026-11-25 10:00"}), 2);
    EXPECT_TRUE(errors.contains("hall.T3" + QByteArray(ending)) && errors.contains("line 1"))
        << errors.toStdString();
    EXPECT_TRUE(FileText(pdf) == first.first);
    ASSERT_TRUE(damaged.remove() && QFile::resize(pdf, 0));
  }
}

TEST_F(ProjectProgramTest, AFileThatEndsEarlyIsToldAndComparesAsANewPanel) {
  const QString fresh = Save("fresh.T3");
  PanelRecord.RelayPowerOnType(4) = 1;
  const QString other = Save("other.T3");
  for (const qint64 size : {177'009, 30'000, 0}) {
    ASSERT_TRUE(QFile::resize(fresh, size));
    EXPECT_EQ(Run({"check", fresh}), 1);
    EXPECT_TRUE(Lines()[1].startsWith(fresh + "\terror\tfile-ends-early\tPANEL\t"));
    EXPECT_EQ(Run({"compare", other, fresh}), 1);
    EXPECT_EQ(Lines().size(), 2) << output.toStdString();
  }
}

TEST_F(ProjectProgramTest, WhatCannotBeWrittenOrHeldIsToldAndNothingIsOverwritten) {
  const QString file = Save("hall.T3");
  const QString memory = folder.filePath("memory");
  EXPECT_EQ(Run({"image", file, memory}), 0);
  for (const QStringList& call : {QStringList{"check", file, file},
                                  {"compare", file, file},
                                  {"document", file},
                                  {"--help"}}) {
    EXPECT_EQ(Run(call, "/dev/full"), 2) << call.join(u' ').toStdString();
    EXPECT_EQ(errors.count('\n'), 1) << errors.toStdString();
  }

  QFile::link(file, folder.filePath("link"));
  const std::string bytes = FileText(file);
  for (const QStringList& call :
       {QStringList{"image", file, file},
        {"image", folder.filePath("link"), file},
        {"project", memory, folder.filePath("./memory")},
        {"report", file, "--pdf", file},
        {"report", file, "--xlsx", file},
        {"report", file, "--pdf", folder.filePath("new"), "--xlsx", folder.filePath("./new")}}) {
    EXPECT_EQ(Run(call), 2) << call.join(u' ').toStdString();
    EXPECT_TRUE(errors.contains("named twice")) << errors.toStdString();
  }
  QFile::link(QStringLiteral("loop"), folder.filePath("loop"));
  EXPECT_EQ(Run({"image", file, folder.filePath("loop")}), 2);
  EXPECT_TRUE(errors.contains("a link that leads to itself")) << errors.toStdString();
  EXPECT_TRUE(FileText(file) == bytes);
  EXPECT_EQ(FileText(memory).size(), 40960U);
  EXPECT_FALSE(QFile::exists(folder.filePath("new")));

  ASSERT_TRUE(QFile::resize(file, 5'000'000));
  EXPECT_EQ(Run({"check", file}), 0);
  const char* noMemory = "ASAN_OPTIONS=allocator_may_return_null=1:max_allocation_size_mb=4";
  for (const char* command : {"check", "document"}) {
    EXPECT_EQ(Run({command, file}, {}, noMemory), 2);
    EXPECT_TRUE(errors.contains("not enough memory")) << errors.toStdString();
  }
}

TEST_F(ProjectProgramTest, AWrongCallOrFileIsToldAndLeavesNothing) {
  const QString out = folder.filePath("out.T3");
  const QStringList calls[] = {{},
                               {"paint"},
                               {"compare", "one"},
                               {"check", "--loud", "a"},
                               {"report", "a"},
                               {"report", "a", "--pdf", out, "--paper", "A5"},
                               {"report", "a", "--pdf", "-", "--xlsx", "-"},
                               {"document", "a", "--date", "noon"},
                               {"project", QStringLiteral(PROJECT_PROGRAM), out}};
  for (const QStringList& call : calls) {
    EXPECT_EQ(Run(call), 2) << call.join(u' ').toStdString();
    EXPECT_TRUE(errors.startsWith("tamberloom3-project: ")) << errors.toStdString();
  }
  EXPECT_FALSE(QFile::exists(out));
}
