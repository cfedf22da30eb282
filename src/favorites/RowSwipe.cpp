// SPDX-License-Identifier: MIT
#include "favorites/RowSwipe.h"

RowSwipe::Outcome RowSwipe::settle(double travel, double rowWidth, double buttonWidth)
{
    // How fast the finger moved does not count: a quick flick that ends
    // short of two thirds only opens the row, so nothing goes by accident.
    if (travel >= rowWidth * 2 / 3)
        return Outcome::Delete;
    if (travel >= buttonWidth / 2)
        return Outcome::Open;
    return Outcome::Closed;
}
