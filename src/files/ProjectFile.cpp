#include "files/ProjectFile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/Files.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/FileVersion.h"
#include "files/InterpolationRecord.h"
#include "files/ModelRecord.h"
#include "files/SheetRecord.h"
#include "files/UserModelRecord.h"

namespace quorvex {
namespace {

constexpr const char *kData = "DATA", *kUserModels = "USERDEFINED";
constexpr std::string_view kBeginHeader = "B_HEADER";

// What the header says behind the version, in texts that are searched for what is of interest.
struct Header {
  std::string Kind, Deviation, Columns;
};

template <typename Io, typename AnyHeader>
void ListHeader(Io& io, AnyHeader& header) {
  io(header.Kind);
  io(header.Deviation);
  io(header.Columns);
  io.Mark("E_HEADER");
}

Header HeaderOf(const DataSheet& sheet) {
  return {"    filetype=regression",
          std::string("    standarddeviation=") + (sheet.HasStandardDeviation ? "True" : "False"),
          "    columns=" + std::to_string(sheet.ColumnCount())};
}

// The empty project that a header announces; nothing where it announces none.
std::optional<Project> Announced(const Header& header, const LocaleText& locale) {
  const bool weighted = ContainsNoCase(header.Deviation, "true");
  const int variables = CountBehindEquals(header.Columns).value_or(0) - (weighted ? 2 : 1);
  if (variables < 1 || variables > kMostIndependentVariables) return std::nullopt;
  return NewProject(static_cast<std::size_t>(variables), weighted, locale);
}

void ListUserModels(RecordWriter& io, const Project& project) {
  for (const auto& model : project.Models)
    if (model->UserType) WriteUserModel(io, *model, ModelHome::Project);
}

// A model that does not compile, or has the ID of another, is left out.
void ListUserModels(RecordReader& io, Project& project) {
  while (io.GoesOn(kUserModels)) {
    const UserModelDefinition definition = ReadUserModel(io);
    if (!io.Good()) return;
    if (auto model = MakeUserModel(definition, project.Sheet.IndependentVariables, project.Locale))
      project.Models.Add(definition.id, std::move(model));
  }
}

void WriteSolved(RecordWriter& io, const Project& project) {
  for (const auto& model : project.Models)
    if (model->Solved) WriteSolvedModel(io, *model, project.Sheet.IndependentVariables);
  for (const InterpClass& curve : project.Interpolations)
    if (curve.Solved) WriteInterpolation(io, curve);
}

// In the place of the one of its ID.
void PutInterpolation(Project& project, InterpClass curve) {
  const auto same = std::ranges::find(project.Interpolations, curve.id, &InterpClass::id);
  if (same == project.Interpolations.end())
    project.Interpolations.push_back(std::move(curve));
  else
    *same = std::move(curve);
}

void ReadSolved(RecordReader& io, Project& project, SolvedModelReader& models) {
  while (io.GoesOn(kData)) {
    if (io.Begins(kSolvedModel))
      models.ReadSolvedModel(io);
    else if (io.Begins(kInterpolation))
      PutInterpolation(project, ReadInterpolation(io));
    else
      io.Fail();
  }
}

// Anything else behind the end is none of the project's.
void ReadBehindTheEnd(RecordReader& io, SolvedModelReader& models) {
  while (io.Good() && !io.AtEnd()) {
    if (io.Begins(kSweeps))
      models.ReadSweeps(io);
    else if (io.Begins(kSearchEnds))
      models.ReadSearchEnds(io);
    else if (io.Begins(kFoundBy))
      models.ReadFoundBy(io);
    else if (io.Begins(kDeviations))
      models.ReadDeviations(io);
    else if (io.Begins(kReports))
      models.ReadReports(io);
    else if (io.Begins(kBounds))
      models.ReadBounds(io);
    else if (io.Begins(kLosses))
      models.ReadLosses(io);
    else
      return;
  }
}

// From behind the header to the end of the data; `listSolved` lists what was solved.
template <typename Io, typename AnyProject, typename List>
void ListProject(Io& io, AnyProject& project, const List& listSolved) {
  Section(io, "COLHEADER", [&] {
    for (auto& header : project.Sheet.Headers) io(header);
  });
  Section(io, "SOLVESETUP", [&] {
    io(project.Limits.ResidualTolerance);
    io(project.Limits.MaxIterations);
    io(project.Limits.DivIterations);
  });
  Section(io, "FORMAT", [&] {
    for (auto& format : project.Sheet.Formats) ListFormat(io, format);
  });
  Section(io, "NOTES", [&] { io(Trimmed{project.Notes}); });
  Section(io, kData, [&] {
    ListCells(io, project.Sheet);
    Section(io, kUserModels, [&] { ListUserModels(io, project); });
    listSolved();
  });
}

// Why a file of a version that has no projects we read is refused.
std::string Refusal(std::string_view version, const std::string& fileName) {
  if (const int number = VersionNamed(version); number != 0)
    return "Quorvex version " + std::to_string(number / 10) + ".x files cannot be opened in the current version.";
  if (version.starts_with("Quorvex") && version.ends_with("Plot"))
    return "'" + fileName + "' is a Quorvex Plot file. Use the Open command under the Plot menu to open plots.";
  return "'" + fileName + "' is not compatible with Quorvex Version 9.0";
}

Failure Unreadable(const std::string& fileName) {
  return {"Error reading project '" + fileName + "'." + std::string(NL) +
          "The file is incompatible or appears corrupted."};
}

// All behind the version. Nothing where the file is not what it says.
std::optional<Project> ReadBehindVersion(RecordReader& io, const LocaleText& locale) {
  Header header;
  ListHeader(io, header);
  std::optional<Project> project = io.Good() ? Announced(header, locale) : std::nullopt;
  if (!project) return std::nullopt;
  SolvedModelReader models(*project);
  ListProject(io, *project, [&] { ReadSolved(io, *project, models); });
  ReadBehindTheEnd(io, models);
  if (!io.Good()) return std::nullopt;
  return project;
}

}  // namespace

Result<Project> ParseProject(std::string_view bytes, const std::string& fileName, const LocaleText& locale) {
  FieldReader in(DecodeText(bytes));
  while (in.Good() && in.Text() != kBeginHeader) continue;
  const std::string version(Trim(in.Text()));
  if (!in.Good()) return Unreadable(fileName);
  if (VersionNamed(version) < kOldestProject) return Failure{Refusal(version, fileName)};
  RecordReader io(in, VersionNamed(version), locale);
  std::optional<Project> project = ReadBehindVersion(io, locale);
  if (!project) return Unreadable(fileName);
  project->FileName = fileName;
  return std::move(*project);
}

Result<Project> ReadProject(const std::string& fileName, const LocaleText& locale) {
  WholeFile file;
  if (file.Read(fileName) != 0) return Unreadable(fileName);
  Result<Project> project = ParseProject(file.Text(), fileName, locale);
  if (project) project->HasFile = true;
  return project;
}

std::string ProjectText(const Project& project) {
  RecordWriter io(project.Locale);
  io.Mark(kBeginHeader);
  io("    " + std::string(kFileVersion));
  const Header header = HeaderOf(project.Sheet);
  ListHeader(io, header);
  ListProject(io, project, [&] { WriteSolved(io, project); });
  // Behind the end of the data, where older programs have stopped reading.
  WriteSweeps(io, project);
  WriteSearchEnds(io, project);
  WriteFoundBy(io, project);
  WriteDeviations(io, project);
  WriteReports(io, project);
  WriteBounds(io, project);
  WriteLosses(io, project);
  return io.Text();
}

int WriteProject(const Project& project, const std::string& fileName) {
  return SaveFile(fileName, ProjectText(project));
}

}  // namespace quorvex
