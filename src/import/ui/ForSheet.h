#pragma once

namespace quorvex {

// Whose sheet gets the data: one with data, or one without, which the dialog may still give other columns. Of a sheet
// without data somebody has chosen the kind, or it is proposed by the columns of the source.
enum class ForSheet { InUse, NewOfKind, New };

}  // namespace quorvex
