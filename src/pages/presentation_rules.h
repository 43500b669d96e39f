// The Presentation page's rules: how the presenter hands out the ticket, and page to page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "pages/page_view.h"
#include "settings/setting_ranges.h"

class UiDeviceCommon;

inline constexpr int kTimeoutModePresentation = 0;
inline constexpr int kTimeoutModeUnlimited = 1;
// The number edits are read with room for 8 characters and the terminator.
inline constexpr size_t kNumberTextLimit = 8;

// The language-monitor flags of the sheet: whether the port's status is known, whether the
// port is bidirectional, whether bidirectional support is switched on.
struct PortFlags {
    bool statusKnown;
    bool bidirectional;
    bool bidiEnabled;
};
// Why page to page cannot be used on this port, or null when nothing stands in the way.
const char* PageToPageNotice(const PortFlags& port);
// The page-to-page group shows: the model has it and the port's status is known (a known port
// that cannot use it shows the notice in the group).
bool PageToPageShown(const UiDeviceCommon& device, const PortFlags& port);
// Page to page can be set on the page: the group shows and no notice replaces the controls.
bool PageToPageUsable(const UiDeviceCommon& device, const PortFlags& port);

// The enable states of the Page to Page controls, from the presenter mode, the Enable box and
// the timeout mode; every change on the page recomputes them.
struct PageToPageState {
    bool boxEnabled;
    bool boxChecked;       // a mode outside the Hold class unchecks the box
    bool controlsEnabled;  // timeout mode and the rest of the group
    bool detailsEnabled;   // timeout value, ticket and print queue: not while "Unlimited"
};
PageToPageState PageToPageStateFor(uint8_t mode, bool checked, int timeoutModeSelection);

// What the page's controls hold; the page is filled with it and read back into it.
struct PresentationControls {
    int modeSelection;
    std::string lengthText;
    std::string durationText;
    int ledSelection;
    bool pageToPageChecked;
    int timeoutModeSelection;
    std::string timeoutText;
    int ticketSelection;
    int printQueueSelection;
};

struct PresentationView {
    PresentationControls controls;
    LabelList modeLabels, ledLabels, timeoutModeLabels, ticketLabels, printQueueLabels;
    bool presenterEnabled;    // the model has a presenter
    bool ledEnabled;          // the model has a head LED
    bool pageToPageShown;     // the model has page to page: the group shows
    bool pageToPageControls;  // ... with its controls, not a notice
    const char* notice;       // the notice shown in the group instead, or null
    bool lengthEnabled;
    bool durationEnabled;
    PageToPageState pageToPage;
};
PresentationView MakePresentationView(const UiDeviceCommon& device, const PortFlags& port);

// The presenter mode a Mode selection stands for.
uint8_t PresenterModeAt(const UiDeviceCommon& device, int selection);

// Page to page first (when usable, checked and timed), then the presenter's length and
// duration by the chosen mode.
std::optional<ValidationFailure> ValidatePresentationControls(const UiDeviceCommon& device,
                                                              const PortFlags& port,
                                                              const PresentationControls& controls);
void StorePresentationControls(UiDeviceCommon& device, const PresentationControls& controls);
