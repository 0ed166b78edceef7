#pragma once

#include "Foundation/ObservableObject.h"

namespace pastewise {

/// An observable object to bind a view to that has no state of its own.
class ContentViewModel final : public foundation::ObservableObject {};

} // namespace pastewise
