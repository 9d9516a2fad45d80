#pragma once

#include <vector>

#include "engine/UserModel.h"
#include "files/RecordIo.h"

namespace quorvex {

// A model has at most these lines: its own, and F1 to F9. A file has them all, the last ones mostly empty.
std::vector<std::string> FunctionLines(const ModelClass& model);
// Those without the empty ones at the end.
std::vector<std::string> UsedLines(std::vector<std::string> lines);

// A user-defined model as project files and model files hold it. A project has the description as it is; a model file
// has it without the blanks around it, and no field for an empty one.
enum class ModelHome { Project, ModelFile };
void WriteUserModel(RecordWriter& io, const ModelClass& model, ModelHome home);

// Reads such a record. Without derivative texts in the file each is "Numerical".
UserModelDefinition ReadUserModel(RecordReader& io);

}  // namespace quorvex
