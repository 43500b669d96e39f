// The payload's field table and the bounded access to one field.
#include "settings/settings_fields.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "infra/text_format.h"
#include "pages/label_tables.h"
#include "settings/setting_enums.h"
#include "settings/setting_ranges.h"

namespace {

#define KIV_AT(field) static_cast<uint16_t>(offsetof(OemDevPayload, field))

template <const std::vector<uint8_t>& (UiDeviceCommon::*kList)() const>
std::vector<uint16_t> ListOf(const UiDeviceCommon& model) {
    const std::vector<uint8_t>& values = (model.*kList)();
    return {values.begin(), values.end()};
}

std::vector<uint16_t> FeederList(const UiDeviceCommon& model) {
    return model.GetFeederList();
}

std::vector<uint16_t> DrawerPins(const UiDeviceCommon&) {
    return {PRN_PROP_CDPINS_PIN1, PRN_PROP_CDPINS_PIN2, PRN_PROP_CDPINS_PIN1AND2};
}

const char* At(const LabelList& labels, long index) {
    return index >= 0 && index < static_cast<long>(labels.size()) ? labels[index].c_str() : nullptr;
}

// The label lists that step by 16 from 16 (the drawer and buzzer phases).
const char* Stepped(const LabelList& labels, long value) {
    return value % 16 == 0 ? At(labels, value / 16 - 1) : nullptr;
}

template <Capability kCapability>
const char* CapabilityOf(long value) {
    return value >= 0 && value <= 0xFFFF
               ? CapabilityLabel(kCapability, static_cast<uint16_t>(value))
               : nullptr;
}

bool IsReductionStep(long value) {
    return value >= 0 && value <= 0xFFFF &&
           UiDeviceCommon::PercentFromPosition(
               UiDeviceCommon::PositionFromPercent(static_cast<int>(value))) == value;
}

const char* WatermarkPlaceLabel(long value) {
    if (LookupSettingName(kWatermarkVHPositionNames, static_cast<uint16_t>(value)) == "NOID")
        return nullptr;
    return At(WatermarkPositionLabels(), PositionCodeToIndex(static_cast<int>(value)));
}

const char* CommandSourceLabel(long value) {
    if (value == FREE_CMD_MODE_NONE || value == FREE_CMD_MODE_FILENAME)
        return At(ConsoleCommandSourceLabels(), value);
    return IsTextMode(static_cast<uint8_t>(value)) ? At(ConsoleCommandSourceLabels(), 2) : nullptr;
}

void AddLogos(std::vector<SettingField>& rows) {
    for (size_t i = 0; i < kLogoCount; ++i) {
        const auto at = static_cast<uint16_t>(KIV_AT(logos) + i * sizeof(OemLogo));
        const std::string name = "logos[" + std::to_string(i) + "].";
        const uint16_t enable = static_cast<uint16_t>(at + offsetof(OemLogo, enable));
        rows.push_back({.name = name + "enable", .offset = enable, .kind = FieldKind::Flag});
        rows.push_back({.name = name + "source",
                        .offset = static_cast<uint16_t>(at + offsetof(OemLogo, source)),
                        .kind = FieldKind::Enum,
                        .names = kLogoSourceNames,
                        .enable = enable,
                        .label = [](long v) { return At(LogoSourceLabels(), v); }});
        rows.push_back({.name = name + "drawType",
                        .offset = static_cast<uint16_t>(at + offsetof(OemLogo, drawType)),
                        .kind = FieldKind::Enum,
                        .names = kImageDrawTypeNames,
                        .enable = enable,
                        .label = [](long v) { return At(LogoSizeLabels(), v); }});
        rows.push_back({.name = name + "drawPosition",
                        .offset = static_cast<uint16_t>(at + offsetof(OemLogo, drawPosition)),
                        .kind = FieldKind::Enum,
                        .names = kImageDrawPositionNames,
                        .enable = enable,
                        .label = [](long v) { return At(LogoAlignLabels(), v); }});
        rows.push_back({.name = name + "path",
                        .offset = static_cast<uint16_t>(at + offsetof(OemLogo, path)),
                        .width = kPathSize,
                        .kind = FieldKind::Text,
                        .enable = enable});
    }
}

// A free command buffer's three fields: its length, its mode and its bytes.
void AddBuffer(std::vector<SettingField>& rows, const std::string& stem, uint16_t length,
               uint16_t mode, uint16_t data) {
    rows.push_back(
        {.name = stem + "Length", .offset = length, .width = 2, .kind = FieldKind::Derived});
    rows.push_back({.name = stem + "Mode",
                    .offset = mode,
                    .kind = FieldKind::Enum,
                    .names = kFreeCmdModeNames,
                    .label = CommandSourceLabel});
    rows.push_back({.name = stem,
                    .offset = data,
                    .width = kFreeBufferSize,
                    .kind = FieldKind::Buffer,
                    .lengthAt = length});
}

std::vector<SettingField> MakeFields() {
    const uint16_t supDrawer = KIV_AT(supCashDrawer);
    const uint16_t drawerOn = KIV_AT(cashDrawerEnable);
    const uint16_t supPresentation = KIV_AT(supPresentation);
    const uint16_t supPage2Page = KIV_AT(supPage2Page);
    const uint16_t page2PageOn = KIV_AT(page2PageEnable);
    const uint16_t watermarkOn = KIV_AT(watermarkEnable);
    const uint16_t couponOn = KIV_AT(couponEnable);
    const uint16_t reductionOn = KIV_AT(reductionEnable);
    std::vector<SettingField> rows = {
        {.name = "modelName",
         .offset = KIV_AT(modelName),
         .width = kModelNameSize,
         .kind = FieldKind::Identity},
        {.name = "secondaryName",
         .offset = KIV_AT(secondaryName),
         .width = kSecondaryNameSize,
         .kind = FieldKind::Identity},
        {.name = "supCashDrawer", .offset = supDrawer, .kind = FieldKind::Sup},
        {.name = "cashDrawerEnable", .offset = drawerOn, .kind = FieldKind::Flag, .sup = supDrawer},
        {.name = "cashDrawerPins",
         .offset = KIV_AT(cashDrawerPins),
         .kind = FieldKind::Enum,
         .names = kCdPinsNames,
         .offered = DrawerPins,
         .sup = supDrawer,
         .enable = drawerOn,
         .label = [](long v) { return At(CashDrawerPinLabels(), v - 1); }},
        {.name = "cashDrawerTimeOn",
         .offset = KIV_AT(cashDrawerTimeOn),
         .width = 2,
         .min = kPulseMin,
         .max = kPulseMax,
         .sup = supDrawer,
         .enable = drawerOn,
         .unset = kDefaultPulse,
         .unit = " ms"},
        {.name = "cashDrawerTimeOff",
         .offset = KIV_AT(cashDrawerTimeOff),
         .width = 2,
         .min = kPulseMin,
         .max = kPulseMax,
         .sup = supDrawer,
         .enable = drawerOn,
         .unset = kDefaultPulse,
         .unit = " ms"},
        {.name = "cashDrawerPhase",
         .offset = KIV_AT(cashDrawerPhase),
         .kind = FieldKind::Enum,
         .names = kCdPhaseNames,
         .offered = ListOf<&UiDeviceCommon::GetCashDrawerPhaseList>,
         .sup = supDrawer,
         .enable = drawerOn,
         .label = [](long v) { return Stepped(CashDrawerPhaseLabels(), v); }},
        {.name = "supDensity", .offset = KIV_AT(supDensity), .kind = FieldKind::Sup},
        {.name = "density",
         .offset = KIV_AT(density),
         .kind = FieldKind::Enum,
         .names = kDensityNames,
         .offered = ListOf<&UiDeviceCommon::GetDensityList>,
         .sup = KIV_AT(supDensity),
         .label = CapabilityOf<Capability::Density>},
        {.name = "supQuality", .offset = KIV_AT(supQuality), .kind = FieldKind::Sup},
        {.name = "quality",
         .offset = KIV_AT(quality),
         .kind = FieldKind::Enum,
         .names = kQualityNames,
         .offered = ListOf<&UiDeviceCommon::GetQualityList>,
         .sup = KIV_AT(supQuality),
         .label = CapabilityOf<Capability::Quality>},
        {.name = "supCutter", .offset = KIV_AT(supCutter), .kind = FieldKind::Sup},
        {.name = "cutMode",
         .offset = KIV_AT(cutMode),
         .kind = FieldKind::Enum,
         .names = kCutModeNames,
         .offered = ListOf<&UiDeviceCommon::GetCutModeList>,
         .sup = KIV_AT(supCutter),
         .label = CapabilityOf<Capability::Cutter>},
        {.name = "lfBeforeCut", .offset = KIV_AT(lfBeforeCut), .min = 0, .max = 15},
        {.name = "supRecovery", .offset = KIV_AT(supRecovery), .kind = FieldKind::Sup},
        {.name = "recovery",
         .offset = KIV_AT(recovery),
         .kind = FieldKind::Enum,
         .names = kRecoveryNames,
         .offered = ListOf<&UiDeviceCommon::GetRecoveryList>,
         .sup = KIV_AT(supRecovery),
         .label = CapabilityOf<Capability::Recovery>},
        {.name = "supBlackMark", .offset = KIV_AT(supBlackMark), .kind = FieldKind::Sup},
        {.name = "blackMark",
         .offset = KIV_AT(blackMark),
         .kind = FieldKind::Enum,
         .names = kBlackMarkNames,
         .offered = ListOf<&UiDeviceCommon::GetBlackMarkList>,
         .sup = KIV_AT(supBlackMark),
         .label = CapabilityOf<Capability::BlackMark>},
        {.name = "supPresentation", .offset = supPresentation, .kind = FieldKind::Sup},
        {.name = "presentationMode",
         .offset = KIV_AT(presentationMode),
         .kind = FieldKind::Enum,
         .names = kPresentationNames,
         .offered = ListOf<&UiDeviceCommon::GetPresentationList>,
         .sup = supPresentation,
         .label = CapabilityOf<Capability::Presenter>},
        {.name = "presentationValue",
         .offset = KIV_AT(presentationValue),
         .min = 0,
         .max = kPresentationMax,
         .sup = supPresentation},
        {.name = "presentationTimeout",
         .offset = KIV_AT(presentationTimeout),
         .min = 0,
         .max = kPresentationMax,
         .sup = supPresentation},
        {.name = "supHeadLed", .offset = KIV_AT(supHeadLed), .kind = FieldKind::Sup},
        {.name = "headLed",
         .offset = KIV_AT(headLed),
         .kind = FieldKind::Enum,
         .names = kHeadLedNames,
         .offered = ListOf<&UiDeviceCommon::GetHeadLedList>,
         .sup = KIV_AT(supHeadLed),
         .label = CapabilityOf<Capability::PresenterLed>},
        {.name = "supBuzzer", .offset = KIV_AT(supBuzzer), .kind = FieldKind::Sup},
        {.name = "buzzer",
         .offset = KIV_AT(buzzer),
         .kind = FieldKind::Enum,
         .names = kBuzzerNames,
         .offered = ListOf<&UiDeviceCommon::GetBuzzerList>,
         .sup = KIV_AT(supBuzzer),
         .label = [](long v) { return Stepped(BuzzerPhaseLabels(), v); }},
        {.name = "supContinuousMode", .offset = KIV_AT(supContinuousMode), .kind = FieldKind::Sup},
        {.name = "continuousMode",
         .offset = KIV_AT(continuousMode),
         .kind = FieldKind::Enum,
         .names = kContinuousModeNames,
         .offered = ListOf<&UiDeviceCommon::GetContinuousModeList>,
         .sup = KIV_AT(supContinuousMode),
         .unset = PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER,
         .label = CapabilityOf<Capability::ContinuousMode>},
        {.name = "supFeeder", .offset = KIV_AT(supFeeder), .kind = FieldKind::Sup},
        {.name = "feeder",
         .offset = KIV_AT(feeder),
         .width = 2,
         .kind = FieldKind::Enum,
         .names = kFeederNames,
         .offered = FeederList,
         .sup = KIV_AT(supFeeder),
         .label = CapabilityOf<Capability::Feeder>},
        {.name = "supSelector", .offset = KIV_AT(supSelector), .kind = FieldKind::Sup},
        {.name = "selector",
         .offset = KIV_AT(selector),
         .kind = FieldKind::Enum,
         .names = kSelectorNames,
         .offered = ListOf<&UiDeviceCommon::GetSelectorList>,
         .sup = KIV_AT(supSelector),
         .label = CapabilityOf<Capability::Selector>},
        {.name = "supPage2Page", .offset = supPage2Page, .kind = FieldKind::Sup},
        {.name = "page2PageEnable",
         .offset = page2PageOn,
         .kind = FieldKind::Flag,
         .sup = supPage2Page},
        // The action has no not-set value: 0, what a disabled record holds, has no name.
        {.name = "page2PageAction",
         .offset = KIV_AT(page2PageAction),
         .kind = FieldKind::Enum,
         .names = kPage2PageActionNames,
         .offered = ListOf<&UiDeviceCommon::GetPage2PageActionList>,
         .unsetOffered = false,
         .sup = supPage2Page,
         .enable = page2PageOn,
         .label = CapabilityOf<Capability::PageToPageAction>},
        {.name = "page2PageCheckPoint",
         .offset = KIV_AT(page2PageCheckPoint),
         .kind = FieldKind::Model,
         .names = kPage2PageCheckToNames},
        {.name = "page2PageTimeout",
         .offset = KIV_AT(page2PageTimeout),
         .width = 2,
         .min = 0,
         .max = 0xFFFF,
         .sup = supPage2Page,
         .enable = page2PageOn,
         .unit = " s"},
        {.name = "page2PageExtra",
         .offset = KIV_AT(page2PageExtra),
         .width = 2,
         .kind = FieldKind::Enum,
         .names = kPage2PageAfterToNames,
         .sup = supPage2Page,
         .enable = page2PageOn,
         .label = [](long v) { return At(AfterTimeoutLabels(), v); }},
        {.name = "watermarkEnable", .offset = watermarkOn, .kind = FieldKind::Flag},
        {.name = "watermarkDrawPosition",
         .offset = KIV_AT(watermarkDrawPosition),
         .kind = FieldKind::Enum,
         .names = kWatermarkDrawPositionNames,
         .enable = watermarkOn,
         .label = [](long v) { return At(WatermarkLayerLabels(), v); }},
        {.name = "watermarkDrawType",
         .offset = KIV_AT(watermarkDrawType),
         .kind = FieldKind::Enum,
         .names = kWatermarkDrawTypeNames,
         .enable = watermarkOn,
         .label = [](long v) { return At(WatermarkFitLabels(), v); }},
        {.name = "watermarkVHPosition",
         .offset = KIV_AT(watermarkVHPosition),
         .kind = FieldKind::Enum,
         .names = kWatermarkVHPositionNames,
         .enable = watermarkOn,
         .label = WatermarkPlaceLabel},
        {.name = "watermarkPath",
         .offset = KIV_AT(watermarkPath),
         .width = kPathSize,
         .kind = FieldKind::Text,
         .enable = watermarkOn},
        {.name = "reserved942", .offset = KIV_AT(reserved942), .kind = FieldKind::Reserved},
        {.name = "reserved943", .offset = KIV_AT(reserved943), .kind = FieldKind::Reserved},
        {.name = "watermarkBrightnessEnable",
         .offset = KIV_AT(watermarkBrightnessEnable),
         .kind = FieldKind::Flag,
         .enable = watermarkOn},
        {.name = "watermarkBrightness",
         .offset = KIV_AT(watermarkBrightness),
         .min = 0,
         .max = kBrightnessMax,
         .enable = watermarkOn,
         .mirrored = true},
        {.name = "convMode",
         .offset = KIV_AT(convMode),
         .kind = FieldKind::Enum,
         .names = kConversionModeNames,
         .label = [](long v) { return At(DitheringLabels(), v); }},
        {.name = "convThreshold", .offset = KIV_AT(convThreshold), .min = 0, .max = 255},
        {.name = "convFilterUp", .offset = KIV_AT(convFilterUp), .min = 0, .max = 255},
        {.name = "convFilterDown", .offset = KIV_AT(convFilterDown), .min = 0, .max = 255},
    };
    AddLogos(rows);
    const std::vector<SettingField> coupon = {
        {.name = "couponEnable", .offset = couponOn, .kind = FieldKind::Flag},
        {.name = "couponCopies",
         .offset = KIV_AT(couponCopies),
         .min = 1,
         .max = kCouponCopiesMax,
         .enable = couponOn},
        {.name = "couponDrawType",
         .offset = KIV_AT(couponDrawType),
         .kind = FieldKind::Enum,
         .names = kImageDrawTypeNames,
         .enable = couponOn,
         .label = [](long v) { return At(CouponSizeLabels(), v); }},
        {.name = "couponDrawPosition",
         .offset = KIV_AT(couponDrawPosition),
         .kind = FieldKind::Enum,
         .names = kImageDrawPositionNames,
         .enable = couponOn,
         .label = [](long v) { return At(CouponAlignLabels(), v); }},
        {.name = "couponCutInter",
         .offset = KIV_AT(couponCutInter),
         .kind = FieldKind::Enum,
         .names = kCouponCutNames,
         .enable = couponOn,
         .label = CapabilityOf<Capability::CouponCut>},
        {.name = "couponCutFinal",
         .offset = KIV_AT(couponCutFinal),
         .kind = FieldKind::Enum,
         .names = kCouponCutNames,
         .enable = couponOn,
         .label = CapabilityOf<Capability::CouponCut>},
        {.name = "couponScale", .offset = KIV_AT(couponScale), .kind = FieldKind::Derived},
        {.name = "couponPath",
         .offset = KIV_AT(couponPath),
         .width = kPathSize,
         .kind = FieldKind::Text,
         .enable = couponOn},
    };
    rows.insert(rows.end(), coupon.begin(), coupon.end());
    AddBuffer(rows, "startJobBuffer", KIV_AT(startJobBufferLength), KIV_AT(startJobBufferMode),
              KIV_AT(startJobBuffer));
    AddBuffer(rows, "endJobBuffer", KIV_AT(endJobBufferLength), KIV_AT(endJobBufferMode),
              KIV_AT(endJobBuffer));
    const std::vector<SettingField> tail = {
        {.name = "offsetX",
         .offset = KIV_AT(offsetX),
         .width = 2,
         .isSigned = true,
         .min = kOffsetMin,
         .max = kOffsetMax},
        {.name = "offsetY",
         .offset = KIV_AT(offsetY),
         .width = 2,
         .isSigned = true,
         .min = kOffsetMin,
         .max = kOffsetMax},
        {.name = "reductionEnable", .offset = reductionOn, .kind = FieldKind::Flag},
        {.name = "reductionMode",
         .offset = KIV_AT(reductionMode),
         .kind = FieldKind::Enum,
         .names = kReductionModeNames,
         .enable = reductionOn},
        {.name = "reductionMinValue",
         .offset = KIV_AT(reductionMinValue),
         .width = 2,
         .min = 0,
         .max = 0xFFFF,
         .enable = reductionOn},
        {.name = "reductionValue",
         .offset = KIV_AT(reductionValue),
         .width = 2,
         .accepts = IsReductionStep,
         .expected = "12, 25, 37, 50, 62, 75, 87 or 100",
         .enable = reductionOn},
        {.name = "skipWhitePages", .offset = KIV_AT(skipWhitePages), .kind = FieldKind::Flag},
        {.name = "whiteTopCrop", .offset = KIV_AT(whiteTopCrop), .kind = FieldKind::Flag},
        {.name = "whiteBottomCrop", .offset = KIV_AT(whiteBottomCrop), .kind = FieldKind::Flag},
        {.name = "rotate180", .offset = KIV_AT(rotate180), .kind = FieldKind::Flag},
    };
    rows.insert(rows.end(), tail.begin(), tail.end());
    return rows;
}

#undef KIV_AT

const uint8_t* Bytes(const OemDevPayload& p) {
    return reinterpret_cast<const uint8_t*>(&p);
}

uint8_t* Bytes(OemDevPayload& p) {
    return reinterpret_cast<uint8_t*>(&p);
}

}  // namespace

const std::vector<SettingField>& SettingFields() {
    static const std::vector<SettingField> rows = MakeFields();
    return rows;
}

const SettingField* FindSettingField(std::string_view name) {
    for (const SettingField& f : SettingFields()) {
        if (f.name == name)
            return &f;
    }
    return nullptr;
}

const SettingField& FieldAt(uint16_t offset) {
    return *std::find_if(SettingFields().begin(), SettingFields().end(),
                         [offset](const SettingField& f) { return f.offset == offset; });
}

OemDevPayload AsThePagesKeep(const UiDeviceCommon& model, const OemDevPayload& p) {
    std::unique_ptr<UiDeviceCommon> probe = model.Clone();
    std::string ignored;
    probe->FillUIDeviceValuesWithOEMDEV(ignored, p);
    OemDevPayload kept{};
    probe->FillOEMDEVWithDeviceValues(kept, 0);
    return kept;
}

bool IsFileSetting(const SettingField& f) {
    switch (f.kind) {
        case FieldKind::Flag:
        case FieldKind::Number:
        case FieldKind::Enum:
        case FieldKind::Text:
        case FieldKind::Buffer:
            return true;
        default:
            return false;
    }
}

long FieldValue(const OemDevPayload& p, const SettingField& f) {
    const uint8_t* at = Bytes(p) + f.offset;
    long value = at[0];
    if (f.width == 2) {
        const auto word = static_cast<uint16_t>(at[0] | at[1] << 8);
        value = f.isSigned ? static_cast<int16_t>(word) : word;
    }
    return f.mirrored ? kBrightnessMax - value : value;
}

void SetFieldValue(OemDevPayload& p, const SettingField& f, long value) {
    if (f.mirrored)
        value = kBrightnessMax - value;
    uint8_t* at = Bytes(p) + f.offset;
    at[0] = static_cast<uint8_t>(value & 0xFF);
    if (f.width == 2)
        at[1] = static_cast<uint8_t>((value >> 8) & 0xFF);
}

std::string FieldBytes(const OemDevPayload& p, const SettingField& f) {
    const auto* at = reinterpret_cast<const char*>(Bytes(p) + f.offset);
    if (f.kind == FieldKind::Buffer) {
        const uint8_t* length = Bytes(p) + f.lengthAt;
        const size_t n = std::min<size_t>(length[0] | length[1] << 8, f.width);
        return std::string(at, n);
    }
    return std::string(at, strnlen(at, f.width));
}

void SetFieldBytes(OemDevPayload& p, const SettingField& f, std::string_view bytes) {
    const size_t n = std::min<size_t>(bytes.size(), f.width);
    uint8_t* at = Bytes(p) + f.offset;
    std::memset(at, 0, f.width);
    std::memcpy(at, bytes.data(), n);
    if (f.kind == FieldKind::Buffer) {
        uint8_t* length = Bytes(p) + f.lengthAt;
        length[0] = static_cast<uint8_t>(n & 0xFF);
        length[1] = static_cast<uint8_t>(n >> 8);
    }
}

std::string QuoteBytes(std::string_view bytes) {
    std::string s = "\"";
    for (char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        if (c == '"' || c == '\\') {
            s += '\\';
            s += ch;
        } else if (c < 32 || c > 126) {
            AppendHexEscape(s, c);
        } else {
            s += ch;
        }
    }
    return s + '"';
}

std::string ValueName(const SettingField& f, long value) {
    if (!f.names.empty() && value >= 0 && value <= 0xFFFF) {
        for (const SettingName& entry : f.names) {
            if (entry.value == value)
                return entry.name;
        }
    }
    return std::to_string(value);
}

std::string FieldText(const OemDevPayload& p, const SettingField& f) {
    if (f.kind == FieldKind::Text || f.kind == FieldKind::Buffer)
        return QuoteBytes(FieldBytes(p, f));
    return ValueName(f, FieldValue(p, f));
}

bool SupClosed(const OemDevPayload& p, const SettingField& f) {
    return f.sup != kNoGate && Bytes(p)[f.sup] == 0;
}

bool EnableClosed(const OemDevPayload& p, const SettingField& f) {
    return f.enable != kNoGate && Bytes(p)[f.enable] == 0;
}

std::vector<uint16_t> OfferedValues(const SettingField& f, const UiDeviceCommon& model) {
    std::vector<uint16_t> values = f.offered(model);
    OemDevPayload exported{};
    model.ExportCapabilities(exported);
    const auto add = [&values](long v) {
        if (std::find(values.begin(), values.end(), v) == values.end())
            values.push_back(static_cast<uint16_t>(v));
    };
    if (f.unsetOffered)
        add(f.unset);
    add(FieldValue(exported, f));
    return values;
}

bool IsUnsetValue(const SettingField& f, long value) {
    return value == f.unset || value == 0;
}
