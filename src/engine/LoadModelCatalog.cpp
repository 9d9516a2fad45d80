#include "engine/LoadModelCatalog.h"

#include "engine/UserModel.h"
#include "equation/Catalogue.h"

namespace quorvex {

void LoadModelCatalog(ModelCollection& models, int independentVariables, const LocaleText& locale) {
  for (const CatalogueModel& row : Catalogue(independentVariables)) {
    if (models.Has(row.ID)) continue;  // loaded before
    std::unique_ptr<ModelClass> model = NewModelFor(static_cast<std::size_t>(independentVariables), locale);
    model->SetBuiltIn(row);
    models.Add(row.ID, std::move(model));
  }
}

}  // namespace quorvex
