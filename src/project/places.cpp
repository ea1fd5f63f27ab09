#include "project/places.h"

#include <QFile>
#include <filesystem>
#include <utility>

#include "panel/defaults.h"
#include "panel/project_codec.h"
#include "panel/replace_file.h"
#include "project/output.h"
#include "project/panel_at.h"

namespace {

const QString StandardPlace = QStringLiteral("-");
const QString ImagePrefix = QStringLiteral("image:");

[[noreturn]] void Fail(const QString& place, const QString& reason) {
  throw RunTimeFailure((place + ": " + reason).toStdString());
}

/// The file that a name leads to, be it there or not.
std::filesystem::path PathOf(const QString& file) {
  const std::filesystem::path path = QFile::encodeName(file).toStdString();
  return std::filesystem::weakly_canonical(std::filesystem::absolute(path));
}

/// All that a file or standard input holds, up to `most` bytes.
std::string BytesOf(const QString& file, qint64 most) {
  QFile source(file);
  const bool open = file == StandardPlace ? source.open(stdin, QIODevice::ReadOnly)
                                          : source.open(QIODevice::ReadOnly);
  if (!open) Fail(file, source.errorString());
  std::string bytes;
  // A pipe gives what it has, and ends when nothing more comes.
  while (static_cast<qint64>(bytes.size()) < most) {
    const QByteArray part = source.read(most - static_cast<qint64>(bytes.size()));
    if (part.isEmpty()) break;
    bytes += part.toStdString();
  }
  if (source.error() != QFileDevice::NoError) Fail(file, source.errorString());
  return bytes;
}

Project OfMemory(const QString& place, const PanelImageType& image) {
  try {
    return UploadedOver(NewProject(), image, true);
  } catch (const RunTimeFailure& failure) {
    Fail(place, QString::fromUtf8(failure.what()));
  }
}

ProjectRead LoadStandardInput() {
  ProjectRead read{NewProject(), false, {}};
  try {
    read.Whole = DecodeProject(BytesOf(StandardPlace, LargestProjectFile), read.Content);
  } catch (const RunTimeFailure& failure) {
    Fail(QStringLiteral("standard input"), QString::fromUtf8(failure.what()));
  }
  return read;
}

}  // namespace

bool IsPanelMemory(const QString& place) {
  return place.startsWith(ImagePrefix) || ParsePanelAddress(place);
}

ProjectRead LoadProject(const QString& place) {
  if (const auto address = ParsePanelAddress(place)) {
    return {OfMemory(place, PanelAt(*address).ReadMemory()), true, {}};
  }
  if (place.startsWith(ImagePrefix)) {
    return {OfMemory(place, LoadMemory(place.mid(ImagePrefix.size()))), true, {}};
  }
  return place == StandardPlace ? LoadStandardInput() : ReadProject(place, NewProject());
}

Project LoadWhole(const QString& place) {
  ProjectRead read = LoadProject(place);
  if (!read.Whole) Fail(place, QStringLiteral("the project ends early, or is empty"));
  return std::move(read.Content);
}

PanelImageType LoadMemory(const QString& file) {
  const std::string bytes = BytesOf(file, PanelImageSize + 1);
  if (bytes.size() != PanelImageSize) {
    Fail(file, QStringLiteral("a panel's memory has 40,960 bytes"));
  }
  return ImageOf(bytes);
}

void StoreBytes(const QString& place, const std::string& bytes) {
  if (place == StandardPlace) {
    Print(QByteArray::fromStdString(bytes));
  } else {
    ReplaceFile(place, bytes);
  }
}

void StoreProject(const QString& place, const Project& project) {
  if (place == StandardPlace) {
    Print(QByteArray::fromStdString(EncodeProject(project)));
  } else {
    WriteProject(place, project);
  }
}

void RefuseOutput(const QString& output, const QString& other) {
  if (IsPanelMemory(output)) Fail(output, QStringLiteral("is no file to write to"));
  const auto isFile = [](const QString& place) {
    return !place.isEmpty() && place != StandardPlace && !ParsePanelAddress(place);
  };
  const QString file = other.startsWith(ImagePrefix) ? other.mid(ImagePrefix.size()) : other;
  if (!isFile(output) || !isFile(file) || PathOf(output) != PathOf(file)) return;
  throw RunTimeFailure((output + ": is asked for twice; it would be overwritten").toStdString());
}
