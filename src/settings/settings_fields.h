// The settings record's payload as a table of fields in record order: what the settings file
// writes and reads, what `kivsettings show` prints, and how each value is checked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "settings/oemdev.h"
#include "settings/setting_names.h"
#include "settings/ui_device_common.h"

enum class FieldKind {
    Identity,  // model and secondary name: the file's header, not settings
    Sup,       // a capability byte: the model's export writes it
    Model,     // another byte only the model's export writes (the page-to-page check point)
    Reserved,  // written fixed, never read back
    Derived,   // follows from other fields (coupon scale, a buffer's length)
    Flag,      // 0 or 1
    Number,    // an integer within [min, max]
    Enum,      // a value of a name table
    Text,      // zero-filled 8-bit text of `width` bytes
    Buffer,    // a free command buffer: `width` bytes, its length at `lengthAt`
};

inline constexpr uint16_t kNoGate = 0xFFFF;

struct SettingField {
    std::string name;     // as DescribeOemDev names it: "cutMode", "logos[2].path"
    uint16_t offset = 0;  // in the payload
    uint16_t width = 1;   // bytes
    FieldKind kind = FieldKind::Number;
    bool isSigned = false;
    long min = 0;
    long max = 0;
    std::span<const SettingName> names{};
    // The model's offered list, where the pages offer a model's own choice; the loading
    // transfer also keeps `unset` (unless `unsetOffered` is false) and the model's exported value.
    std::vector<uint16_t> (*offered)(const UiDeviceCommon&) = nullptr;
    bool unsetOffered = true;
    // Which value the loader accepts when there is no list and no plain range.
    bool (*accepts)(long value) = nullptr;
    const char* expected = nullptr;  // says what `accepts` takes
    // The Sup byte of the feature (payload offset), and the enable byte that must be set for the
    // value to count.
    uint16_t sup = kNoGate;
    uint16_t enable = kNoGate;
    // What a save stores while the model lacks the feature.
    long unset = 0;
    // The file shows the Watermark page's brightness, which the record keeps as 200 minus it.
    bool mirrored = false;
    uint16_t lengthAt = kNoGate;                 // a buffer's length field
    const char* unit = "";                       // after the number in the record dump
    const char* (*label)(long value) = nullptr;  // the pages' label of a value, or null
};

// Every payload field, in record order.
const std::vector<SettingField>& SettingFields();
// The field of that name, or null.
const SettingField* FindSettingField(std::string_view name);

// The field at a payload offset: a gate's Sup or enable byte.
const SettingField& FieldAt(uint16_t offset);
// The payload as the pages keep it: loaded into a copy of the model and saved again.
OemDevPayload AsThePagesKeep(const UiDeviceCommon& model, const OemDevPayload& p);

// Whether the file carries the field as a setting.
bool IsFileSetting(const SettingField& f);

// The value of a Flag, Number or Enum field (the page's value for the brightness).
long FieldValue(const OemDevPayload& p, const SettingField& f);
void SetFieldValue(OemDevPayload& p, const SettingField& f, long value);
// The bytes of a Text (up to its first zero) or Buffer field (its length, bounded by the field).
std::string FieldBytes(const OemDevPayload& p, const SettingField& f);
void SetFieldBytes(OemDevPayload& p, const SettingField& f, std::string_view bytes);

// The value as the file writes it: a symbol where the table names it, a number otherwise, texts
// and buffers quoted.
std::string FieldText(const OemDevPayload& p, const SettingField& f);
// "..." with \" \\ and \xNN for every byte that is not printable ASCII.
std::string QuoteBytes(std::string_view bytes);

// A gate is closed when the model lacks the feature (`sup`) or the feature is off (`enable`).
bool SupClosed(const OemDevPayload& p, const SettingField& f);
bool EnableClosed(const OemDevPayload& p, const SettingField& f);
// Whether a value is one a record holds for a feature its model lacks: the save's `unset`, or the
// zero that a reset to the model's defaults leaves (it runs no save).
bool IsUnsetValue(const SettingField& f, long value);

// The values a model offers for an Enum field with a list, the unset and exported values
// included, as the loading transfer keeps them.
std::vector<uint16_t> OfferedValues(const SettingField& f, const UiDeviceCommon& model);
// A value by its symbol, or the number itself when the table has no name for it.
std::string ValueName(const SettingField& f, long value);
