#pragma once

namespace pastewise {

/// The name under which an engine of conversions would stand beside ClipboardManager. Converting is
/// the business of the Text folder; this class holds nothing and does nothing.
class ConverterEngine {};

} // namespace pastewise
