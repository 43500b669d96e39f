// Scripted steps on the pages of an open property sheet: activation, control changes, dumps.
#include "page_steps.h"

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <utility>

#include "host_output.h"

namespace {

std::wstring WindowText(HWND window) {
    const int length = GetWindowTextLengthW(window);
    if (length <= 0)
        return {};
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    const int got = GetWindowTextW(window, text.data(), length + 1);
    text.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

bool SameText(const std::wstring& a, const std::wstring& b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::towlower(a[i]) != std::towlower(b[i]))
            return false;
    }
    return true;
}

std::string ComboDetails(HWND combo) {
    std::string details;
    const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
    details +=
        " sel=" + std::to_string(static_cast<long long>(SendMessageW(combo, CB_GETCURSEL, 0, 0)));
    details += " items=[";
    for (LRESULT i = 0; i < count && i < 256; ++i) {
        const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0);
        std::wstring item;
        if (length > 0 && length < 4096) {
            item.resize(static_cast<size_t>(length) + 1);
            const LRESULT got = SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i),
                                             reinterpret_cast<LPARAM>(item.data()));
            item.resize(got > 0 ? static_cast<size_t>(got) : 0);
        }
        if (i > 0)
            details += ',';
        details += Quoted(item);
    }
    return details + "]";
}

std::string ButtonDetails(HWND button) {
    const LONG_PTR type = GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK;
    switch (type) {
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_3STATE:
        case BS_AUTO3STATE:
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return " checked=" +
                   std::to_string(static_cast<long long>(SendMessageW(button, BM_GETCHECK, 0, 0)));
        default:
            return {};
    }
}

// A picture control tells whether its bitmap arrived, and its size.
std::string StaticDetails(HWND label) {
    if ((GetWindowLongPtrW(label, GWL_STYLE) & SS_TYPEMASK) != SS_BITMAP)
        return {};
    auto bitmap = reinterpret_cast<HBITMAP>(SendMessageW(label, STM_GETIMAGE, IMAGE_BITMAP, 0));
    BITMAP info = {};
    if (bitmap == nullptr || GetObjectW(bitmap, sizeof info, &info) == 0)
        return " bitmap=none";
    return " bitmap=" + std::to_string(info.bmWidth) + "x" + std::to_string(info.bmHeight);
}

std::string TrackbarDetails(HWND trackbar) {
    return " pos=" +
           std::to_string(static_cast<long long>(SendMessageW(trackbar, TBM_GETPOS, 0, 0))) +
           " range=" +
           std::to_string(static_cast<long long>(SendMessageW(trackbar, TBM_GETRANGEMIN, 0, 0))) +
           ".." +
           std::to_string(static_cast<long long>(SendMessageW(trackbar, TBM_GETRANGEMAX, 0, 0)));
}

// Presses (or releases) the held keys as the keyboard would, so that the plug-in's
// GetAsyncKeyState sees them during the click.
void SendHeldKeys(unsigned held, bool down) {
    INPUT inputs[2] = {};
    UINT count = 0;
    for (const auto& [flag, key] : {std::pair{kHoldCtrl, VK_CONTROL}, {kHoldShift, VK_SHIFT}}) {
        if ((held & flag) == 0)
            continue;
        inputs[count].type = INPUT_KEYBOARD;
        inputs[count].ki.wVk = static_cast<WORD>(key);
        inputs[count].ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
        ++count;
    }
    if (count > 0)
        SendInput(count, inputs, sizeof(INPUT));
}

const char* KindName(PageAction::Kind kind) {
    switch (kind) {
        case PageAction::Kind::kSet:
            return "set";
        case PageAction::Kind::kSelect:
            return "select";
        case PageAction::Kind::kClick:
            return "click";
        case PageAction::Kind::kTrackbar:
            return "trackbar";
        case PageAction::Kind::kDump:
            return "dump-controls";
    }
    return "?";
}

}  // namespace

std::vector<std::wstring> SheetPageTitles(HWND sheet) {
    std::vector<std::wstring> titles;
    HWND tab = PropSheet_GetTabControl(sheet);
    if (tab == nullptr)
        return titles;
    const int count = TabCtrl_GetItemCount(tab);
    for (int i = 0; i < count; ++i) {
        wchar_t text[256] = {};
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 255;
        SendMessageW(tab, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        titles.emplace_back(text);
    }
    return titles;
}

HWND ActivatePage(HWND sheet, int index) {
    if (index < 0)
        return nullptr;
    PropSheet_SetCurSel(sheet, nullptr, index);
    return PropSheet_IndexToHwnd(sheet, index);
}

void PumpMessages(HWND sheet, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    do {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                // The sheet's own loop must see it, so it goes back.
                PostQuitMessage(static_cast<int>(msg.wParam));
                return;
            }
            if (sheet == nullptr || !IsDialogMessageW(sheet, &msg)) {
                TranslateMessage(&msg);
                DispatchMessageW(&msg);
            }
        }
        if (GetTickCount64() >= end)
            break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    } while (true);
}

int FindPage(const std::vector<std::wstring>& titles, const std::wstring& page) {
    if (page.empty())
        return -1;
    bool digits = page.size() <= 3;
    for (wchar_t c : page)
        digits = digits && c >= L'0' && c <= L'9';
    if (digits) {
        const int index = std::stoi(page);
        return index < static_cast<int>(titles.size()) ? index : -1;
    }
    for (size_t i = 0; i < titles.size(); ++i) {
        if (SameText(titles[i], page))
            return static_cast<int>(i);
    }
    return -1;
}

bool RunPageAction(HWND sheet, const std::vector<std::wstring>& titles, const PageAction& action,
                   std::wstring& error, bool quiet) {
    if (action.kind == PageAction::Kind::kDump && action.page.empty()) {
        for (size_t i = 0; i < titles.size(); ++i) {
            HWND page = ActivatePage(sheet, static_cast<int>(i));
            if (page != nullptr)
                DumpPageControls(page, static_cast<int>(i), titles[i]);
        }
        return true;
    }
    const int index = FindPage(titles, action.page);
    if (index < 0) {
        error = L"the sheet has no page \"" + action.page + L"\"";
        return false;
    }
    HWND page = ActivatePage(sheet, index);
    if (page == nullptr) {
        error = L"page " + std::to_wstring(index) + L" did not come up";
        return false;
    }
    if (action.kind == PageAction::Kind::kDump) {
        DumpPageControls(page, index, titles[static_cast<size_t>(index)]);
        return true;
    }
    HWND control = GetDlgItem(page, action.control);
    if (control == nullptr) {
        error = L"page " + std::to_wstring(index) + L" has no control " +
                std::to_wstring(action.control);
        return false;
    }
    const std::wstring name =
        L"control " + std::to_wstring(action.control) + L" of page " + std::to_wstring(index);
    if (!IsWindowEnabled(control) || !IsWindowVisible(control)) {
        error = name + L" is disabled or hidden, a user could not change it";
        return false;
    }
    std::string shown;
    switch (action.kind) {
        case PageAction::Kind::kSet:
            // An edit control tells its page with EN_CHANGE, as when the user types.
            SetWindowTextW(control, action.text.c_str());
            shown = Quoted(action.text);
            break;
        case PageAction::Kind::kSelect:
            if (SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(action.value), 0) ==
                CB_ERR) {
                error = name + L" has no item " + std::to_wstring(action.value);
                return false;
            }
            // CB_SETCURSEL is silent; a user's choice sends CBN_SELCHANGE.
            SendMessageW(page, WM_COMMAND, MAKEWPARAM(action.control, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(control));
            shown = std::to_string(action.value);
            break;
        case PageAction::Kind::kClick:
            SendHeldKeys(action.heldKeys, true);
            // A picture (a static with SS_NOTIFY) tells its page on the button going down.
            if (SameText(ClassOf(control), L"Static")) {
                SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, 0);
                SendMessageW(control, WM_LBUTTONUP, 0, 0);
            } else {
                SendMessageW(control, BM_CLICK, 0, 0);
            }
            SendHeldKeys(action.heldKeys, false);
            if (action.heldKeys != 0)
                shown = (action.heldKeys & kHoldCtrl) && (action.heldKeys & kHoldShift)
                            ? "ctrl+shift"
                        : (action.heldKeys & kHoldCtrl) ? "ctrl"
                                                        : "shift";
            break;
        case PageAction::Kind::kTrackbar: {
            SendMessageW(control, TBM_SETPOS, TRUE, action.value);
            const LRESULT position = SendMessageW(control, TBM_GETPOS, 0, 0);
            // A dragged thumb ends with this notification to the page.
            SendMessageW(page, WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, position),
                         reinterpret_cast<LPARAM>(control));
            shown = std::to_string(static_cast<long long>(position));
            break;
        }
        case PageAction::Kind::kDump:
            break;
    }
    if (!quiet) {
        Out("STEP page=%d %s %d%s%s\n", index, KindName(action.kind), action.control,
            shown.empty() ? "" : " ", shown.c_str());
    }
    return true;
}

void DumpPageControls(HWND page, int index, const std::wstring& title) {
    Out("CONTROLS page=%d %s\n", index, Quoted(title).c_str());
    for (HWND child = GetWindow(page, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        const std::wstring cls = ClassOf(child);
        std::string details;
        if (SameText(cls, L"ComboBox"))
            details = ComboDetails(child);
        else if (SameText(cls, L"Button"))
            details = ButtonDetails(child);
        else if (SameText(cls, L"Static"))
            details = StaticDetails(child);
        else if (SameText(cls, TRACKBAR_CLASSW))
            details = TrackbarDetails(child);
        Out("CONTROL page=%d id=%d class=%s enabled=%d visible=%d text=%s%s\n", index,
            GetDlgCtrlID(child), Utf8(cls).c_str(), IsWindowEnabled(child) ? 1 : 0,
            IsWindowVisible(child) ? 1 : 0, Quoted(WindowText(child)).c_str(), details.c_str());
    }
}

uint32_t StepRandom::Next() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

int StepRandom::Below(int count) {
    return count > 0 ? static_cast<int>(Next() % static_cast<uint32_t>(count)) : 0;
}

namespace {

enum class InputKind { kNone, kCombo, kToggle, kEdit, kTrackbar };

InputKind InputKindOf(HWND control) {
    const std::wstring cls = ClassOf(control);
    if (SameText(cls, L"ComboBox"))
        return InputKind::kCombo;
    if (SameText(cls, L"Edit"))
        return (GetWindowLongW(control, GWL_STYLE) & ES_READONLY) ? InputKind::kNone
                                                                  : InputKind::kEdit;
    if (SameText(cls, TRACKBAR_CLASSW))
        return InputKind::kTrackbar;
    if (SameText(cls, L"Button")) {
        const LONG type = GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK;
        const bool toggle = type == BS_CHECKBOX || type == BS_AUTOCHECKBOX ||
                            type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
        return toggle ? InputKind::kToggle : InputKind::kNone;
    }
    return InputKind::kNone;
}

std::vector<HWND> UsableInputs(HWND page) {
    std::vector<HWND> inputs;
    for (HWND child = GetWindow(page, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (InputKindOf(child) != InputKind::kNone && IsWindowEnabled(child) &&
            IsWindowVisible(child))
            inputs.push_back(child);
    }
    return inputs;
}

// What a user types into a number field that a page accepts, and into a text field (a path or
// a free buffer's text; the picture's path is added by the stepper).
const wchar_t* const kValidNumbers[] = {L"2", L"10", L"100", L"200"};
const wchar_t* const kValidTexts[] = {L"ABC", L"\\x0A\\x1B"};
// What a user types by mistake or at the edges: numbers inside and at the edges of every range
// the pages check, numbers past them, text that is no number, an escape of the free buffers, a
// missing file, nothing.
const wchar_t* const kTypedTexts[] = {
    L"0",
    L"1",
    L"2",
    L"10",
    L"100",
    L"255",
    L"256",
    L"511",
    L"512",
    L"513",
    L"-1",
    L"-1000",
    L"1000",
    L"-1001",
    L"1001",
    L"65534",
    L"65535",
    L"99999999",
    L"12a",
    L"abc",
    L"",
    L"ABC",
    L"\\x0A\\x1B",
    L"Hex(\\x0A)",
    L"C:\\gone.png",
    L"C:\\windows\\win.ini",
};

bool IsNumber(const std::wstring& text) {
    size_t i = !text.empty() && text[0] == L'-' ? 1 : 0;
    if (i == text.size())
        return false;
    for (; i < text.size(); ++i) {
        if (text[i] < L'0' || text[i] > L'9')
            return false;
    }
    return true;
}

bool Usable(HWND control) {
    return control != nullptr && IsWindow(control) && IsWindowEnabled(control) &&
           IsWindowVisible(control);
}

std::vector<HWND> EmptyEdits(HWND page) {
    std::vector<HWND> edits;
    for (HWND control : UsableInputs(page)) {
        if (InputKindOf(control) == InputKind::kEdit && GetWindowTextLengthW(control) == 0)
            edits.push_back(control);
    }
    return edits;
}

}  // namespace

std::wstring RandomStepper::TypedText(HWND edit, StepRandom& random) const {
    // Mostly what the field takes; now and then a boundary, a wrong text, a long one.
    if (random.Below(8) == 0) {
        if (random.Below(8) == 0)
            return std::wstring(static_cast<size_t>(1 + random.Below(600)), L'7');
        return kTypedTexts[random.Below(std::size(kTypedTexts))];
    }
    if (IsNumber(WindowText(edit)))
        return kValidNumbers[random.Below(std::size(kValidNumbers))];
    // An empty field or a text: mostly the picture's path, which every path field and a command
    // text take, else a command text, which a path field questions.
    if (random.Below(4) != 0 && !imageFile_.empty())
        return imageFile_;
    return kValidTexts[random.Below(std::size(kValidTexts))];
}

bool RandomStepper::Step(HWND sheet, const std::vector<std::wstring>& titles, StepRandom& random,
                         std::wstring& error) {
    if (titles.size() < 2) {
        error = L"the sheet has no plug-in page";
        return false;
    }
    PageAction action;
    HWND control = nullptr;
    HWND page = nullptr;
    if (Usable(fillNext_)) {
        // The field the last step opened, as a user fills what they just switched on.
        control = fillNext_;
        page = GetParent(control);
        action.page = std::to_wstring(PropSheet_HwndToIndex(sheet, page));
    } else {
        const int index = 1 + random.Below(static_cast<int>(titles.size()) - 1);
        page = ActivatePage(sheet, index);
        if (page == nullptr) {
            error = L"page " + std::to_wstring(index) + L" did not come up";
            return false;
        }
        const std::vector<HWND> inputs = UsableInputs(page);
        if (inputs.empty())
            return true;
        control = inputs[static_cast<size_t>(random.Below(static_cast<int>(inputs.size())))];
        action.page = std::to_wstring(index);
    }
    fillNext_ = nullptr;
    action.control = GetDlgCtrlID(control);
    switch (InputKindOf(control)) {
        case InputKind::kCombo: {
            const int count = static_cast<int>(SendMessageW(control, CB_GETCOUNT, 0, 0));
            if (count <= 0)
                return true;
            action.kind = PageAction::Kind::kSelect;
            action.value = random.Below(count);
            break;
        }
        case InputKind::kToggle:
            action.kind = PageAction::Kind::kClick;
            break;
        case InputKind::kEdit:
            action.kind = PageAction::Kind::kSet;
            action.text = TypedText(control, random);
            break;
        case InputKind::kTrackbar: {
            const int low = static_cast<int>(SendMessageW(control, TBM_GETRANGEMIN, 0, 0));
            const int high = static_cast<int>(SendMessageW(control, TBM_GETRANGEMAX, 0, 0));
            action.kind = PageAction::Kind::kTrackbar;
            action.value = low + random.Below(high - low + 1);
            break;
        }
        case InputKind::kNone:
            return true;
    }
    const std::vector<HWND> emptyBefore = EmptyEdits(page);
    if (!RunPageAction(sheet, titles, action, error, !gVerbose))
        return false;
    if (action.kind == PageAction::Kind::kSet || random.Below(4) == 0)
        return true;
    for (HWND edit : EmptyEdits(page)) {
        if (std::find(emptyBefore.begin(), emptyBefore.end(), edit) == emptyBefore.end()) {
            fillNext_ = edit;
            break;
        }
    }
    return true;
}

std::string PageChoices(HWND sheet, const std::vector<std::wstring>& titles) {
    std::string choices;
    for (size_t i = 1; i < titles.size(); ++i) {
        // The Logos page shows one slot at a time, and which one is not a setting.
        HWND page =
            SameText(titles[i], L"Logos") ? nullptr : ActivatePage(sheet, static_cast<int>(i));
        if (page == nullptr)
            continue;
        for (HWND control : UsableInputs(page)) {
            std::string value;
            switch (InputKindOf(control)) {
                case InputKind::kCombo: {
                    // By label: a list may offer one value twice, and the page shows the first.
                    const LRESULT item = SendMessageW(control, CB_GETCURSEL, 0, 0);
                    wchar_t label[256] = {};
                    if (item >= 0 && SendMessageW(control, CB_GETLBTEXTLEN, item, 0) < 256)
                        SendMessageW(control, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(label));
                    value = Quoted(label);
                    break;
                }
                case InputKind::kToggle:
                    value = std::to_string(SendMessageW(control, BM_GETCHECK, 0, 0));
                    break;
                case InputKind::kEdit:
                    value = Quoted(WindowText(control));
                    break;
                case InputKind::kTrackbar:
                    value = std::to_string(SendMessageW(control, TBM_GETPOS, 0, 0));
                    break;
                case InputKind::kNone:
                    break;
            }
            choices += Utf8(titles[i]) + " " + std::to_string(GetDlgCtrlID(control)) + " = " +
                       value + "\n";
        }
    }
    ActivatePage(sheet, 0);
    return choices;
}
