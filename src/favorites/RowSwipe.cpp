// SPDX-License-Identifier: MIT
#include "favorites/RowSwipe.h"

#include "themes/WindowLayout.h"

#include <algorithm>

double RowSwipe::deleteDistance(double rowWidth, double pixelsPerMillimetre)
{
    // On a phone the row is about 60 mm wide and two thirds of it come first;
    // on a desktop a share of the width would ask for a sweep across the desk.
    return std::min(rowWidth * 2 / 3, WindowLayout::pixels(deleteMillimetres, pixelsPerMillimetre));
}

RowSwipe::Outcome RowSwipe::settle(double travel, double rowWidth, double buttonWidth,
                                   double pixelsPerMillimetre)
{
    // How fast the finger moved does not count: a quick flick that ends
    // short of the delete distance only opens the row, so nothing goes by
    // accident.
    if (travel >= deleteDistance(rowWidth, pixelsPerMillimetre))
        return Outcome::Delete;
    if (travel >= buttonWidth / 2)
        return Outcome::Open;
    return Outcome::Closed;
}
