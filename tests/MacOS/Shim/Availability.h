#pragma once

#define API_AVAILABLE_macos(version) availability(macos, introduced = version)
#define API_AVAILABLE(system) __attribute__((API_AVAILABLE_##system))
