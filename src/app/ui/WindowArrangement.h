#pragma once

class QMdiArea;

namespace quorvex {

// What the Window menu does beside what QMdiArea does itself.

// Closes the windows one by one, each of which asks to save, up to one that stays open. False where there is such.
bool CloseAllForms(QMdiArea& area);

// Minimised windows keep out of the way of the others.

void TileHorizontally(QMdiArea& area);  // one above the other, each as wide as the area
void TileVertically(QMdiArea& area);    // side by side, each as high as the area
void ArrangeIcons(QMdiArea& area);      // the minimised ones in rows from the bottom left

}  // namespace quorvex
