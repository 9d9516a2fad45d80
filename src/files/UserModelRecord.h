#pragma once

#include "core/LocaleText.h"
#include "engine/UserModel.h"
#include "files/FieldReader.h"
#include "files/FieldWriter.h"

namespace quorvex {

// A model has at most these lines: its own, and F1 to F9.
inline constexpr int kFunctionLines = 10;

// The ten lines of a model, as fields.
void WriteFunctionList(FieldWriter& out, const ModelClass& model, const LocaleText& locale);

// A user-defined model as project files and model files hold it. A project has the description as it is; a model file
// has it without the blanks around it, and no field for an empty one.
void WriteUserModel(FieldWriter& out, const ModelClass& model, bool inProject, const LocaleText& locale);

// Reads such a record, of which the model line has been taken already. Without derivative texts in the file each is
// "Numerical".
UserModelDefinition ReadUserModel(FieldReader& in, const std::string& modelLine, bool hasDerivatives,
                                  const LocaleText& locale);

}  // namespace quorvex
