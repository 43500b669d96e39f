// OemUiState's constructor and destructor, where the capability object's type is complete.
#include "session/oem_ui_state.h"

#include "settings/ui_device_common.h"

OemUiState::OemUiState() = default;
OemUiState::~OemUiState() = default;
