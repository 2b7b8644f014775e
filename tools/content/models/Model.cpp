// The list of all models, and the search by name.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/models/Model.h"

#include <algorithm>

#include "content/models/Models.h"

namespace sivray::content {
namespace {

const std::vector<Model>& allModels() {
  static const std::vector<Model> models{clapModel(),   esnareModel(),  fmModel(),     glitchModel(), headModel(),
                                         impactModel(), kickModel(),    metalModel(),  modalModel(),  plateModel(),
                                         pluckModel(),  scratchModel(), shakerModel(), snareModel(),  stabModel(),
                                         sweepModel(),  voiceModel(),   zapModel()};
  return models;
}

}  // namespace

const Model* findModel(std::string_view name) {
  const auto& models = allModels();
  const auto found = std::find_if(models.begin(), models.end(), [&](const Model& model) { return model.name == name; });
  return found == models.end() ? nullptr : &*found;
}

std::string modelNames() {
  std::string names;
  for (const Model& model : allModels()) {
    names += (names.empty() ? "" : ", ") + model.name;
  }
  return names;
}

}  // namespace sivray::content
