// The settings transfers between the record and the capability object, with enforcement.
#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "infra/log.h"
#include "infra/text_format.h"
#include "settings/setting_enums.h"
#include "settings/setting_names.h"
#include "settings/setting_ranges.h"
#include "settings/ui_device_common.h"

namespace {

constexpr char kSaveFunction[] = "UiDeviceCommon::FillOEMDEVWithDeviceValues";
constexpr char kLoadFunction[] = "UiDeviceCommon::FillUIDeviceValuesWithOEMDEV";
constexpr char kStars[] = "***************************************************";
constexpr uint8_t kLfBeforeCutLimit = 16;
constexpr uint8_t kCouponScale = 16;
constexpr int kBrightnessMirror = 200;
// The 1-bit starting values, which every record's fixed defaults carry as well.
constexpr uint8_t kConvThreshold = 128;
constexpr uint8_t kConvFilterUp = 255;
constexpr uint8_t kConvFilterDown = 0;

std::string OffsetText(int x, int y) {
    return "X:" + std::to_string(x) + " Y:" + std::to_string(y);
}

std::string ConversionText(int threshold, int filterUp, int filterDown) {
    return std::to_string(threshold) + "/" + std::to_string(filterUp) + "/" +
           std::to_string(filterDown);
}

// The section dump of one transfer: every line at the detail level under one function name.
class TransferLog {
  public:
    explicit TransferLog(const char* functionName) : functionName_(functionName) {}

    void Line(const char* format, ...) KIV_PRINTF(2, 3) {
        if (!TheLog().Enabled(kLogDetail)) {
            return;
        }
        va_list args;
        va_start(args, format);
        TheLog().WriteV(kLogDetail, functionName_, format, args);
        va_end(args);
    }
    bool On() const { return TheLog().Enabled(kLogDetail); }
    void Text(const char* text) { Line("%s", text); }
    void Named(const char* prefix, const std::string& name) {
        Line("%s<%s>", prefix, name.c_str());
    }
    // A loaded value that the model does not offer, and what it became.
    void Mapped(const char* prefix, const std::string& stored, const std::string& forced) {
        Line("%s<%s> not offered, forced to <%s>", prefix, stored.c_str(), forced.c_str());
    }
    // A value's symbolic name, looked up only when the line is written.
    template <typename Name, typename Value>
    void Named(const char* prefix, Name name, Value value) {
        if (On()) {
            Named(prefix, name(value));
        }
    }
    template <typename Name, typename Value>
    void Mapped(const char* prefix, Name name, Value stored, Value forced) {
        if (On()) {
            Mapped(prefix, name(stored), name(forced));
        }
    }
    void Bytes(const uint8_t* data, size_t size) {
        if (TheLog().Enabled(kLogDump)) {
            TheLog().Dump(kLogDump, functionName_, "Buffer:", data, size);
        }
    }

  private:
    const char* functionName_;
};

// Fixed-width text fields: written zero-filled and cut at the field, read up to the first zero
// byte or the field's end, whichever comes first. A text that fills its field has no terminator.
template <size_t N>
void StoreText(char (&field)[N], const std::string& text) {
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), std::min(text.size(), N));
}

template <size_t N>
std::string LoadText(const char (&field)[N]) {
    const void* end = std::memchr(field, 0, N);
    size_t length = end == nullptr ? N : static_cast<size_t>(static_cast<const char*>(end) - field);
    return std::string(field, length);
}

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20;
}

// A text for the log line that names it, its control bytes as "\xHH".
std::string Printable(const std::string& text) {
    std::string shown;
    for (char c : text) {
        if (IsControl(c)) {
            AppendHexEscape(shown, static_cast<uint8_t>(c));
        } else {
            shown += c;
        }
    }
    return shown;
}

// Loading: a stored value that the pages accept loads as stored; any other becomes `start`,
// with a line that says what was stored and what it became, by name where it has one.
template <typename T>
T Accepted(TransferLog& log, const char* prefix, T stored, bool accepted, T start,
           std::string (*name)(T) = nullptr) {
    if (accepted) {
        return stored;
    }
    if (log.On()) {
        const auto text = [name](T value) { return name ? name(value) : std::to_string(value); };
        log.Mapped(prefix, text(stored), text(start));
    }
    return start;
}

// Loading: a text field holds text (up to its first zero byte or its end) with no control byte;
// any other loads as empty, with a line.
template <size_t N>
std::string LoadCheckedText(TransferLog& log, const char* prefix, const char (&field)[N]) {
    std::string text = LoadText(field);
    if (std::none_of(text.begin(), text.end(), IsControl)) {
        return text;
    }
    if (log.On()) {
        log.Mapped(prefix, Printable(text), "");
    }
    return std::string();
}

bool IsFlag(long value) {
    return value == 0 || value == 1;
}

bool IsPulse(long value) {
    return value >= kPulseMin && value <= kPulseMax;
}

bool IsWatermarkLayer(long value) {
    return value == WK_OVER || value == WK_UNDER;
}

bool IsWatermarkFit(long value) {
    return value >= WK_DKEEP && value <= WK_COLUMN_TILE;
}

// A place code's two nibbles are each 1, 2 or 4.
bool IsWatermarkPlace(long value) {
    const auto isStep = [](long nibble) { return nibble == 1 || nibble == 2 || nibble == 4; };
    return value >= 0 && value <= 0xFF && isStep(value >> 4) && isStep(value & 0x0F);
}

bool IsImageSize(long value) {
    return value == IM_DKEEP || value == IM_DZOOM;
}

bool IsImageAlign(long value) {
    return value >= IM_DALIGN_LEFT && value <= IM_DALIGN_RIGHT;
}

bool IsCouponCopies(long value) {
    return value >= 1 && value <= kCouponCopiesMax;
}

bool IsAfterTimeout(long value) {
    return value >= PRN_PROP_PAGE2PAGE_AFTERTO_DONOTHING &&
           value <= PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE;
}

bool IsReductionMode(long value) {
    return value == REDW_ABSOLUTEVAL || value == REDW_PERCENT;
}

// The reduction steps the Print adjust page offers.
bool IsReductionStep(long value) {
    return UiDeviceCommon::PercentFromPosition(
               UiDeviceCommon::PositionFromPercent(static_cast<int>(value))) == value;
}

bool IsFreeCommandMode(uint8_t mode) {
    return mode == FREE_CMD_MODE_NONE || mode == FREE_CMD_MODE_FILENAME || IsTextMode(mode);
}

template <bool kSave>
using Record8 = std::conditional_t<kSave, uint8_t, const uint8_t>;

// What the model offers for one setting, as loading checks a stored value against it. The
// not-set value and the value of the model's own export always pass: some models export a
// not-set value that their list lacks, and the records they saved must load unchanged.
template <typename T>
struct Offer {
    const std::vector<T>& values;  // the page's entries
    T notSet;
    T exported;
    T start;  // what a value the model does not offer becomes
    bool Has(T value) const {
        return value == notSet || value == exported ||
               std::find(values.begin(), values.end(), value) != values.end();
    }
};

// Loading: the stored value when the model offers it, else its starting value; the value line
// then says what was stored and what it became.
template <typename T>
T LoadOffered(TransferLog& log, const char* prefix, std::string (*name)(T), T stored,
              const Offer<T>& offer) {
    if (offer.Has(stored)) {
        log.Named(prefix, name, stored);
        return stored;
    }
    log.Mapped(prefix, name, stored, offer.start);
    return offer.start;
}

// A one-byte setting with an offered list, moved in the direction of the transfer.
template <bool kSave>
void MoveOffered(TransferLog& log, Record8<kSave>& record, uint8_t& object, const char* prefix,
                 std::string (*name)(uint8_t), const Offer<uint8_t>& offer) {
    if constexpr (kSave) {
        record = object;
        log.Named(prefix, name, record);
    } else {
        object = LoadOffered(log, prefix, name, record, offer);
    }
}

// A one-byte setting that is carried only when its Sup byte is set; otherwise the side being
// written gets the "not set by driver" value.
template <bool kSave>
void GatedByte(TransferLog& log, uint8_t sup, Record8<kSave>& record, uint8_t& object,
               const Offer<uint8_t>& offer, const char* prefix, std::string (*name)(uint8_t),
               const char* forcedLine) {
    if (sup != 0) {
        MoveOffered<kSave>(log, record, object, prefix, name, offer);
    } else {
        if constexpr (kSave) {
            record = offer.notSet;
        } else {
            object = offer.notSet;
        }
        log.Text(forcedLine);
    }
}

// The 1-bit values as the Print page can show and accept them: a threshold on its 1..254
// trackbar, the low filter at or below it, the high filter at or above it, the two apart.
bool ConversionIsUsable(uint8_t threshold, uint8_t filterUp, uint8_t filterDown) {
    return threshold >= 1 && threshold <= 254 && filterDown <= threshold && threshold <= filterUp &&
           filterDown < filterUp;
}

int16_t OffsetOrZero(int16_t offset) {
    return offset >= kOffsetMin && offset <= kOffsetMax ? offset : 0;
}

// One free command buffer. The stored length may claim more than the 512-byte field holds, so
// both directions move at most the field; returns the length the record is to carry.
template <bool kSave>
uint16_t MoveFreeBuffer(TransferLog& log, const char* head, Record8<kSave>& recordMode,
                        Record8<kSave> (&field)[kFreeBufferSize], uint16_t storedLength,
                        uint8_t& mode, std::vector<uint8_t>& held) {
    log.Text(head);
    size_t size = 0;
    if constexpr (kSave) {
        size = std::min(held.size(), kFreeBufferSize);
        recordMode = mode;
        if (size > 0) {
            std::memcpy(field, held.data(), size);
        }
    } else {
        // A file name is text; a mode the Console page cannot show, a length past the field or
        // a file name that is not text loads as no command.
        size = std::min<size_t>(storedLength, kFreeBufferSize);
        const bool accepted =
            storedLength <= kFreeBufferSize && IsFreeCommandMode(recordMode) &&
            (recordMode != FREE_CMD_MODE_FILENAME ||
             std::none_of(field, field + size, [](uint8_t b) { return IsControl(char(b)); }));
        if (accepted) {
            mode = recordMode;
            held.assign(field, field + size);
        } else {
            if (log.On()) {
                log.Mapped(" Mode/Length ",
                           std::to_string(recordMode) + "/" + std::to_string(storedLength), "0/0");
            }
            mode = FREE_CMD_MODE_NONE;
            held.clear();
            size = 0;
        }
    }
    if (mode == FREE_CMD_MODE_NONE) {
        log.Text(" Mode FREE_CMD_MODE_NONE So do nothing");
    } else if (size > 0 && mode == FREE_CMD_MODE_FILENAME) {
        log.Text(" Mode Filename");
        if (log.On()) {
            log.Named(" File Path ", std::string(held.begin(), held.begin() + size));
        }
    } else if (size > 0) {
        log.Text(" Mode Buffer");
        log.Line(" Buffer size %d Bytes", static_cast<int>(size));
        log.Bytes(held.data(), size);
    }
    return static_cast<uint16_t>(size);
}

}  // namespace

// Copies one value across in the direction of the transfer. Record fields are members of a
// packed struct, so they are assigned in place rather than bound to references.
#define KIV_MOVE(recordField, objectField)                                                      \
    do {                                                                                        \
        if constexpr (kSave) {                                                                  \
            recordField = static_cast<decltype(recordField)>(objectField);                      \
        } else {                                                                                \
            objectField = static_cast<std::remove_cvref_t<decltype(objectField)>>(recordField); \
        }                                                                                       \
    } while (false)

// As KIV_MOVE; loading takes the stored value only where `accepts(stored)` holds, else `start`.
// A name function, when given, names both in the line.
#define KIV_MOVE_CHECKED(recordField, objectField, prefix, accepts, start, ...)           \
    do {                                                                                  \
        using Stored = std::remove_cvref_t<decltype(recordField)>;                        \
        if constexpr (kSave) {                                                            \
            recordField = static_cast<Stored>(objectField);                               \
        } else {                                                                          \
            const Stored stored = recordField;                                            \
            objectField = static_cast<std::remove_cvref_t<decltype(objectField)>>(        \
                Accepted<Stored>(log, prefix, stored, accepts(stored),                    \
                                 static_cast<Stored>(start) __VA_OPT__(, ) __VA_ARGS__)); \
        }                                                                                 \
    } while (false)

// The value a transfer has just written: the record's on saving, the object's on loading.
#define KIV_HELD(recordField, objectField) \
    (kSave ? static_cast<int>(recordField) : static_cast<int>(objectField))

void UiDeviceCommon::WriteFixedDefaults(OemDevPayload& p) const {
    StoreText(p.modelName, GetModelName());
    StoreText(p.secondaryName, secondaryName_);
    p.cashDrawerEnable = 0;
    p.cashDrawerTimeOn = kDefaultPulse;
    p.cashDrawerTimeOff = kDefaultPulse;
    p.watermarkEnable = 0;
    p.watermarkDrawPosition = WK_UNDER;
    p.watermarkDrawType = WK_DSTRETCH;
    p.watermarkVHPosition = WK_TOPLEFT;
    std::memset(p.watermarkPath, 0, sizeof(p.watermarkPath));
    p.reserved942 = 0;
    p.reserved943 = 100;
    p.watermarkBrightnessEnable = 0;
    p.watermarkBrightness = kBrightnessMirror - kDefaultBrightness;
    std::memset(p.logos, 0, sizeof(p.logos));
    p.convMode = CMODE_AUTO;
    p.convThreshold = kConvThreshold;
    p.convFilterUp = kConvFilterUp;
    p.convFilterDown = kConvFilterDown;
    p.offsetX = 0;
    p.offsetY = 0;
    p.reductionEnable = 0;
    p.skipWhitePages = 0;
    p.whiteTopCrop = 0;
    p.whiteBottomCrop = 0;
    p.rotate180 = 0;
}

void UiDeviceCommon::FillOEMDEVWithDeviceValues(OemDevPayload& payload, int reset) {
    std::memset(&payload, 0, sizeof(payload));
    // The export runs first so that the fixed defaults win where both write.
    ExportCapabilities(payload);
    WriteFixedDefaults(payload);
    if (reset != 0) {
        std::string noModelName;
        FillUIDeviceValuesWithOEMDEV(noModelName, payload);
        return;
    }
    TransferSettings<true>(payload);
}

void UiDeviceCommon::FillUIDeviceValuesWithOEMDEV(std::string& modelName,
                                                  const OemDevPayload& payload) {
    TransferSettings<false>(payload);
    modelName.clear();
}

template <bool kSave>
void UiDeviceCommon::TransferSettings(
    std::conditional_t<kSave, OemDevPayload, const OemDevPayload>& p) {
    TransferLog log(kSave ? kSaveFunction : kLoadFunction);
    OemDevPayload e{};  // what the model's export writes, which loading always accepts
    if constexpr (!kSave) {
        ExportCapabilities(e);
    }
    const StartingValues& s = starts_;
    log.Text(kStars);
    log.Text(kSave ? "Saving UI Settings for UNI:" : "UI Settings From OEMDEV:");
    log.Text(kStars);

    log.Text("++++++ Cash Drawer ++++++");
    if (p.supCashDrawer != 0) {
        KIV_MOVE_CHECKED(p.cashDrawerEnable, cashDrawerEnable_, " Cash Drawer Enable ", IsFlag, 0);
        log.Line(" Cash Drawer Enable <%d>", cashDrawerEnable_);
        if (cashDrawerEnable_ != 0) {
            static const std::vector<uint8_t> kPins = {PRN_PROP_CDPINS_PIN1, PRN_PROP_CDPINS_PIN2,
                                                       PRN_PROP_CDPINS_PIN1AND2};
            MoveOffered<kSave>(log, p.cashDrawerPins, cashDrawerPins_, " Pins Value ", CdPinsName,
                               {kPins, PRN_PROP_CDPINS_NO, PRN_PROP_CDPINS_NO, PRN_PROP_CDPINS_NO});
            KIV_MOVE_CHECKED(p.cashDrawerTimeOn, cashDrawerTimeOn_, " Time ON Value ", IsPulse,
                             kDefaultPulse);
            KIV_MOVE_CHECKED(p.cashDrawerTimeOff, cashDrawerTimeOff_, " Time OFF Value ", IsPulse,
                             kDefaultPulse);
            log.Line(" Time ON Value %dms", cashDrawerTimeOn_);
            log.Line(" Time OFF Value %dms", cashDrawerTimeOff_);
            MoveOffered<kSave>(
                log, p.cashDrawerPhase, cashDrawerPhase_, " Phase Value ", CdPhaseName,
                {cashDrawerPhaseList_, PRN_PROP_CDPHASE_NO, e.cashDrawerPhase, s.cashDrawerPhase});
        }
    } else if constexpr (kSave) {
        p.cashDrawerPhase = PRN_PROP_CDPHASE_NO;
        log.Text(" forced to PRN_PROP_CDPHASE_NO because isn't supported");
    } else {
        cashDrawerEnable_ = 0;
        cashDrawerPins_ = PRN_PROP_CDPINS_NO;
        cashDrawerTimeOn_ = 0;
        cashDrawerTimeOff_ = 0;
        cashDrawerPhase_ = PRN_PROP_CDPHASE_NO;
        log.Text(" Unsupported so forced to PRN_PROP_CDPHASE_NO");
    }

    log.Text("++++++ Buzzer ++++++");
    // The buzzer's value line says "Phase" (kept-behaviour: Texts kept as written).
    GatedByte<kSave>(log, p.supBuzzer, p.buzzer, buzzer_,
                     {buzzerList_, PRN_PROP_BUZZER_NO, e.buzzer, s.buzzer}, " Phase Value ",
                     BuzzerName, " forced to PRN_PROP_BUZZER_NO because isn't supported");

    log.Text("++++++ Density ++++++");
    GatedByte<kSave>(log, p.supDensity, p.density, density_,
                     {densityList_, PRN_PROP_DENS_NOTSETBYDRIVER, e.density, s.density}, " Value  ",
                     DensityName,
                     " forced to PRN_PROP_DENS_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ Quality ++++++");
    GatedByte<kSave>(log, p.supQuality, p.quality, quality_,
                     {qualityList_, PRN_PROP_QUAL_NOTSETBYDRIVER, e.quality, s.quality}, " Value ",
                     QualityName,
                     " forced to PRN_PROP_QUAL_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ Cut Mode ++++++");
    GatedByte<kSave>(log, p.supCutter, p.cutMode, cutMode_,
                     {cutModeList_, PRN_PROP_CUTTER_NOTSETBYDRIVER, e.cutMode, s.cutMode},
                     " Value ", CutModeName,
                     " forced to PRN_PROP_CUTTER_NOTSETBYDRIVER because isn't supported");
    GatedByte<kSave>(
        log, p.supRecovery, p.recovery, recovery_,
        {recoveryList_, PRN_PROP_RECOVERY_NOTSETBYDRIVER, e.recovery, s.recovery},
        " Recovery Value ", RecoveryName,
        " Recovery forced to PRN_PROP_RECOVERY_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ LF Before Cut ++++++");
    if constexpr (kSave) {
        p.lfBeforeCut = static_cast<uint8_t>(lfBeforeCut_);
        log.Line(" Value <%d>", p.lfBeforeCut);
        if (p.lfBeforeCut >= kLfBeforeCutLimit) {
            p.lfBeforeCut = 0;
            log.Line(" forced to 0 because the value %d is over %d", lfBeforeCut_,
                     kLfBeforeCutLimit);
        }
    } else {
        lfBeforeCut_ = p.lfBeforeCut;
        log.Line(" Value <%d>", lfBeforeCut_);
        if (lfBeforeCut_ >= kLfBeforeCutLimit) {
            log.Line(" forced to 0 because the value %d is over %d", lfBeforeCut_,
                     kLfBeforeCutLimit);
            lfBeforeCut_ = 0;
        }
    }

    log.Text("++++++ Continuous Mode ++++++");
    GatedByte<kSave>(log, p.supContinuousMode, p.continuousMode, continuousMode_,
                     {continuousModeList_, PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER, e.continuousMode,
                      s.continuousMode},
                     " Value ", ContinuousModeName,
                     " forced to PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ Feeder ++++++");
    if (p.supFeeder != 0) {
        if constexpr (kSave) {
            p.feeder = feeder_;
            log.Named(" Value ", FeederName, p.feeder);
        } else {
            feeder_ = LoadOffered<uint16_t>(
                log, " Value ", FeederName, p.feeder,
                {feederList_, PRN_PROP_FEEDER_NOTSETBYDRIVER, e.feeder, s.feeder});
        }
    } else {
        if constexpr (kSave) {
            p.feeder = PRN_PROP_FEEDER_NOTSETBYDRIVER;
        } else {
            feeder_ = PRN_PROP_FEEDER_NOTSETBYDRIVER;
        }
        log.Text(" forced to PRN_PROP_FEEDER_NOTSETBYDRIVER because isn't supported");
    }

    log.Text("++++++ Selector ++++++");
    GatedByte<kSave>(log, p.supSelector, p.selector, selector_,
                     {selectorList_, PRN_PROP_SELECTOR_NOTSETBYDRIVER, e.selector, s.selector},
                     " Value ", SelectorName,
                     " forced to PRN_PROP_SELECTOR_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ Presentation ++++++");
    if (p.supPresentation != 0) {
        MoveOffered<kSave>(log, p.presentationMode, presentationMode_, " Value ", PresentationName,
                           {presentationList_, PRN_PROP_PRESENT_NOTSETBYDRIVER, e.presentationMode,
                            s.presentationMode});
        KIV_MOVE(p.presentationValue, presentationValue_);
        // A byte holds every length the page accepts; the duration must be 1 or more where the
        // mode uses it.
        const auto isDuration = [mode = presentationMode_](long value) {
            return !DurationApplies(mode) || (value >= kDurationMin && value <= kPresentationMax);
        };
        KIV_MOVE_CHECKED(p.presentationTimeout, presentationTimeout_, " TO Value ", isDuration,
                         s.presentationTimeout);
        log.Line(" Value %d", KIV_HELD(p.presentationValue, presentationValue_));
        log.Line(" TO Value %dms", KIV_HELD(p.presentationTimeout, presentationTimeout_));
    } else {
        if constexpr (kSave) {
            p.presentationMode = PRN_PROP_PRESENT_NOTSETBYDRIVER;
        } else {
            presentationMode_ = PRN_PROP_PRESENT_NOTSETBYDRIVER;
            presentationValue_ = 0;
            presentationTimeout_ = 1;  // kept-behaviour: Presentation time-out 1
        }
        log.Text(" forced to PRN_PROP_PRESENT_NOTSETBYDRIVER because isn't supported");
    }
    GatedByte<kSave>(log, p.supHeadLed, p.headLed, headLed_,
                     {headLedList_, PRN_HLED_OFF, e.headLed, s.headLed}, " HLed Value ",
                     HeadLedName, " HLed Value forced to PRN_HLED_OFF because isn't supported");

    log.Text("++++++ Blackmark ++++++");
    GatedByte<kSave>(log, p.supBlackMark, p.blackMark, blackMark_,
                     {blackMarkList_, PRN_PROP_BMARK_NOTSETBYDRIVER, e.blackMark, s.blackMark},
                     " Value ", BlackMarkName,
                     " forced to PRN_PROP_BMARK_NOTSETBYDRIVER because isn't supported");

    log.Text("++++++ Page 2 Page ++++++");
    if (p.supPage2Page != 0) {
        KIV_MOVE_CHECKED(p.page2PageEnable, page2PageEnable_, " Page2Page Enable ", IsFlag, 0);
        log.Line(" Page2Page Enable <%d>", page2PageEnable_);
        if (page2PageEnable_ != 0) {
            // The action has no not-set value: its starting value stands in for one.
            MoveOffered<kSave>(
                log, p.page2PageAction, page2PageAction_, " Page2Page After TO ",
                Page2PageActionName,
                {page2PageActionList_, s.page2PageAction, e.page2PageAction, s.page2PageAction});
            // Every 16-bit time-out is one the page can show: 0xFFFF is "Unlimited".
            KIV_MOVE(p.page2PageTimeout, page2PageTimeout_);
            KIV_MOVE_CHECKED(p.page2PageExtra, page2PageExtra_, " Page2Page After TO Extra ",
                             IsAfterTimeout, s.page2PageExtra);
            log.Line(" TO %d sec (0x%04X)", page2PageTimeout_, page2PageTimeout_);
            log.Named(" Page2Page After TO Extra ", Page2PageAfterToName, page2PageExtra_);
        }
    } else {
        if constexpr (kSave) {
            p.page2PageEnable = 0;
        } else {
            page2PageEnable_ = 0;
        }
        log.Text(" forced to FALSE because isn't supported");
    }

    log.Text("++++++ Watermark ++++++");
    KIV_MOVE_CHECKED(p.watermarkEnable, watermarkEnable_, " Watermark Enable ", IsFlag, 0);
    log.Line(" Watermark Enable <%d>", watermarkEnable_);
    if (watermarkEnable_ != 0) {
        KIV_MOVE_CHECKED(p.watermarkDrawPosition, watermarkDrawPosition_, " Draw Position ",
                         IsWatermarkLayer, WK_UNDER, WatermarkDrawPositionName);
        KIV_MOVE_CHECKED(p.watermarkDrawType, watermarkDrawType_, " Draw Type ", IsWatermarkFit,
                         WK_DSTRETCH, WatermarkDrawTypeName);
        KIV_MOVE_CHECKED(p.watermarkVHPosition, watermarkVHPosition_, " VH Position ",
                         IsWatermarkPlace, WK_TOPLEFT, WatermarkVHPositionName);
        KIV_MOVE_CHECKED(p.watermarkBrightnessEnable, watermarkBrightnessEnable_,
                         " Brightness Enable ", IsFlag, 0);
        // The record keeps the brightness mirrored around 200, in one byte.
        if constexpr (kSave) {
            StoreText(p.watermarkPath, watermarkPath_);
            p.watermarkBrightness = static_cast<uint8_t>(kBrightnessMirror - watermarkBrightness_);
        } else {
            watermarkPath_ = LoadCheckedText(log, " Path ", p.watermarkPath);
            const auto isBrightness = [](long stored) { return stored <= kBrightnessMax; };
            watermarkBrightness_ =
                kBrightnessMirror -
                Accepted<uint8_t>(log, " Brightness100 ", p.watermarkBrightness,
                                  isBrightness(p.watermarkBrightness),
                                  static_cast<uint8_t>(kBrightnessMirror - kDefaultBrightness));
        }
        log.Named(" Draw Position ", WatermarkDrawPositionName, watermarkDrawPosition_);
        log.Named(" Draw Type ", WatermarkDrawTypeName, watermarkDrawType_);
        log.Named(" VH Position ", WatermarkVHPositionName, watermarkVHPosition_);
        log.Named(" Path ", watermarkPath_);
        log.Line(" Brightness Enable <%d>",
                 KIV_HELD(p.watermarkBrightnessEnable, watermarkBrightnessEnable_));
        // An integer behind %f, converted so that the call is well defined (kept-behaviour:
        // Floating-point log lines).
        log.Line(" Brightness100 %f", static_cast<double>(watermarkBrightness_));
    }

    log.Text("++++++ Coupon ++++++");
    KIV_MOVE_CHECKED(p.couponEnable, couponEnable_, " Coupon Enable ", IsFlag, 0);
    log.Line(" Coupon Enable <%d>", couponEnable_);
    if (couponEnable_ != 0) {
        if constexpr (kSave) {
            p.couponScale = kCouponScale;
            StoreText(p.couponPath, couponPath_);
        } else {
            couponPath_ = LoadCheckedText(log, " Path ", p.couponPath);
        }
        KIV_MOVE_CHECKED(p.couponDrawType, couponDrawType_, " Draw Type ", IsImageSize, IM_DKEEP,
                         ImageDrawTypeName);
        KIV_MOVE_CHECKED(p.couponDrawPosition, couponDrawPosition_, " Draw Position ", IsImageAlign,
                         IM_DALIGN_LEFT);
        KIV_MOVE(p.couponCutInter, couponCutInter_);
        KIV_MOVE(p.couponCutFinal, couponCutFinal_);
        // The record's default of 0 copies is no count the page offers; it shows 1.
        KIV_MOVE_CHECKED(p.couponCopies, couponCopies_, " Copies ", IsCouponCopies, 1);
        log.Named(" Path ", couponPath_);
        log.Named(" Draw Type ", ImageDrawTypeName, couponDrawType_);
        log.Named(" Draw Position ", ImageDrawPositionName, couponDrawPosition_);
        log.Named(" Cut Mode Inter ", CouponCutName, couponCutInter_);
        log.Named(" Cut Mode Final ", CouponCutName, couponCutFinal_);
        log.Line(" Copies %d", couponCopies_);
    }

    static constexpr const char* kLogoHeads[kLogoCount] = {
        "++++++ Begin Doc Logo ++++++", "++++++ Begin Page Logo ++++++",
        "++++++ End Page Logo ++++++", "++++++ End Doc Logo ++++++"};
    for (size_t i = 0; i < kLogoCount; ++i) {
        auto& record = p.logos[i];
        LogoSettings& logo = logos_[i];
        log.Text(kLogoHeads[i]);
        KIV_MOVE_CHECKED(record.enable, logo.enable, " Logo Enable ", IsFlag, 0);
        log.Line(" Logo Enable <%d>", logo.enable);
        if (logo.enable != 0) {
            KIV_MOVE_CHECKED(record.source, logo.source, " Source ", IsFlag,
                             LOGO_TYPE_PRINTFROMFLASH, LogoSourceName);
            KIV_MOVE_CHECKED(record.drawType, logo.drawType, " Draw Type ", IsImageSize, IM_DKEEP,
                             ImageDrawTypeName);
            KIV_MOVE_CHECKED(record.drawPosition, logo.drawPosition, " Draw Position ",
                             IsImageAlign, IM_DALIGN_LEFT, ImageDrawPositionName);
            if constexpr (kSave) {
                StoreText(record.path, logo.path);
            } else {
                logo.path = LoadCheckedText(log, " Path or number ", record.path);
            }
            log.Named(" Source ", LogoSourceName, logo.source);
            log.Named(" Draw Type ", ImageDrawTypeName, logo.drawType);
            log.Named(" Draw Position ", ImageDrawPositionName, logo.drawPosition);
            log.Named(" Path or number ", logo.path);
        }
    }

    log.Text("++++++ Offset ++++++");
    KIV_MOVE(p.offsetX, offsetX_);
    KIV_MOVE(p.offsetY, offsetY_);
    if (!kSave && (OffsetOrZero(offsetX_) != offsetX_ || OffsetOrZero(offsetY_) != offsetY_)) {
        const std::string stored = log.On() ? OffsetText(offsetX_, offsetY_) : std::string();
        offsetX_ = OffsetOrZero(offsetX_);
        offsetY_ = OffsetOrZero(offsetY_);
        if (log.On()) {
            log.Mapped(" Offset ", stored, OffsetText(offsetX_, offsetY_));
        }
    } else {
        log.Line(" Offset X:%d Y:%d", offsetX_, offsetY_);
    }

    log.Text("++++++ Paper Reduction ++++++");
    KIV_MOVE_CHECKED(p.reductionEnable, reductionEnable_, " Paper Reduction Enable ", IsFlag, 0);
    log.Line(" Paper Reduction Enable <%d>", reductionEnable_);
    if (reductionEnable_ != 0) {
        KIV_MOVE_CHECKED(p.reductionMode, reductionMode_, " Reduction Mode ", IsReductionMode,
                         REDW_ABSOLUTEVAL, ReductionModeName);
        KIV_MOVE(p.reductionMinValue, reductionMinValue_);
        // The record's default of 0 is no step the page offers; it shows the first.
        KIV_MOVE_CHECKED(p.reductionValue, reductionValue_, " Value ", IsReductionStep,
                         UiDeviceCommon::PercentFromPosition(0));
        log.Named(" Reduction Mode ", ReductionModeName, reductionMode_);
        log.Line(" Min Value %d", reductionMinValue_);
        // As for the brightness: an integer behind %f, converted so the call is well defined.
        log.Line(" Value %f", static_cast<double>(reductionValue_));
    }

    log.Text("++++++ Convertion image to 1Bit ++++++");  // kept-behaviour: Texts kept as written
    static const std::vector<uint8_t> kConversionModes = {CMODE_AUTO, CMODE_NONE_THRESHOLD,
                                                          CMODE_ERRDIFF_FLOYD_STEINBERG};
    MoveOffered<kSave>(log, p.convMode, convMode_, " Mode ", ConversionModeName,
                       {kConversionModes, CMODE_AUTO, CMODE_AUTO, CMODE_AUTO});
    KIV_MOVE(p.convThreshold, convThreshold_);
    KIV_MOVE(p.convFilterUp, convFilterUp_);
    KIV_MOVE(p.convFilterDown, convFilterDown_);
    if (!kSave && !ConversionIsUsable(convThreshold_, convFilterUp_, convFilterDown_)) {
        if (log.On()) {
            log.Mapped(" Threshold/Filter UP/Filter DOWN ",
                       ConversionText(convThreshold_, convFilterUp_, convFilterDown_),
                       ConversionText(kConvThreshold, kConvFilterUp, kConvFilterDown));
        }
        convThreshold_ = kConvThreshold;
        convFilterUp_ = kConvFilterUp;
        convFilterDown_ = kConvFilterDown;
    } else {
        log.Line(" Threshold %d", convThreshold_);
        log.Line(" Filter UP %d", convFilterUp_);
        log.Line(" Filter DOWN %d", convFilterDown_);
    }

    const uint16_t startLength = MoveFreeBuffer<kSave>(
        log, "++++++ Free Buffers Start Job ++++++", p.startJobBufferMode, p.startJobBuffer,
        p.startJobBufferLength, startJobBufferMode_, startJobBuffer_);
    const uint16_t endLength = MoveFreeBuffer<kSave>(
        log, "++++++ Free Buffers End Job ++++++", p.endJobBufferMode, p.endJobBuffer,
        p.endJobBufferLength, endJobBufferMode_, endJobBuffer_);
    if constexpr (kSave) {
        p.startJobBufferLength = startLength;
        p.endJobBufferLength = endLength;
    }

    log.Text("++++++ Extra ++++++");
    KIV_MOVE_CHECKED(p.skipWhitePages, skipWhitePages_, " Skip White Pages ", IsFlag, 0);
    KIV_MOVE_CHECKED(p.whiteTopCrop, whiteTopCrop_, " White Top Crop ", IsFlag, 0);
    KIV_MOVE_CHECKED(p.whiteBottomCrop, whiteBottomCrop_, " White Bottom Crop ", IsFlag, 0);
    KIV_MOVE_CHECKED(p.rotate180, rotate180_, " Rotate Page 180 ", IsFlag, 0);
    log.Line(" Skip White Pages :%d", skipWhitePages_);
    log.Line(" White Top Crop :%d", whiteTopCrop_);
    log.Line(" White Bottom Crop :%d", whiteBottomCrop_);
    log.Line(" Rotate Page 180 :%d", rotate180_);
    log.Text(kStars);
}

#undef KIV_MOVE
#undef KIV_MOVE_CHECKED
#undef KIV_HELD

template void UiDeviceCommon::TransferSettings<true>(OemDevPayload&);
template void UiDeviceCommon::TransferSettings<false>(const OemDevPayload&);
