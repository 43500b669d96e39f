// Captures a window into a PNG file through GDI and the GDI+ flat API.
#include "png_capture.h"

#include <vector>

#include "wine_printer.h"  // Win32ErrorText

namespace {

// The few GDI+ flat functions needed; mingw-w64's C++ GDI+ headers clash with NOMINMAX.
struct GpImage;
using GpStatus = int;
struct GdiplusStartupInput {
    UINT32 GdiplusVersion;
    void* DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;
};

}  // namespace

extern "C" {
GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, void* output);
void WINAPI GdiplusShutdown(ULONG_PTR token);
GpStatus WINAPI GdipCreateBitmapFromHBITMAP(HBITMAP bitmap, HPALETTE palette, GpImage** image);
GpStatus WINAPI GdipSaveImageToFile(GpImage* image, const WCHAR* file, const CLSID* encoder,
                                    const void* parameters);
GpStatus WINAPI GdipDisposeImage(GpImage* image);
GpStatus WINAPI GdipGetImageEncodersSize(UINT* count, UINT* size);
GpStatus WINAPI GdipGetImageEncoders(UINT count, UINT size, void* encoders);
}

namespace {

// ImageCodecInfo, as GdipGetImageEncoders fills it.
struct CodecInfo {
    CLSID Clsid;
    GUID FormatID;
    const WCHAR* CodecName;
    const WCHAR* DllName;
    const WCHAR* FormatDescription;
    const WCHAR* FilenameExtension;
    const WCHAR* MimeType;
    DWORD Flags;
    DWORD Version;
    DWORD SigCount;
    DWORD SigSize;
    const BYTE* SigPattern;
    const BYTE* SigMask;
};

// The PNG encoder's class id, looked up by MIME type as GDI+ documents it.
bool FindPngEncoder(CLSID& clsid) {
    UINT count = 0, size = 0;
    if (GdipGetImageEncodersSize(&count, &size) != 0 || count == 0 ||
        size < count * sizeof(CodecInfo))
        return false;
    // The strings follow the array in the same block; a vector of CodecInfo keeps it aligned.
    std::vector<CodecInfo> codecs((size + sizeof(CodecInfo) - 1) / sizeof(CodecInfo));
    if (GdipGetImageEncoders(count, size, codecs.data()) != 0)
        return false;
    for (UINT i = 0; i < count; ++i) {
        if (codecs[i].MimeType != nullptr && std::wstring(codecs[i].MimeType) == L"image/png") {
            clsid = codecs[i].Clsid;
            return true;
        }
    }
    return false;
}

// A 24-bit top-down section of `area` of the window's client area (of the screen when `window`
// is null) as it is drawn now.
HBITMAP CopyPixels(HWND window, const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0)
        return nullptr;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HDC windowDC = GetDC(window);
    if (windowDC == nullptr)
        return nullptr;
    HBITMAP section = CreateDIBSection(windowDC, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC memory = CreateCompatibleDC(windowDC);
    bool copied = false;
    if (section != nullptr && memory != nullptr) {
        HGDIOBJ old = SelectObject(memory, section);
        copied =
            BitBlt(memory, 0, 0, width, height, windowDC, area.left, area.top, SRCCOPY) != FALSE;
        SelectObject(memory, old);
    }
    if (memory != nullptr)
        DeleteDC(memory);
    ReleaseDC(window, windowDC);
    if (!copied && section != nullptr) {
        DeleteObject(section);
        section = nullptr;
    }
    return section;
}

bool SavePixelsPng(HWND window, const RECT& area, const std::wstring& path, int& width, int& height,
                   std::wstring& error) {
    width = area.right - area.left;
    height = area.bottom - area.top;
    HBITMAP pixels = CopyPixels(window, area);
    if (pixels == nullptr) {
        error = L"could not copy the window: " + Win32ErrorText(GetLastError());
        return false;
    }
    ULONG_PTR token = 0;
    GdiplusStartupInput input = {1, nullptr, FALSE, FALSE};
    GpStatus status = GdiplusStartup(&token, &input, nullptr);
    if (status != 0) {
        DeleteObject(pixels);
        error = L"GdiplusStartup failed with status " + std::to_wstring(status);
        return false;
    }
    CLSID png;
    if (!FindPngEncoder(png)) {
        GdiplusShutdown(token);
        DeleteObject(pixels);
        error = L"GDI+ has no PNG encoder";
        return false;
    }
    GpImage* image = nullptr;
    status = GdipCreateBitmapFromHBITMAP(pixels, nullptr, &image);
    if (status == 0) {
        status = GdipSaveImageToFile(image, path.c_str(), &png, nullptr);
        GdipDisposeImage(image);
        if (status != 0)
            error =
                L"GdipSaveImageToFile(" + path + L") failed with status " + std::to_wstring(status);
    } else {
        error = L"GdipCreateBitmapFromHBITMAP failed with status " + std::to_wstring(status);
    }
    GdiplusShutdown(token);
    DeleteObject(pixels);
    return status == 0;
}

}  // namespace

// The frame is left out: without a window manager (Xvfb) Wine leaves the caption to one and
// draws none.
bool SaveWindowPng(HWND window, const std::wstring& path, int& width, int& height,
                   std::wstring& error) {
    RECT client;
    if (!GetClientRect(window, &client)) {
        width = height = 0;
        error = L"could not copy the window: " + Win32ErrorText(GetLastError());
        return false;
    }
    return SavePixelsPng(window, client, path, width, height, error);
}

bool SaveScreenAreaPng(const RECT& area, const std::wstring& path, int& width, int& height,
                       std::wstring& error) {
    return SavePixelsPng(nullptr, area, path, width, height, error);
}

bool MakeDirectories(const std::wstring& dir, std::wstring& error) {
    if (dir.empty()) {
        error = L"empty folder name";
        return false;
    }
    // Every prefix that ends before a separator, then the whole path.
    for (size_t i = 1; i <= dir.size(); ++i) {
        if (i < dir.size() && dir[i] != L'\\' && dir[i] != L'/')
            continue;
        const std::wstring prefix = dir.substr(0, i);
        if (prefix.empty() || prefix.back() == L':')
            continue;
        const DWORD attributes = GetFileAttributesW(prefix.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES) {
            if (attributes & FILE_ATTRIBUTE_DIRECTORY)
                continue;
            error = prefix + L" exists and is not a folder";
            return false;
        }
        if (!CreateDirectoryW(prefix.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
            error = prefix + L": " + Win32ErrorText(GetLastError());
            return false;
        }
    }
    return true;
}
