// kivsettings' spooler side: show, export and import on a printer through the Windows spooler.
#pragma once

#include <string>
#include <string_view>

#include "kivsettings.h"

std::string Utf8FromWide(std::wstring_view text);

// Runs show, export or import; prints what it did or one line on what failed. The exit code.
int RunSpoolerCommand(const KivSettingsCommand& command);
