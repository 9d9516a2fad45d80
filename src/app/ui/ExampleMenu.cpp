#include "app/ui/ExampleMenu.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/ui/NumberedEntry.h"
#include "files/ProjectFile.h"

namespace quorvex {

ExampleMenu::ExampleMenu(const QString& title, QMenu* parent) : QMenu(title, parent) {
  setObjectName("examples");
  parent->addMenu(this);
  const QDir folder(":/examples");
  for (int number = 0; const QString& file : folder.entryList()) {
    QAction* action = addAction(NumberedEntry(++number, QFileInfo(file).completeBaseName()));
    connect(action, &QAction::triggered, this, [this, example = folder.filePath(file)] { emit Chosen(example); });
  }
}

Result<Project> ReadExample(const QString& example, const LocaleText& locale) {
  QFile file(example);
  const std::string name = "Untitled " + QFileInfo(example).completeBaseName().toStdString();
  const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  Result<Project> project = ParseProject(text.toStdString(), name, locale);
  if (project) project->FileName = name;
  return project;
}

}  // namespace quorvex
