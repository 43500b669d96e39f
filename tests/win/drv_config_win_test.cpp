// The Wine printers' configuration module as applications reach it: DocumentPropertiesW without a
// prompt, DrvConvertDevMode and DeviceCapabilitiesW.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <tuple>
#include <vector>

#include "host_run_win.h"

namespace {

class DrvConfigWin : public HostTestBase {
  protected:
    DrvConfigWin() : HostTestBase(L"DrvCfgWin") {}
};

TEST_F(DrvConfigWin, DevmodesCarryThePluginsRecordThroughTheSpooler) {
    const std::wstring printer = NewPrinter(L"J7");
    InstallPrinter(printer, L"J7");
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

    // Incoming devmodes: the plug-in's own record is kept, a damaged one repaired to the
    // defaults (which damage is repaired is the core record tests' business); the public choices
    // this driver knows come along.
    std::vector<uint8_t> own = defaults, damaged = defaults;
    std::memcpy(own.data() + sizeof(DEVMODEW) + offsetof(OEMDEV, payload), "XYZ", 4);
    reinterpret_cast<DEVMODEW*>(own.data())->dmCopies = 1;
    reinterpret_cast<DEVMODEW*>(own.data())->dmOrientation = DMORIENT_LANDSCAPE;
    damaged = own;
    std::memset(damaged.data() + sizeof(DEVMODEW) + offsetof(OEMDEV, dwSignHead1), 0x5A, 4);
    std::vector<uint8_t> publicOnly(own.begin(), own.begin() + sizeof(DEVMODEW));
    reinterpret_cast<DEVMODEW*>(publicOnly.data())->dmDriverExtra = 0;
    struct Case {
        const char* what;
        const std::vector<uint8_t>* in;
        bool keepsRecord;
    };
    for (const Case& c : {Case{.what = "own", .in = &own, .keepsRecord = true},
                          Case{.what = "damaged", .in = &damaged, .keepsRecord = false},
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

    // The spooler's conversion entry: the size it needs, then the same repair and the default.
    using ConvertFn = BOOL(WINAPI*)(LPWSTR, DEVMODEW*, DEVMODEW*, LONG*, DWORD);
    const std::unique_ptr<std::remove_pointer_t<HMODULE>, decltype(&FreeLibrary)> config(
        LoadLibraryW(L"KivDrvCfg.dll"), FreeLibrary);
    const auto convert = reinterpret_cast<ConvertFn>(
        reinterpret_cast<void*>(GetProcAddress(config.get(), "DrvConvertDevMode")));
    ASSERT_NE(nullptr, convert);
    std::vector<uint8_t> converted(static_cast<size_t>(size));
    LONG room = 100;
    auto* out = reinterpret_cast<DEVMODEW*>(converted.data());
    EXPECT_FALSE(convert(name.data(), reinterpret_cast<DEVMODEW*>(damaged.data()), out, &room, 1));
    EXPECT_EQ(size, room);
    // CDM_CONVERT (1) keeps the plug-in's record and repairs a damaged one; CDM_DRIVER_DEFAULT
    // (4) ignores the input.
    for (const auto& [in, mode, keeps] :
         {std::tuple{&own, 1, true}, std::tuple{&damaged, 1, false}, std::tuple{&own, 4, false}}) {
        ASSERT_TRUE(convert(name.data(), reinterpret_cast<DEVMODEW*>(in->data()), out, &room,
                            static_cast<DWORD>(mode)));
        const OEMDEV got = RecordOf(converted);
        EXPECT_EQ(keeps, std::memcmp(&got.payload, "XYZ", 4) == 0) << mode;
        EXPECT_EQ(KIVITEM_SIGN_H, got.dwSignHead1);
    }

    // The model's papers and sources from its GPD; the record's size as the driver extra.
    EXPECT_EQ(3, DeviceCapabilitiesW(name.c_str(), nullptr, DC_PAPERS, nullptr, nullptr));
    std::vector<wchar_t> names(64 * 3);
    DeviceCapabilitiesW(name.c_str(), nullptr, DC_PAPERNAMES, names.data(), nullptr);
    EXPECT_EQ(L"Roll 80 x 297 mm", std::wstring(names.data()));
    EXPECT_EQ(1, DeviceCapabilitiesW(name.c_str(), nullptr, DC_BINS, nullptr, nullptr));
    EXPECT_EQ(static_cast<int>(OEMDEV_SIZE),
              DeviceCapabilitiesW(name.c_str(), nullptr, DC_EXTRA, nullptr, nullptr));
    ClosePrinter(h);

    // Paper sources are numbered by their GPD option ids, the numbers the plug-in's feeder
    // choice puts into dmDefaultSource.
    const std::wstring feeders = NewPrinter(L"TRX430ATF");
    InstallPrinter(feeders, L"TRX430ATF");
    std::vector<WORD> bins(4);
    ASSERT_EQ(4, DeviceCapabilitiesW(feeders.c_str(), nullptr, DC_BINS,
                                     reinterpret_cast<wchar_t*>(bins.data()), nullptr));
    EXPECT_EQ((std::vector<WORD>{1000, 1001, 1002, 1003}), bins);
    std::vector<wchar_t> binNames(24 * 4);
    DeviceCapabilitiesW(feeders.c_str(), nullptr, DC_BINNAMES, binNames.data(), nullptr);
    EXPECT_EQ(L"Feeder 2", std::wstring(binNames.data() + 24 * 2));
}

}  // namespace
