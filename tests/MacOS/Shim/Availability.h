#pragma once

#define __MAC_OS_X_VERSION_MAX_ALLOWED 150400

#define API_AVAILABLE_macos(version) availability(macos, introduced = version)
#define API_AVAILABLE(system) __attribute__((API_AVAILABLE_##system))
