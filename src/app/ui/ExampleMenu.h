#pragma once

#include <QMenu>

#include "core/Result.h"
#include "project/Project.h"

namespace quorvex {

// The projects that come with the program.
class ExampleMenu : public QMenu {
  Q_OBJECT

 public:
  ExampleMenu(const QString& title, QMenu* parent);

 signals:
  void Chosen(const QString& example);
};

// An example is a project without a file, so that saving it never writes over the example. Fails with the sentence for
// the user.
Result<Project> ReadExample(const QString& example, const LocaleText& locale);

}  // namespace quorvex
