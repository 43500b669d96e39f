// A test and demo part, not a renderer: stands in for the driver's rendering module under Wine.
//
// It implements the four exports of actions/uni_exports.h to that contract, so the plug-in's
// preview buttons and the bridge tests meet a real module, and answers each with a byte stream
// that shows exactly which arguments arrived. No printer understands it.
//
// The stream, all numbers little-endian:
//   "KIVUNI1"                  7 ASCII bytes
//   export id                  1 byte: 1 LogoNVRAM, 2 LogoFILE, 3 CouponFILE, 4 WatermarkFILE
//   the arguments, in the order of the export's signature (the output pointer excluded):
//     a text                   4-byte length, then that many bytes as passed (no terminator)
//     a 32-bit number          4 bytes
//     an 8-bit number          1 byte
//   for the three file exports, the image named by the path, one bit per pixel:
//     width, height            4 bytes each
//     rows                     `height` rows from the top, each (width + 7) / 8 bytes; the
//                              leftmost pixel in the high bit, unused low bits 0; a pixel is 1
//                              (dark) when its alpha is at least 128 and R + G + B < 384
// An image file that GDI+ cannot decode, a text longer than 1 MiB or a stream that would not
// fit a 32-bit count gives 0, the failure answer.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "actions/uni_exports.h"
#include "win/windows_headers_win.h"

// The GDI+ flat functions an image decode needs; the C++ wrapper header is not needed for them.
extern "C" {
struct StandInGdiplusStartupInput {
    UINT32 GdiplusVersion;
    void* DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;
};
struct StandInGpRect {
    INT X, Y, Width, Height;
};
struct StandInBitmapData {
    UINT Width, Height;
    INT Stride;
    INT PixelFormat;
    void* Scan0;
    UINT_PTR Reserved;
};
using GpStatus = int;
using GpBitmap = void;
GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const StandInGdiplusStartupInput* input,
                               void* output);
void WINAPI GdiplusShutdown(ULONG_PTR token);
GpStatus WINAPI GdipCreateBitmapFromFile(const WCHAR* file, GpBitmap** bitmap);
GpStatus WINAPI GdipGetImageWidth(GpBitmap* image, UINT* width);
GpStatus WINAPI GdipGetImageHeight(GpBitmap* image, UINT* height);
GpStatus WINAPI GdipBitmapLockBits(GpBitmap* bitmap, const StandInGpRect* rect, UINT flags,
                                   INT format, StandInBitmapData* data);
GpStatus WINAPI GdipBitmapUnlockBits(GpBitmap* bitmap, StandInBitmapData* data);
GpStatus WINAPI GdipDisposeImage(GpBitmap* image);
}

namespace {

constexpr GpStatus kGdipOk = 0;
constexpr UINT kImageLockModeRead = 1;
constexpr INT kPixelFormat32bppARGB = 0x0026200A;
constexpr uint64_t kMaxText = 1u << 20;
constexpr uint64_t kMaxStream = INT32_MAX;

enum ExportId : uint8_t { kLogoNvram = 1, kLogoFile = 2, kCouponFile = 3, kWatermarkFile = 4 };

// The stream being built; each Put appends one argument in the stream's form, false for a text
// that the stream cannot hold.
class Stream {
  public:
    explicit Stream(ExportId id) : bytes_{'K', 'I', 'V', 'U', 'N', 'I', '1', id} {}
    bool Put(uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes_.push_back(static_cast<uint8_t>(value >> shift));
        return true;
    }
    bool Put(uint8_t value) {
        bytes_.push_back(value);
        return true;
    }
    bool Put(KivUniText text) {
        if (text.length > kMaxText || (text.text == nullptr && text.length != 0))
            return false;
        Put(static_cast<uint32_t>(text.length));
        bytes_.insert(bytes_.end(), text.text, text.text + text.length);
        return true;
    }
    const std::vector<uint8_t>& Bytes() const { return bytes_; }

  private:
    std::vector<uint8_t> bytes_;
};

// The ANSI path as the plug-in passes it, widened for GDI+.
std::wstring WidePath(KivUniText path) {
    const int size = static_cast<int>(path.length);
    const int count = MultiByteToWideChar(CP_ACP, 0, path.text, size, nullptr, 0);
    std::wstring wide(static_cast<size_t>(count), L'\0');
    MultiByteToWideChar(CP_ACP, 0, path.text, size, wide.data(), count);
    return wide;
}

bool Dark(const uint8_t* bgra) {
    return bgra[3] >= 128 && bgra[0] + bgra[1] + bgra[2] < 384;
}

// Appends width, height and the rows of bits of the decoded image; false when it cannot.
bool AppendImageBits(const std::wstring& path, Stream& stream) {
    ULONG_PTR token = 0;
    const StandInGdiplusStartupInput input = {1, nullptr, FALSE, FALSE};
    if (path.empty() || GdiplusStartup(&token, &input, nullptr) != kGdipOk)
        return false;
    bool ok = false;
    GpBitmap* bitmap = nullptr;
    UINT width = 0, height = 0;
    if (GdipCreateBitmapFromFile(path.c_str(), &bitmap) == kGdipOk && bitmap != nullptr &&
        GdipGetImageWidth(bitmap, &width) == kGdipOk &&
        GdipGetImageHeight(bitmap, &height) == kGdipOk && width > 0 && height > 0 &&
        stream.Bytes().size() + 8 + (uint64_t{width} + 7) / 8 * height <= kMaxStream) {
        const StandInGpRect rect = {0, 0, static_cast<INT>(width), static_cast<INT>(height)};
        StandInBitmapData data = {};
        if (GdipBitmapLockBits(bitmap, &rect, kImageLockModeRead, kPixelFormat32bppARGB, &data) ==
            kGdipOk) {
            stream.Put(uint32_t{width});
            stream.Put(uint32_t{height});
            for (UINT y = 0; y < height; ++y) {
                const auto* row = static_cast<const uint8_t*>(data.Scan0) +
                                  static_cast<ptrdiff_t>(y) * data.Stride;
                for (UINT x = 0; x < width; x += 8) {
                    uint8_t bits = 0;
                    for (UINT bit = 0; bit < 8 && x + bit < width; ++bit)
                        bits |= Dark(row + 4 * (x + bit)) ? 0x80 >> bit : 0;
                    stream.Put(bits);
                }
            }
            GdipBitmapUnlockBits(bitmap, &data);
            ok = true;
        }
    }
    if (bitmap != nullptr)
        GdipDisposeImage(bitmap);
    GdiplusShutdown(token);
    return ok;
}

// The stream of the arguments, then of the image at `imagePath` unless it is null: its size,
// and the stream itself into `out` when the caller gave room. Nothing thrown here may leave the
// module: the plug-in is not the only possible caller.
template <typename... Args>
int32_t Answer(uint8_t* out, ExportId id, const KivUniText* imagePath, Args... args) noexcept {
    try {
        Stream stream(id);
        if (!(stream.Put(args) && ...) ||
            (imagePath != nullptr && !AppendImageBits(WidePath(*imagePath), stream)) ||
            stream.Bytes().size() > kMaxStream)
            return 0;
        if (out != nullptr)
            std::memcpy(out, stream.Bytes().data(), stream.Bytes().size());
        return static_cast<int32_t>(stream.Bytes().size());
    } catch (...) {
        return 0;
    }
}

}  // namespace

extern "C" {

int32_t GetBufferPrintLogoNVRAM(KivUniText printer, uint32_t logoNumber, uint8_t position,
                                uint8_t* out) {
    return Answer(out, kLogoNvram, nullptr, printer, logoNumber, position);
}

int32_t GetBufferPrintLogoFILE(KivUniText printer, KivUniText path, uint32_t paperWidthDots,
                               uint32_t modelNumber, uint8_t position, uint8_t drawType,
                               uint8_t* out) {
    return Answer(out, kLogoFile, &path, printer, path, paperWidthDots, modelNumber, position,
                  drawType);
}

int32_t GetBufferPrintCouponFILE(KivUniText printer, KivUniText path, uint32_t paperWidthDots,
                                 uint32_t modelNumber, uint8_t position, uint8_t drawType,
                                 uint8_t* out) {
    return Answer(out, kCouponFile, &path, printer, path, paperWidthDots, modelNumber, position,
                  drawType);
}

int32_t GetBufferPrintWatermarkFILE(KivUniText printer, KivUniText path, uint32_t paperWidthDots,
                                    uint32_t paperLengthDots, uint32_t modelNumber, uint8_t layer,
                                    uint8_t fit, uint8_t place, uint32_t brightness, uint8_t* out) {
    return Answer(out, kWatermarkFile, &path, printer, path, paperWidthDots, paperLengthDots,
                  modelNumber, layer, fit, place, brightness);
}

}  // extern "C"

// The exports keep the contract's signatures exactly; a drift fails here, not in a caller.
static_assert(std::is_same_v<decltype(&GetBufferPrintLogoNVRAM), KivGetBufferPrintLogoNVRAM>);
static_assert(std::is_same_v<decltype(&GetBufferPrintLogoFILE), KivGetBufferPrintImageFILE>);
static_assert(std::is_same_v<decltype(&GetBufferPrintCouponFILE), KivGetBufferPrintImageFILE>);
static_assert(
    std::is_same_v<decltype(&GetBufferPrintWatermarkFILE), KivGetBufferPrintWatermarkFILE>);
