// `kivsettings show` and `decode`: a record setting by setting with what the model makes of it,
// and the search for a record in saved bytes.
#include <algorithm>
#include <cstring>
#include <memory>

#include "infra/text_format.h"
#include "settings/device_factory.h"
#include "settings/settings_fields.h"
#include "settings/settings_file.h"

namespace {

// DEVMODEW's public part: dmSize and dmDriverExtra follow the 64-byte device name and the two
// version words; the private part (the driver's and its plug-ins' blocks) follows dmSize bytes.
constexpr size_t kDmSizeAt = 68;
constexpr size_t kDmDriverExtraAt = 70;
constexpr size_t kDmPublicMin = 72;
// Today's public part has 220 bytes; far more is no devmode at all.
constexpr size_t kDmPublicMax = 1024;

uint32_t Le32(std::span<const uint8_t> b, size_t at) {
    return static_cast<uint32_t>(b[at]) | static_cast<uint32_t>(b[at + 1]) << 8 |
           static_cast<uint32_t>(b[at + 2]) << 16 | static_cast<uint32_t>(b[at + 3]) << 24;
}

uint16_t Le16(std::span<const uint8_t> b, size_t at) {
    return static_cast<uint16_t>(b[at] | b[at + 1] << 8);
}

bool StartsARecord(std::span<const uint8_t> b, size_t at) {
    return at + 8 <= b.size() && Le32(b, at) == OEMDEV_SIZE && Le32(b, at + 4) == KIVITEM_SIGNATURE;
}

std::string Bytes(size_t n) {
    return std::to_string(n) + (n == 1 ? " byte" : " bytes");
}

// What the repair before the pages would say of the record, or "".
std::string Damage(const OEMDEV& rec) {
    if (rec.dwSignHead1 != KIVITEM_SIGN_H || rec.dwSignHead2 != KIVITEM_SIGN_H)
        return Format(
            "its head guards are damaged (0x%08X 0x%08X); the plug-in resets it to the "
            "model's defaults",
            static_cast<unsigned>(rec.dwSignHead1), static_cast<unsigned>(rec.dwSignHead2));
    if (rec.dwVerCurrent != KIVITEM_VERCURRENT)
        return "its layout version is " + std::to_string(rec.dwVerCurrent) +
               ", not 2; the plug-in resets it to the model's defaults";
    if (rec.dwSignTail1 != KIVITEM_SIGN_T || rec.dwSignTail2 != KIVITEM_SIGN_T)
        return "its tail guards are damaged (the plug-in rewrites them)";
    return "";
}

FoundRecord Take(std::span<const uint8_t> bytes, size_t at) {
    FoundRecord found;
    found.found = true;
    std::memcpy(&found.record, bytes.data() + at, OEMDEV_SIZE);
    found.problem = Damage(found.record);
    if (!found.problem.empty())
        found.problem = "the settings record was found, but " + found.problem;
    return found;
}

FoundRecord NotFound(std::string problem) {
    FoundRecord missing;
    missing.problem = std::move(problem);
    return missing;
}

std::string ModelLabel(const std::string& name) {
    return name.empty() ? "the generic device" : name;
}

const SettingField& FieldNamed(const std::string& name) {
    return *FindSettingField(name);
}

}  // namespace

FoundRecord FindSettingsRecord(std::span<const uint8_t> bytes) {
    if (StartsARecord(bytes, 0)) {
        if (bytes.size() < OEMDEV_SIZE)
            return NotFound("the file holds " + Bytes(bytes.size()) + "; a settings record has " +
                            std::to_string(OEMDEV_SIZE));
        return Take(bytes, 0);
    }
    if (bytes.size() < kDmPublicMin)
        return NotFound("the file holds " + Bytes(bytes.size()) +
                        ": too short for a settings record (" + std::to_string(OEMDEV_SIZE) +
                        " bytes) or a devmode");
    const size_t dmSize = Le16(bytes, kDmSizeAt);
    const size_t dmDriverExtra = Le16(bytes, kDmDriverExtraAt);
    if (dmSize < kDmPublicMin || dmSize > kDmPublicMax)
        return NotFound("neither a settings record nor a devmode: its dmSize would be " +
                        std::to_string(dmSize));
    const size_t end = dmSize + dmDriverExtra;
    // The block sits at a 4-byte boundary in practice, but nothing guarantees it: every offset
    // of the private part is tried.
    size_t at = dmSize;
    while (at + 8 <= std::min(end, bytes.size()) && !StartsARecord(bytes, at))
        ++at;
    const bool signed_ = at + 8 <= std::min(end, bytes.size());
    if (end > bytes.size()) {
        const size_t needs = signed_ ? std::max(end, at + OEMDEV_SIZE) : end;
        return NotFound("the file holds " + Bytes(bytes.size()) + "; " +
                        (signed_ ? "a devmode with this record" : "the devmode") + " needs " +
                        std::to_string(needs) + " (dmSize " + std::to_string(dmSize) +
                        " + dmDriverExtra " + std::to_string(dmDriverExtra) + ")");
    }
    if (!signed_)
        return NotFound("the devmode (dmSize " + std::to_string(dmSize) + ", dmDriverExtra " +
                        std::to_string(dmDriverExtra) + ") holds no KivUI settings: no block of " +
                        std::to_string(OEMDEV_SIZE) + " bytes signed 'KIVC' in its private part");
    if (at + OEMDEV_SIZE > end)
        return NotFound("the devmode's private part ends " + Bytes(end - at) +
                        " into the settings record, which has " + std::to_string(OEMDEV_SIZE));
    return Take(bytes, at);
}

std::string ShowSettings(const OEMDEV& rec, const UiDeviceCommon& model) {
    const OemDevPayload& p = rec.payload;
    const std::string modelName = model.GetModelName();
    std::string out = "model " + QuoteBytes(FieldBytes(p, FieldNamed("modelName"))) +
                      ", secondary name " + QuoteBytes(FieldBytes(p, FieldNamed("secondaryName"))) +
                      "\n";
    if (FieldBytes(p, FieldNamed("modelName")) != modelName)
        out += "note: the printer is " + ModelLabel(modelName) +
               "; the plug-in resets a record of another model to its own defaults\n";
    // The model's capability bytes decide what counts, as the next save writes them; what the
    // pages make of each value is what loading the record and saving it again gives.
    OemDevPayload gates = p;
    OemDevPayload exported{};
    model.ExportCapabilities(exported);
    const OemDevPayload loaded = AsThePagesKeep(model, p);
    for (const SettingField& f : SettingFields()) {
        if (f.kind == FieldKind::Sup)
            SetFieldValue(gates, f, FieldValue(exported, f));
    }
    for (const SettingField& f : SettingFields()) {
        if (!IsFileSetting(f))
            continue;
        const std::string value = FieldText(p, f);
        out += f.name + " = " + value;
        const long number = FieldValue(p, f);
        if (f.label != nullptr) {
            if (const char* label = f.label(number))
                out += std::string(" \"") + label + "\"";
        }
        const bool unsupported = SupClosed(gates, f);
        if (unsupported) {
            out += "  (not supported by " + ModelLabel(modelName) + ")";
        } else if (f.offered != nullptr) {
            std::string offers;
            for (uint16_t v : f.offered(model))
                offers += (offers.empty() ? "" : ", ") + ValueName(f, v);
            out += "  offers: " + (offers.empty() ? std::string("nothing") : offers);
        }
        if (EnableClosed(gates, f)) {
            out += "  (unused while " + FieldAt(f.enable).name + " = 0)";
            out += '\n';
            continue;
        }
        out += '\n';
        const std::string kept = FieldText(loaded, f);
        if (kept == value || (unsupported && IsUnsetValue(f, number)))
            continue;
        std::string why;
        if (unsupported) {
            why = ModelLabel(modelName) + " does not support this setting";
        } else if (f.offered != nullptr) {
            const std::vector<uint16_t> offered = OfferedValues(f, model);
            if (std::find(offered.begin(), offered.end(), number) == offered.end())
                why = ModelLabel(modelName) + " does not offer this value";
        }
        out += "    note: " + (why.empty() ? std::string() : why + "; ") + "the pages load it as " +
               kept + "\n";
    }
    return out;
}

DecodedSettings DecodeSettings(std::span<const uint8_t> bytes) {
    const FoundRecord found = FindSettingsRecord(bytes);
    if (!found.found)
        return {.ok = false, .text = found.problem + "\n"};
    const OemDevPayload& p = found.record.payload;
    const std::unique_ptr<UiDeviceCommon> model = CreateUiDevice(
        FieldBytes(p, FieldNamed("modelName")), FieldBytes(p, FieldNamed("secondaryName")), "", "");
    std::string text = found.problem.empty() ? "" : "note: " + found.problem + "\n";
    const std::string named = FieldBytes(p, FieldNamed("modelName"));
    if (named.empty())
        text +=
            "note: the record names no model, as a devmode does before the pages first open; "
            "they replace it with the printer model's defaults\n";
    else if (model->GetModelName() != named)
        text += "note: the plug-in knows no model " + QuoteBytes(named) +
                " and treats it as the generic device, which supports nothing\n";
    return {.ok = true, .text = text + ShowSettings(found.record, *model)};
}
