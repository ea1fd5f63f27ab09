#pragma once

#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "panel/document_fixture.h"
#include "panel/live_project.h"
#include "panel/project_file.h"

/// Runs the program for scripts on files of a folder of its own, which is its home too.
class ProjectProgramTest : public DocumentTest {
 protected:
  /// Saves the live document.
  QString Save(const char* name) {
    CurrentFileName = folder.filePath(QString::fromLatin1(name));
    WriteProjectFile();
    return CurrentFileName;
  }

  void Write(const char* name, const QByteArray& content) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  int Run(const QStringList& arguments, const QString& printTo = {}, const char* setting = "") {
    QProcess program;
    if (!input.isEmpty()) program.setStandardInputFile(input);
    if (!printTo.isEmpty()) program.setStandardOutputFile(printTo);
    program.setEnvironment(Environment() << QString::fromLatin1(setting));
    // Without the terminal that the tests may run on, where it would ask for a password.
    program.setChildProcessModifier([] { setsid(); });
    program.start(QStringLiteral(PROJECT_PROGRAM), arguments);
    EXPECT_TRUE(program.waitForFinished(60'000));
    output = program.readAllStandardOutput();
    errors = program.readAllStandardError();
    return program.exitCode();
  }

  QStringList Environment() const {
    return QProcess::systemEnvironment() << "HOME=" + folder.path();
  }

  QStringList Lines() const { return QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts); }

  QTemporaryDir folder;
  QString input;  ///< The file that standard input is read from; empty for none.
  QByteArray output;
  QByteArray errors;
};
