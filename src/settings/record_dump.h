// Text description of a settings record, one "field = value" line per field.
#pragma once

#include <string>

#include "settings/oemdev.h"

// Every header, payload and tail field in record order. Enumerated settings show their symbol
// and number ("cutMode = PRN_PROP_NO_CUT (0x80)"), text fields are quoted and bounded by their
// width, command buffers are shown as hex bytes up to their stated length (bounded by the field).
std::string DescribeOemDev(const OEMDEV& rec);
