// Raw jobs through Wine's real spooler into a printer's port file, and the privilege utility.
#include "actions/raw_output.h"

#include <gtest/gtest.h>

#include "actions/raw_output_win.h"
#include "host_run_win.h"
#include "ports/platform_win.h"
#include "win/text_win.h"

namespace {

class RawOutputWin : public HostTestBase {
  protected:
    RawOutputWin() : HostTestBase(L"RawOutputWin") {}

    // A J7 printer whose port writes into `output_`.
    std::wstring InstallPrinter() {
        const std::wstring printer = NewPrinter(L"J7");
        output_ = dir_ + L"\\" + SafeFileName(printer) + L".out";
        WinePrinterSetup setup{printer, L"J7", ModuleFolder(), ModuleFolder() + L"\\driver",
                               output_};
        WinePrinterInfo info;
        std::wstring error;
        EXPECT_TRUE(InstallWinePrinter(setup, info, error)) << Narrow(error);
        return printer;
    }
    std::string Write(const std::wstring& path, const std::string& bytes) {
        std::ofstream(path.c_str(), std::ios::binary) << bytes;
        return NarrowAnsi(path);
    }
    std::wstring output_;
};

TEST_F(RawOutputWin, SentFileAndReprintLandByteForByteInThePortFile) {
    const std::wstring printer = InstallPrinter();
    Spooler& spooler = *WinPlatform().spooler;
    const std::u16string name = U16FromWide(printer);
    const std::string job("\x1B@KIV send\n\x00\xFF\x1DV", 15);

    DeleteFileW(output_.c_str());
    EXPECT_EQ(1,
              SendFileToPrinter(spooler, Write(dir_ + L"\\job.upg", job), kNoPrinterHandle, name));
    EXPECT_EQ(job, ReadFileText(output_));

    // The page's own handle: reprint leaves it open, and it still answers.
    PrinterHandle handle = kNoPrinterHandle;
    ASSERT_TRUE(spooler.OpenPrinterByName(name, &handle));
    EXPECT_EQ(1, IsPrinterOnline(spooler, handle));
    const std::string receipt = "\x1B@last receipt\n\x1Bi";
    Write(WidenAnsi(LastDocumentPath(NarrowAnsi(dir_), NarrowAnsi(printer))), receipt);
    DeleteFileW(output_.c_str());
    EXPECT_EQ(1,
              PrintLastDocument(spooler, *WinPlatform().log.text, name, NarrowAnsi(dir_), handle));
    EXPECT_EQ(receipt, ReadFileText(output_));
    EXPECT_EQ(1, IsPrinterOnline(spooler, handle));
    EXPECT_TRUE(spooler.ClosePrinter(handle));

    // Nothing to send, or no such printer: 0 and no job.
    DeleteFileW(output_.c_str());
    EXPECT_EQ(0, PrintLastDocument(spooler, *WinPlatform().log.text, u"KIV no such printer",
                                   NarrowAnsi(dir_), kNoPrinterHandle));
    EXPECT_EQ(0,
              SendFileToPrinter(spooler, Write(dir_ + L"\\empty.prn", ""), kNoPrinterHandle, name));
    EXPECT_EQ(0, SendFileToPrinter(spooler, Write(dir_ + L"\\a.prn", "x"), kNoPrinterHandle,
                                   u"KIV no such printer"));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(output_.c_str()));
}

TEST(RawOutputWinPrivilege, KnownPrivilegeOnOwnTokenUnknownNameRefused) {
    HANDLE token = nullptr;
    ASSERT_TRUE(
        OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token));
    EXPECT_TRUE(SetPrivilege(token, SE_CHANGE_NOTIFY_NAME, true));
    EXPECT_FALSE(SetPrivilege(token, L"SeNoSuchPrivilege", true));
    CloseHandle(token);
}

}  // namespace
