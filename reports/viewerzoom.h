// The zoom of the report viewer: its list, and what the operator types.
//
// A text that is typed is applied by Enter or when the field is left; one that comes whole, as pasting does,
// at once.
#pragma once

#include "reports/viewer.h"

namespace veldona {

void FillZoomFactor(FrmCrNesne& f);
// Applies the list's choice, or else the typed number: above 10 and below 400, its decimals cut off. Anything
// else is ignored.
void SetZoomFactor(FrmCrNesne& f);
void bindZoom(FrmCrNesne& f);

} // namespace veldona
