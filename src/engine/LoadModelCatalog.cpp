#include "engine/LoadModelCatalog.h"

#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "equation/Catalogue.h"

namespace quorvex {

void LoadModelCatalog(ModelCollection& models, int independentVariables, const LocaleText& locale) {
  for (const CatalogueModel& row : Catalogue(independentVariables)) {
    if (models.Has(row.ID)) continue;  // loaded before: compiling it again would be for nothing
    std::unique_ptr<ModelClass> model;
    if (independentVariables == 1)
      model = std::make_unique<EqClass>(locale);
    else
      model = std::make_unique<MvClass>(locale);
    model->SetID(row.ID, {LocalizeExpression(row.Definition, locale)});
    model->Description = row.Description;
    model->SolveType = 1;
    model->Group = row.Group;
    model->UserType = false;
    models.Add(row.ID, std::move(model));
  }
}

}  // namespace quorvex
