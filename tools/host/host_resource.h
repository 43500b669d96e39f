// Resource ids of kivhost.
#pragma once

// Common controls 6, as an application's manifest asks for them. Not id 1, which the loader
// would make the process's own: kivhost activates it itself unless told to run with version 5.
#define IDR_HOST_COMCTL6_MANIFEST 101
