#include "project/places.h"

#include <QFile>
#include <filesystem>
#include <utility>

#include "panel/defaults.h"
#include "panel/project_codec.h"
#include "panel/replace_file.h"
#include "panel/setting.h"
#include "project/output.h"
#include "project/panel_at.h"

namespace {

const QString ImagePrefix = QStringLiteral("image:");

[[noreturn]] void Fail(const QString& place, const QString& reason) {
  throw RunTimeFailure((place + ": " + reason).toStdString());
}

/// The file that a name leads to, be it there or not.
std::filesystem::path PathOf(const QString& file) {
  const std::filesystem::path path =
      std::filesystem::absolute(QFile::encodeName(file).toStdString());
  std::error_code leadsToItself;
  const std::filesystem::path target = std::filesystem::weakly_canonical(path, leadsToItself);
  return leadsToItself ? path : target;
}

/// The project of a panel's memory, over another that has what a panel does not keep.
Project OfMemory(const QString& place, const Project& over) {
  const PanelImageType image = LoadMemory(place);
  try {
    return UploadedOver(over, image, true);
  } catch (const RunTimeFailure& failure) {
    Fail(place, QString::fromUtf8(failure.what()));
  }
}

/// What bytes hold; `told` is where they come from.
ProjectRead ReadBytes(const QString& told, const std::string& bytes) {
  ProjectRead read{NewProject(), false, {}};
  try {
    read.Whole = DecodeProject(bytes, read.Content);
  } catch (const RunTimeFailure& failure) {
    Fail(told, QString::fromUtf8(failure.what()));
  }
  return read;
}

Project Whole(const QString& told, ProjectRead read) {
  if (!read.Whole) Fail(told, QStringLiteral("the project ends early, or is empty"));
  return std::move(read.Content);
}

}  // namespace

std::string LoadBytes(const QString& file, qint64 most) {
  static bool standardInputIsRead = false;
  if (file == StandardPlace && std::exchange(standardInputIsRead, true)) {
    throw RunTimeFailure(StandardInputOnce);
  }
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

bool IsPanelMemory(const QString& place) {
  return place.startsWith(ImagePrefix) || ParsePanelAddress(place);
}

ProjectRead LoadProject(const QString& place) {
  if (IsPanelMemory(place)) return {OfMemory(place, NewProject()), true, {}};
  return place == StandardPlace
             ? ReadBytes(QStringLiteral("standard input"), LoadBytes(place, LargestProjectFile))
             : ReadProject(place, NewProject());
}

Project LoadContent(const QString& place) {
  const ProjectRead read = LoadProject(place);
  if (!read.Whole) {
    TellFailure(qUtf8Printable(
        place + ": the project ends early, or is empty; what it lacks is as in a new panel"));
  }
  return read.Content;
}

Project LoadWhole(const QString& place) {
  return Whole(place, LoadProject(place));
}

Project LoadSide(const QString& place, const Project& other) {
  if (place == StandardPlace) return LoadWhole(place);
  if (!IsPanelMemory(place)) return LoadProjectFile(place).Content;
  Project side = other;
  const Project memory = OfMemory(place, other);
  ForEachDifferent(AsPanelKeeps(other), memory, [&](const Setting& setting, bool spare) {
    if (!spare) TakeOver(side, memory, setting);
  });
  return side;
}

void RefuseAllButFile(const QString& place) {
  if (place == StandardPlace || IsPanelMemory(place)) {
    Fail(place, QStringLiteral("is not a project file"));
  }
}

ProjectFile LoadProjectFile(const QString& file) {
  RefuseAllButFile(file);
  const std::string bytes = LoadBytes(file, LargestProjectFile + 1);
  if (bytes.size() > LargestProjectFile) Fail(file, QStringLiteral("is not a project file"));
  Project project = Whole(file, ReadBytes(file, bytes));
  return {project, bytes.substr(EncodeProject(project).size())};
}

PanelImageType LoadMemory(const QString& place) {
  if (const auto address = ParsePanelAddress(place)) return PanelAt(*address).ReadMemory();
  const QString file = place.startsWith(ImagePrefix) ? place.mid(ImagePrefix.size()) : place;
  const std::string bytes = LoadBytes(file, PanelImageSize + 1);
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

void StoreProjectFile(const QString& file, const Project& project, const std::string& tail) {
  ReplaceFile(file, EncodeProject(project) + tail);
}

void RefuseOutput(const QString& output, const QString& other) {
  if (IsPanelMemory(output)) Fail(output, QStringLiteral("is not a file to write to"));
  const auto isFile = [](const QString& place) {
    return !place.isEmpty() && place != StandardPlace && !ParsePanelAddress(place);
  };
  const QString file = other.startsWith(ImagePrefix) ? other.mid(ImagePrefix.size()) : other;
  if (!isFile(output) || !isFile(file) || PathOf(output) != PathOf(file)) return;
  throw RunTimeFailure((output + ": is named twice; it would be overwritten").toStdString());
}
