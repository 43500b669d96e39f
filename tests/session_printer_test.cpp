// Tests of the session's printer: after a failed send closed the framework's handle nothing
// uses that handle again, and without one every request opens the printer by name.
#include "session/session_printer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "actions/raw_output.h"
#include "support/fake_spooler.h"

namespace {

constexpr PrinterHandle kFramework = 7;
const std::string kOpened = "OpenPrinterByName KIV P";
const std::string kOpenedClose = "ClosePrinter " + std::to_string(FakeSpooler::kOpenedHandle);

TEST(SessionPrinter, AfterAFailedSendTheFrameworksHandleIsNeverUsedAgain) {
    const std::vector<uint8_t> receipt = {'r', 'e', 'c', 'e', 'i', 'p', 't'};
    OemUiState state;
    state.hPrinter = reinterpret_cast<void*>(kFramework);
    state.printerNameWide = u"KIV P";
    FakeSpooler spooler;
    SessionSpooler session(spooler, state);

    // The Console's send fails inside the spooler once the job has started: the kept close.
    spooler.failing = {"StartPage"};
    EXPECT_EQ(0, SendFileToPrinter(session, receipt, true, kFramework, state.printerNameWide));
    EXPECT_EQ("ClosePrinter 7", spooler.calls.back());
    const size_t closedAt = spooler.calls.size();
    spooler.failing.clear();
    spooler.output.clear();

    // Send file again, a preview with its rendering-module lookup, the Version page's driver
    // question: each on a handle opened by name for it.
    EXPECT_EQ(1, IsPrinterOnline(session, RequestPrinter(session, state).Handle()));
    EXPECT_EQ(1, SendFileToPrinter(session, receipt, true, LiveFrameworkPrinter(state), u"KIV P"));
    EXPECT_EQ("receipt", spooler.output);
    const RequestPrinter printer(session, state);
    PrinterDriverInfo driver;
    EXPECT_TRUE(session.DriverInfo(printer.Handle(), &driver));
    EXPECT_EQ(PreviewSend::kSent, SendPreviewData(session, printer.Handle(), u"KIV P",
                                                  [] { return std::vector<uint8_t>{'x'}; }));
    EXPECT_EQ(0, std::count(spooler.handles.begin() + static_cast<ptrdiff_t>(closedAt),
                            spooler.handles.end(), kFramework));
    EXPECT_EQ(std::count(spooler.calls.begin(), spooler.calls.end(), kOpened),
              std::count(spooler.calls.begin(), spooler.calls.end(), kOpenedClose) + 1);

    // Without a framework handle the online test asks a printer opened by name, never the
    // sentinel; a printer that does not open is offline.
    state.hPrinter = nullptr;
    for (const char* failing : {"", "OpenPrinterByName"}) {
        FakeSpooler alone;
        alone.failing = {failing};
        EXPECT_EQ(*failing == '\0', IsPrinterOnline(alone, RequestPrinter(alone, state).Handle()));
        EXPECT_EQ(*failing == '\0' ? 4u : 1u, alone.calls.size());  // status, attributes, close
    }
}

}  // namespace
