#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "engine/ModelCollection.h"
#include "engine/UserModel.h"

namespace quorvex {

// What a file of user-defined models holds.
struct UserModelFile {
  std::string Version;
  int IndependentVariables = 0;
  std::vector<UserModelDefinition> Models;  // those that could be read, compilable or not
  std::string Message;                      // why the rest could not; empty where nothing was wrong
};

// Reads a file of user-defined models, their texts in the form of `locale`.
UserModelFile ReadUserModels(const std::string& fileName, const LocaleText& locale);

// The same from the bytes of the file that is called `fileName`.
UserModelFile ParseUserModels(std::string_view bytes, const std::string& fileName, const LocaleText& locale);

// Writes the user-defined ones among `models`, which have `numIV` independent variables. Returns 0 or the file error's
// number.
int WriteUserModels(const std::string& fileName, std::size_t numIV, const ModelCollection& models,
                    const LocaleText& locale);

}  // namespace quorvex
