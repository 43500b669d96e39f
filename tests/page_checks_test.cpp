// The pages' checks over the cases of tests/data/page_checks.txt: what each refuses, with the
// message the user reads and the log line, and which page it names.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "golden_file.h"
#include "pages/console_rules.h"
#include "pages/free_buffer.h"
#include "pages/coupon_rules.h"
#include "pages/page_view.h"
#include "pages/peripherals_rules.h"
#include "pages/presentation_rules.h"
#include "pages/print_adjust_rules.h"
#include "pages/print_rules.h"
#include "pages/watermark_rules.h"
#include "settings/device_factory.h"

namespace {

// One case, "<Page>: field|field|...", and what the page's check makes of it.
std::optional<ValidationFailure> Check(const std::string& page, const std::vector<std::string>& f) {
    const FileExists exists = [](const std::string& path) { return path.starts_with("C:\\there"); };
    const auto n = [&](size_t i) { return std::stoi(f.at(i)); };
    const auto on = [&](size_t i) { return f.at(i) == "on"; };
    if (page == "Print")
        return ValidatePrintControls({0, 0, 0, n(0), n(1), n(2)});
    if (page == "Print adjust")
        return ValidatePrintAdjustControls(
            {f.at(0), f.at(1), false, false, false, false, false, 0});
    if (page == "Peripherals")
        return ValidatePeripheralsControls(*CreateUiDevice(f.at(0), "", "", ""),
                                           {on(1), f.at(2), f.at(3), 0, 0, false, 0});
    if (page == "Presentation")  // model, port (status known, bidirectional, bidi enabled), ...
        return ValidatePresentationControls(
            *CreateUiDevice(f.at(0), "", "", ""),
            {f.at(1)[0] == '1', f.at(1)[1] == '1', f.at(1)[2] == '1'},
            {n(2), f.at(3), f.at(4), 0, on(5), n(6), f.at(7), 0, 0});
    if (page == "Watermark")
        return ValidateWatermarkControls({on(0), f.at(1), 0, 0, 0, false, 0}, exists);
    if (page == "Coupon")
        return ValidateCouponControls({on(0), f.at(1), 0, 0, 0, 0, 0}, exists);
    if (page == "Console")
        return ValidateConsoleControls({n(0), f.at(1), n(2), f.at(3)}, exists);
    ADD_FAILURE() << "no page " << page;
    return std::nullopt;
}

TEST(PageChecks, EachCaseIsRefusedOrAcceptedAsTheGoldenFileSays) {
    ExpectGoldenCases("page_checks.txt", [](const std::string& line) -> std::optional<std::string> {
        const size_t colon = line.find(": ");
        if (line.starts_with("#") || colon == std::string::npos)
            return std::nullopt;
        const std::vector<std::string> fields = CaseFields(line);
        if (line.starts_with("Console text: ")) {  // the bytes a command text stands for
            const FreeBufferParse parsed = ParseFreeBuffer(fields.at(0));
            std::string answer = (parsed.error.empty() ? "bytes" : "error " + parsed.error) + ":";
            for (uint8_t byte : parsed.bytes)
                answer.append(" ").append(std::to_string(byte));
            return answer;
        }
        const auto found = Check(line.substr(0, colon), fields);
        return !found ? "accepted"
                      : PanelTitle(found->page) + (found->question ? "asks: " : "refuses: ") +
                            found->message + " | " + found->logLine;
    });
}

}  // namespace
