// The settings file of kivsettings: a printer's private settings as text for people and version
// control, read back with the model's rules enforced, and the decoding of a saved record or
// devmode. Core code, so the format, the checks and the decoder build and are tested natively.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/oemdev.h"
#include "settings/ui_device_common.h"

// Written into every file's header; a file of another version is refused.
inline constexpr int kSettingsFileVersion = 1;

// The file for `rec`: a header naming the format version and the model, then one
// "setting = VALUE" line per setting in the record's order (symbolic names where the setting has
// them, numbers otherwise, texts and command buffers quoted with \" \\ and \xNN; a buffer's
// length is the count of its bytes). The same record always gives the same text. The Sup bytes,
// the page-to-page check point, the reserved bytes, the coupon scale and the secondary name
// (shown in a comment) are the model's or follow from other fields, so the file leaves them out.
// watermarkBrightness is the Watermark page's value (0 to 200), not the byte the record stores.
std::string WriteSettingsFile(const OEMDEV& rec);

// One thing wrong with a file: its 1-based line (0 for the file as a whole) and what is wrong,
// naming the values expected where there is a choice.
struct SettingsFileProblem {
    size_t line = 0;
    std::string message;
};

struct SettingsFileResult {
    // Empty when the file was taken; then `record` is `current` with the file's settings.
    std::vector<SettingsFileProblem> problems;
    OEMDEV record{};
};

// Reads the whole file and checks it against `model` (the capability object of the model that
// `current` names) before taking any of it: another model, an unknown setting, an unknown or
// unoffered value, a line given twice and a number out of range are each reported. Settings the
// file leaves out keep their values from `current`; when `current` is no record the pages would
// keep (damaged guards, another layout version or model, as a printer's first devmode is), the
// model's defaults stand in for it, since the pages would load those. The result carries the
// model's Sup bytes. A value counts only where its feature is on: a setting of a feature the
// model lacks takes only its not-set value, one of a feature switched off (coupon, logo, ...)
// any value its field holds. A file that is not a settings file, of another version or for
// another model gets that one problem alone. Comments (#), blank lines, CRLF and a UTF-8 BOM are
// allowed; an enumeration takes its symbol or its number (decimal or 0x hex).
SettingsFileResult ReadSettingsFile(std::string_view text, const OEMDEV& current,
                                    const UiDeviceCommon& model);

// The settings as `kivsettings show` prints them: the model, then per setting its value by
// symbolic name (or number) with its label, what the model offers, and a note on each value the
// model does not offer. What the pages would make of a value is found by loading the record
// into a copy of `model` and saving it again, so the notes follow the loading rules exactly.
std::string ShowSettings(const OEMDEV& rec, const UiDeviceCommon& model);

// One line per setting whose value differs, "setting: OLD -> NEW"; empty when nothing changed.
std::vector<std::string> ChangedSettings(const OEMDEV& before, const OEMDEV& after);

// A record found in saved bytes: the record alone, or a whole devmode whose private part holds
// the plug-in's block (found by its signature and size).
struct FoundRecord {
    bool found = false;
    OEMDEV record{};
    // When not found, or found damaged (guards, layout version: the plug-in would reset it, but
    // the record is still returned for decoding): what is wrong, in one sentence.
    std::string problem;
};
FoundRecord FindSettingsRecord(std::span<const uint8_t> bytes);

// `kivsettings decode`: the record in `bytes` shown as `show` shows it (the model it names
// supplies what is offered), or, with `ok` false, one clear message naming what is wrong.
struct DecodedSettings {
    bool ok = false;
    std::string text;
};
DecodedSettings DecodeSettings(std::span<const uint8_t> bytes);
