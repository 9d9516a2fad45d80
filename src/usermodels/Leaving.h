#pragma once

namespace quorvex {

// What the user leaves with something in it that is not committed: one coefficient for another, or the whole dialog.
enum class Leaving { Coefficient, Dialog };

}  // namespace quorvex
