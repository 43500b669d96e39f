// The rules on Windows path text that core code needs: absolute paths, names made from printers.
#pragma once

#include <string>
#include <string_view>

#include "ports/text_codec.h"

// Absolute means a drive letter with its root ("C:\", "C:/") or a UNC share ("\\server\share").
// "C:folder" (relative to the drive's current folder), "\folder" (relative to the current drive)
// and everything else are relative.
bool IsAbsoluteWindowsPath(std::string_view path);

// A printer's name as the part of a file name or kernel-object name that carries it (the log
// file, the log's mutex, the last-document file). The spooler accepts names those cannot hold: a
// connection is "\\server\queue". Control characters (below 32) and \ / : * ? " < > | become
// "_"; every other character stays, so an ordinary name maps to itself.
std::u16string PrinterNameForFiles(std::u16string_view printerName);
// The same name in 8-bit text for an 8-bit file path: a character the ANSI code page cannot
// carry (narrowed to "?") becomes "_" as well.
std::string PrinterNameForFiles(std::u16string_view printerName, TextCodec& text);
