#pragma once

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/NumberText.h"
#include "engine/ModelClass.h"

namespace quorvex {

// Models in the order they were added, each under a key that is unique without regard to case.
class ModelCollection {
 public:
  // Adds `model` under `key`; null, and nothing changes, where the key is taken.
  ModelClass* Add(const std::string& key, std::unique_ptr<ModelClass> model) {
    if (!keys_.insert(ToLower(key)).second) return nullptr;
    models_.push_back(std::move(model));
    return models_.back().get();
  }
  bool Has(const std::string& key) const { return keys_.contains(ToLower(key)); }
  void Remove(const std::string& key) {
    if (keys_.erase(ToLower(key)) == 0) return;
    std::erase_if(models_, [&](const auto& model) { return EqualNoCase(model->id, key); });
  }
  // Puts `model` in the place of the one under `key`, from now on under its own ID; null, and nothing changes, where
  // that is the key of another one or there is none under `key`.
  ModelClass* Replace(const std::string& key, std::unique_ptr<ModelClass> model) {
    const auto place =
        std::find_if(models_.begin(), models_.end(), [&](const auto& m) { return EqualNoCase(m->id, key); });
    if (place == models_.end() || (!EqualNoCase(model->id, key) && Has(model->id))) return nullptr;
    keys_.erase(ToLower(key));
    keys_.insert(ToLower(model->id));
    *place = std::move(model);
    return place->get();
  }
  ModelClass* Find(const std::string& key) const {
    const auto it =
        std::find_if(models_.begin(), models_.end(), [&](const auto& model) { return EqualNoCase(model->id, key); });
    return it == models_.end() ? nullptr : it->get();
  }

  auto begin() const { return models_.begin(); }
  auto end() const { return models_.end(); }
  std::size_t size() const { return models_.size(); }

 private:
  std::vector<std::unique_ptr<ModelClass>> models_;
  std::set<std::string> keys_;
};

}  // namespace quorvex
