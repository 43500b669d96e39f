// The Wine printers' configuration module as applications reach it: DocumentPropertiesW without a
// prompt, DeviceCapabilitiesW, and the per-user default devmode (SetPrinterW/GetPrinterW level 9).
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "host_run_win.h"
#include "settings/oemdev.h"

namespace {

class DrvConfigWin : public HostTestBase {
  protected:
    DrvConfigWin() : HostTestBase(L"DrvCfgWin") {}
};

std::vector<uint8_t> Bytes(const DEVMODEW& dm) {
    const auto* p = reinterpret_cast<const uint8_t*>(&dm);
    return {p, p + dm.dmSize + dm.dmDriverExtra};
}

OEMDEV RecordOf(const std::vector<uint8_t>& devmode) {
    OEMDEV rec{};
    std::memcpy(&rec, devmode.data() + sizeof(DEVMODEW),
                std::min(sizeof rec, devmode.size() - sizeof(DEVMODEW)));
    return rec;
}

TEST_F(DrvConfigWin, DevmodesCarryThePluginsRecordThroughTheSpooler) {
    const std::wstring printer = NewPrinter(L"J7");
    const WinePrinterSetup setup{printer, L"J7", ModuleFolder(), ModuleFolder() + L"\\driver",
                                 dir_ + L"\\" + SafeFileName(printer) + L".prn"};
    WinePrinterInfo info;
    std::wstring error;
    ASSERT_TRUE(InstallWinePrinter(setup, info, error)) << Narrow(error);
    std::wstring name = printer;
    HANDLE h = nullptr;
    ASSERT_TRUE(OpenPrinterW(name.data(), &h, nullptr));
    const LONG size = DocumentPropertiesW(nullptr, h, name.data(), nullptr, nullptr, 0);
    ASSERT_EQ(static_cast<LONG>(sizeof(DEVMODEW) + OEMDEV_SIZE), size);
    const auto Call = [&](const std::vector<uint8_t>* in) {
        std::vector<uint8_t> out(static_cast<size_t>(size), 0xEE);
        auto* inDm =
            in != nullptr ? reinterpret_cast<DEVMODEW*>(const_cast<uint8_t*>(in->data())) : nullptr;
        const LONG rc =
            DocumentPropertiesW(nullptr, h, name.data(), reinterpret_cast<DEVMODEW*>(out.data()),
                                inDm, DM_OUT_BUFFER | (in != nullptr ? DM_IN_BUFFER : 0));
        EXPECT_EQ(IDOK, rc);
        return out;
    };
    const std::vector<uint8_t> defaults = Call(nullptr);
    const auto* dm = reinterpret_cast<const DEVMODEW*>(defaults.data());
    EXPECT_EQ(sizeof(DEVMODEW), dm->dmSize);
    EXPECT_EQ(OEMDEV_SIZE, dm->dmDriverExtra);
    EXPECT_EQ(800, dm->dmPaperWidth);  // the GPD's default paper, 639 dots at 203 dpi
    const OEMDEV rec = RecordOf(defaults);
    EXPECT_EQ(KIVITEM_SIGNATURE, rec.dmExtraHeader.dwSignature);
    EXPECT_EQ(OEMDEV_SIZE, rec.dmExtraHeader.dwSize);
    EXPECT_EQ(KIVITEM_SIGN_H, rec.dwSignHead1);

    // Incoming devmodes: the plug-in's own record is kept, a damaged or foreign one repaired to
    // the defaults; the public choices this driver knows come along.
    std::vector<uint8_t> own = defaults, damaged = defaults, foreign = defaults;
    std::memcpy(own.data() + sizeof(DEVMODEW) + offsetof(OEMDEV, payload), "XYZ", 4);
    reinterpret_cast<DEVMODEW*>(own.data())->dmCopies = 1;
    reinterpret_cast<DEVMODEW*>(own.data())->dmOrientation = DMORIENT_LANDSCAPE;
    damaged = own;
    std::memset(damaged.data() + sizeof(DEVMODEW) + offsetof(OEMDEV, dwSignHead1), 0x5A, 4);
    foreign = own;
    std::memcpy(foreign.data() + sizeof(DEVMODEW) + offsetof(OEMDEV, dmExtraHeader.dwSignature),
                "ZZZZ", 4);
    std::vector<uint8_t> publicOnly(own.begin(), own.begin() + sizeof(DEVMODEW));
    reinterpret_cast<DEVMODEW*>(publicOnly.data())->dmDriverExtra = 0;
    struct Case {
        const char* what;
        const std::vector<uint8_t>* in;
        bool keepsRecord;
    };
    for (const Case& c : {Case{.what = "own", .in = &own, .keepsRecord = true},
                          Case{.what = "damaged", .in = &damaged, .keepsRecord = false},
                          Case{.what = "foreign", .in = &foreign, .keepsRecord = false},
                          Case{.what = "public only", .in = &publicOnly, .keepsRecord = false}}) {
        SCOPED_TRACE(c.what);
        const std::vector<uint8_t> out = Call(c.in);
        EXPECT_EQ(DMORIENT_LANDSCAPE, reinterpret_cast<const DEVMODEW*>(out.data())->dmOrientation);
        const OEMDEV got = RecordOf(out);
        EXPECT_EQ(KIVITEM_SIGN_H, got.dwSignHead1);
        EXPECT_EQ(KIVITEM_SIGNATURE, got.dmExtraHeader.dwSignature);
        EXPECT_EQ(c.keepsRecord, std::memcmp(&got.payload, "XYZ", 4) == 0);
        if (!c.keepsRecord) {
            EXPECT_EQ(0, std::memcmp(&got.payload, &rec.payload, sizeof rec.payload));
        }
    }

    // The per-user default keeps the record as it was stored.
    const std::vector<uint8_t> merged = Call(&own);
    PRINTER_INFO_9W stored{.pDevMode =
                               reinterpret_cast<DEVMODEW*>(const_cast<uint8_t*>(merged.data()))};
    ASSERT_TRUE(SetPrinterW(h, 9, reinterpret_cast<BYTE*>(&stored), 0));
    DWORD needed = 0;
    GetPrinterW(h, 9, nullptr, 0, &needed);
    std::vector<BYTE> back(needed);
    ASSERT_TRUE(GetPrinterW(h, 9, back.data(), needed, &needed));
    const DEVMODEW* kept = reinterpret_cast<const PRINTER_INFO_9W*>(back.data())->pDevMode;
    ASSERT_NE(nullptr, kept);
    // Wine writes the printer's name into dmDeviceName; everything after it comes back as stored.
    const std::vector<uint8_t> keptBytes = Bytes(*kept);
    const size_t from = offsetof(DEVMODEW, dmSpecVersion);
    EXPECT_EQ(std::vector<uint8_t>(merged.begin() + from, merged.end()),
              std::vector<uint8_t>(keptBytes.begin() + from, keptBytes.end()));

    // The model's papers and sources from its GPD; the record's size as the driver extra.
    EXPECT_EQ(3, DeviceCapabilitiesW(name.c_str(), nullptr, DC_PAPERS, nullptr, nullptr));
    std::vector<wchar_t> names(64 * 3);
    DeviceCapabilitiesW(name.c_str(), nullptr, DC_PAPERNAMES, names.data(), nullptr);
    EXPECT_EQ(L"Roll 80 x 297 mm", std::wstring(names.data()));
    EXPECT_EQ(1, DeviceCapabilitiesW(name.c_str(), nullptr, DC_BINS, nullptr, nullptr));
    EXPECT_EQ(static_cast<int>(OEMDEV_SIZE),
              DeviceCapabilitiesW(name.c_str(), nullptr, DC_EXTRA, nullptr, nullptr));
    ClosePrinter(h);
}

}  // namespace
