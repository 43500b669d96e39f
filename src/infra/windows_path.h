// The one rule on Windows path text that core code needs: is a path absolute.
#pragma once

#include <string_view>

// Absolute means a drive letter with its root ("C:\", "C:/") or a UNC share ("\\server\share").
// "C:folder" (relative to the drive's current folder), "\folder" (relative to the current drive)
// and everything else are relative.
bool IsAbsoluteWindowsPath(std::string_view path);
