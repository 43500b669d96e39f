// Captures a window, or an area of the screen, into a PNG file (the host's --screenshots).
#pragma once

#include <string>

#include "win/windows_headers_win.h"

// Captures the window's client area as it stands on the display and writes it as a PNG.
// False with a reason in `error`; `width` and `height` receive the picture's size.
bool SaveWindowPng(HWND window, const std::wstring& path, int& width, int& height,
                   std::wstring& error);

// The same for an area of the screen (several windows as they overlap).
bool SaveScreenAreaPng(const RECT& area, const std::wstring& path, int& width, int& height,
                       std::wstring& error);

// Creates `dir` and every missing parent. False with a reason in `error`.
bool MakeDirectories(const std::wstring& dir, std::wstring& error);
