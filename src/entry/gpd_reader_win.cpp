// The model data text of a printer: its GPD named by the spooler, read through the core GPD reader.
#include "entry/gpd_reader_win.h"

#include "win/text_win.h"

#include <algorithm>
#include <vector>

namespace {

// DRIVER_INFO_2 with its strings; anything larger is not a spooler answer we trust.
constexpr DWORD kMaxDriverInfoBytes = 256 * 1024;

class FileHandle {
  public:
    explicit FileHandle(HANDLE h) : h_(h) {}
    ~FileHandle() {
        if (h_ != INVALID_HANDLE_VALUE)
            CloseHandle(h_);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    HANDLE get() const { return h_; }

  private:
    HANDLE h_;
};

}  // namespace

GpdFileSource::Status GpdFolderSource::Read(const std::string& name, size_t maxBytes,
                                            std::string& contents) {
    const std::wstring path = folder_.empty() ? WidenAnsi(name) : folder_ + L"\\" + WidenAnsi(name);
    FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        return Status::kMissing;
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size) || size.QuadPart < 0)
        return Status::kMissing;
    if (static_cast<unsigned long long>(size.QuadPart) > maxBytes)
        return Status::kTooLarge;
    contents.assign(static_cast<size_t>(size.QuadPart), '\0');
    size_t done = 0;
    while (done < contents.size()) {
        DWORD got = 0;
        const DWORD want = static_cast<DWORD>(std::min<size_t>(contents.size() - done, 1u << 20));
        if (!ReadFile(file.get(), contents.data() + done, want, &got, nullptr)) {
            return Status::kMissing;
        }
        if (got == 0)
            break;  // the file shrank while it was read
        done += got;
    }
    contents.resize(done);
    return Status::kOk;
}

GpdReadResult ReadModelDataTextFromFile(const std::wstring& gpdPath) {
    const size_t slash = gpdPath.find_last_of(L"\\/");
    const std::wstring folder = slash == std::wstring::npos ? L"" : gpdPath.substr(0, slash);
    const std::wstring name = slash == std::wstring::npos ? gpdPath : gpdPath.substr(slash + 1);
    GpdFolderSource source(folder);
    return ReadGpdOEMCustomData(source, NarrowAnsi(name));
}

std::wstring PrinterDataFile(HANDLE hPrinter) {
    if (hPrinter == nullptr)
        return {};
    DWORD needed = 0;
    GetPrinterDriverW(hPrinter, nullptr, 2, nullptr, 0, &needed);
    if (needed < sizeof(DRIVER_INFO_2W) || needed > kMaxDriverInfoBytes)
        return {};
    std::vector<BYTE> buffer(needed);
    if (!GetPrinterDriverW(hPrinter, nullptr, 2, buffer.data(), needed, &needed))
        return {};
    const auto* info = reinterpret_cast<const DRIVER_INFO_2W*>(buffer.data());
    if (info->pDataFile == nullptr)
        return {};
    // The string lies inside the buffer the spooler filled; never read past it.
    const auto* begin = reinterpret_cast<const BYTE*>(info->pDataFile);
    if (begin < buffer.data() || begin >= buffer.data() + buffer.size())
        return {};
    const size_t maxChars = (buffer.data() + buffer.size() - begin) / sizeof(wchar_t);
    return std::wstring(info->pDataFile, wcsnlen(info->pDataFile, maxChars));
}
