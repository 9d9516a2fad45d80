#include "engine/LoadModelCatalog.h"

#include "engine/UserModel.h"
#include "equation/Catalogue.h"

namespace quorvex {

void LoadModelCatalog(ModelCollection& models, int independentVariables, const LocaleText& locale) {
  for (const CatalogueModel& row : Catalogue(independentVariables)) {
    std::unique_ptr<ModelClass> model = NewModelFor(static_cast<std::size_t>(independentVariables), locale);
    model->SetID(row.ID, {LocalizeExpression(row.Definition, locale)});
    model->Description = row.Description;
    model->SolveType = 1;
    model->Group = row.Group;
    model->UserType = false;
    models.Add(row.ID, std::move(model));
  }
}

}  // namespace quorvex
