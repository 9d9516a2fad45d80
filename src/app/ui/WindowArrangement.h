#pragma once

class QMdiArea;

namespace quorvex {

// What the Window menu does beside what QMdiArea does itself. Minimised windows keep out of the way of the others.

void TileHorizontally(QMdiArea& area);  // one above the other, each as wide as the area
void TileVertically(QMdiArea& area);    // side by side, each as high as the area
void ArrangeIcons(QMdiArea& area);      // the minimised ones in rows from the bottom left

}  // namespace quorvex
