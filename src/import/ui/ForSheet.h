#pragma once

namespace quorvex {

// Whose sheet gets the data: that of a project, or a new one, which the dialog may still give other columns. Of a new
// one somebody has chosen the kind, or it is proposed by the columns of the source.
enum class ForSheet { InUse, NewOfKind, New };

}  // namespace quorvex
