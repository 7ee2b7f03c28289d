// The report viewer's control as a view of pages, and a chart's.
#pragma once

#include <memory>

#include "ui/binder.h"

namespace veldona {

[[nodiscard]] std::unique_ptr<Binder> bindReport(FormWindow& window, Control& control, QWidget& widget);

} // namespace veldona
