#pragma once

#include <cstdint>

namespace pastewise {

/// How far the recording of a shortcut is.
enum class RecordingState : std::uint8_t { ready, waiting, recording, completed };

} // namespace pastewise
