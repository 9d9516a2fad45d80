#include "engine/LoadModelCatalog.h"

#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "equation/Catalogue.h"

namespace quorvex {

void LoadModelCatalog(ModelCollection& models, int independentVariables, const LocaleText& locale) {
  for (const CatalogueModel& row : Catalogue(independentVariables)) {
    if (models.Has(row.ID)) continue;  // loaded before
    std::unique_ptr<ModelClass> model;
    if (independentVariables == 1)
      model = std::make_unique<EqClass>(locale);
    else
      model = std::make_unique<MvClass>(locale);
    model->SetBuiltIn(row);
    models.Add(row.ID, std::move(model));
  }
}

}  // namespace quorvex
