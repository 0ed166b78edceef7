#pragma once

#include "Text/ConversionPayload.h"

namespace pastewise {

using text::ConversionPayload;

} // namespace pastewise
