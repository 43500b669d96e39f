// The settings file: writing a record as text, and reading a file back, checked whole against
// the model before any of it is taken.
#include "settings/settings_file.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <map>
#include <memory>

#include "infra/text_format.h"
#include "settings/setting_enums.h"
#include "settings/setting_ranges.h"
#include "settings/settings_fields.h"

namespace {

constexpr char kHeader[] =
    "# KivUI printer settings: one \"setting = VALUE\" line per setting, in the record's order.\n"
    "# Values are symbols or numbers; texts and command buffers are quoted (\\\" \\\\ \\xNN).\n"
    "# watermarkBrightness is the Watermark page's value (0 to 200; 100 keeps the image).\n";

std::string_view Trim(std::string_view s) {
    const auto blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!s.empty() && blank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && blank(s.back()))
        s.remove_suffix(1);
    return s;
}

std::string Joined(const std::vector<std::string>& items) {
    std::string s;
    for (const std::string& item : items)
        s += (s.empty() ? "" : ", ") + item;
    return s;
}

std::string NamesOf(const SettingField& f, const std::vector<uint16_t>& values) {
    std::vector<std::string> names;
    for (uint16_t v : values)
        names.push_back(ValueName(f, v));
    return Joined(names);
}

std::vector<uint16_t> TableValues(const SettingField& f) {
    std::vector<uint16_t> values;
    for (const SettingName& entry : f.names)
        values.push_back(entry.value);
    return values;
}

// A value as written after "=": a quoted text, or a bare word; a comment may follow either.
struct Value {
    bool quoted = false;
    std::string text;
    std::string error;
};

Value ParseValue(std::string_view raw) {
    Value v;
    if (raw.empty() || raw.front() != '"') {
        v.text = std::string(Trim(raw.substr(0, raw.find('#'))));
        return v;
    }
    v.quoted = true;
    size_t i = 1;
    for (; i < raw.size() && raw[i] != '"'; ++i) {
        if (raw[i] != '\\') {
            v.text += raw[i];
            continue;
        }
        const char next = i + 1 < raw.size() ? raw[i + 1] : '\0';
        if (next == '"' || next == '\\') {
            v.text += next;
            ++i;
        } else if (next == 'x' && i + 3 < raw.size() && HexDigitValue(raw[i + 2]) >= 0 &&
                   HexDigitValue(raw[i + 3]) >= 0) {
            v.text += static_cast<char>(HexDigitValue(raw[i + 2]) * 16 + HexDigitValue(raw[i + 3]));
            i += 3;
        } else {
            v.error = "bad escape \"\\" + std::string(raw.substr(i + 1, 1)) +
                      "\" (a text takes \\\", \\\\ and \\xNN)";
            return v;
        }
    }
    if (i >= raw.size()) {
        v.error = "the text has no closing quote";
        return v;
    }
    const std::string_view rest = Trim(raw.substr(i + 1));
    if (!rest.empty() && rest.front() != '#')
        v.error = "unexpected \"" + std::string(rest) + "\" after the closing quote";
    return v;
}

bool ParseNumber(std::string_view s, long& out) {
    int base = 10;
    bool negative = false;
    if (!s.empty() && s.front() == '-') {
        negative = true;
        s.remove_prefix(1);
    }
    if (s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
        base = 16;
        s.remove_prefix(2);
    }
    if (s.empty())
        return false;
    unsigned long magnitude = 0;
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), magnitude, base);
    if (ec != std::errc() || end != s.data() + s.size() || magnitude > 0x7FFFFFFFUL)
        return false;
    out = negative ? -static_cast<long>(magnitude) : static_cast<long>(magnitude);
    return true;
}

// The numbers a field of its width holds.
void WidthRange(const SettingField& f, long& low, long& high) {
    low = f.isSigned ? -32768 : 0;
    high = f.width == 2 ? (f.isSigned ? 32767 : 0xFFFF) : 0xFF;
    if (f.mirrored) {
        low = kBrightnessMax - 0xFF;
        high = kBrightnessMax;
    }
}

size_t EditDistance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t up = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
            diagonal = up;
        }
    }
    return row[b.size()];
}

std::string Suggestion(const std::string& name) {
    if (name.size() > 64)
        return "";
    const SettingField* best = nullptr;
    size_t bestDistance = 3;
    for (const SettingField& f : SettingFields()) {
        if (!IsFileSetting(f))
            continue;
        // The distance is at least the difference in length: most names need no table.
        const size_t gap =
            f.name.size() > name.size() ? f.name.size() - name.size() : name.size() - f.name.size();
        if (gap >= bestDistance)
            continue;
        const size_t d = UpperAscii(f.name) == UpperAscii(name) ? 0 : EditDistance(f.name, name);
        if (d < bestDistance) {
            best = &f;
            bestDistance = d;
        }
    }
    return best ? "; did you mean \"" + best->name + "\"?" : "";
}

struct Entry {
    size_t line;
    const SettingField* field;
    long number = 0;
    std::string bytes{};
};

bool HasControl(std::string_view bytes) {
    return std::any_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

std::string ModelLabel(const std::string& name) {
    return name.empty() ? "the generic device (no model)" : name;
}

class Reader {
  public:
    Reader(const OEMDEV& current, const UiDeviceCommon& model) : model_(model) {
        result_.record = current;
    }

    SettingsFileResult Read(std::string_view text) {
        if (text.substr(0, 3) == "\xEF\xBB\xBF")
            text.remove_prefix(3);
        size_t number = 0;
        while (!text.empty() || number == 0) {
            ++number;
            const size_t end = text.find('\n');
            std::string_view line = text.substr(0, end);
            text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            if (!TakeLine(number, Trim(line)))
                return std::move(result_);
            if (text.empty())
                break;
        }
        if (!sawFormat_) {
            Refused(0, "not a settings file: it has no \"format = 1\" line");
            return std::move(result_);
        }
        if (!sawModel_)
            Problem(0, "the file names no model (a line model = \"NAME\")");
        // The lines that read well are checked against the model even when others did not, so
        // one import names every line to mend.
        Apply();
        std::stable_sort(result_.problems.begin(), result_.problems.end(),
                         [](const SettingsFileProblem& a, const SettingsFileProblem& b) {
                             return a.line < b.line;
                         });
        return std::move(result_);
    }

  private:
    void Problem(size_t line, std::string message) {
        result_.problems.push_back({line, std::move(message)});
    }

    // A problem that makes every other one meaningless.
    void Refused(size_t line, std::string message) {
        result_.problems = {{line, std::move(message)}};
    }

    // False when the file is to be refused as a whole at this line.
    bool TakeLine(size_t number, std::string_view line) {
        if (line.empty() || line.front() == '#')
            return true;
        const size_t eq = line.find('=');
        const std::string name(Trim(line.substr(0, std::min(eq, line.size()))));
        if (!sawFormat_) {
            if (eq == std::string_view::npos || name != "format") {
                Refused(number, "not a settings file: it does not begin with \"format = " +
                                    std::to_string(kSettingsFileVersion) + "\"");
                return false;
            }
        }
        if (eq == std::string_view::npos) {
            Problem(number, "no \"=\" in this line (a setting reads: setting = VALUE)");
            return true;
        }
        const auto [first, fresh] = firstLines_.emplace(name, number);
        if (!fresh) {
            Problem(number,
                    name + " is given twice (first on line " + std::to_string(first->second) + ")");
            return true;
        }
        const Value value = ParseValue(Trim(line.substr(eq + 1)));
        if (!value.error.empty()) {
            Problem(number, name + ": " + value.error);
            return true;
        }
        if (name == "format")
            return TakeFormat(number, value);
        if (name == "model")
            return TakeModel(number, value);
        TakeSetting(number, name, value);
        return true;
    }

    bool TakeFormat(size_t number, const Value& value) {
        sawFormat_ = true;
        long version = 0;
        if (value.quoted || !ParseNumber(value.text, version) || version != kSettingsFileVersion) {
            Refused(number, "format " + value.text + " is not one this version reads (format " +
                                std::to_string(kSettingsFileVersion) + ")");
            return false;
        }
        return true;
    }

    bool TakeModel(size_t number, const Value& value) {
        sawModel_ = true;
        if (value.text != model_.GetModelName()) {
            Refused(number, "the file is for model " + ModelLabel(value.text) +
                                "; this printer is " + ModelLabel(model_.GetModelName()));
            return false;
        }
        return true;
    }

    void TakeSetting(size_t number, const std::string& name, const Value& value) {
        const SettingField* f = FindSettingField(name);
        if (f == nullptr) {
            Problem(number, "unknown setting \"" + name + "\"" + Suggestion(name));
            return;
        }
        if (!IsFileSetting(*f)) {
            Problem(number, name + " is kept by the driver, not set by a settings file");
            return;
        }
        Entry entry{.line = number, .field = f};
        if (f->kind == FieldKind::Text || f->kind == FieldKind::Buffer) {
            if (!value.quoted) {
                Problem(number, name + " takes a quoted text");
            } else if (value.text.size() > f->width) {
                Problem(number, name + ": the text has " + std::to_string(value.text.size()) +
                                    " bytes; the field holds " + std::to_string(f->width));
            } else {
                entry.bytes = value.text;
                entries_.push_back(std::move(entry));
            }
            return;
        }
        if (!TakeNumber(*f, value, entry.number)) {
            Problem(number, Unknown(*f, value.text));
            return;
        }
        long low = 0, high = 0;
        WidthRange(*f, low, high);
        if (entry.number < low || entry.number > high) {
            Problem(number, name + ": " + value.text + " is out of range (" + Range(*f) + ")");
            return;
        }
        entries_.push_back(std::move(entry));
    }

    static bool TakeNumber(const SettingField& f, const Value& value, long& out) {
        if (value.quoted)
            return false;
        for (const SettingName& entry : f.names) {
            if (value.text == entry.name) {
                out = entry.value;
                return true;
            }
        }
        return ParseNumber(value.text, out);
    }

    static std::string Unknown(const SettingField& f, const std::string& text) {
        const std::string shown = text.empty() ? "an empty value" : "\"" + text + "\"";
        if (f.kind == FieldKind::Enum) {
            return f.name + ": unknown value " + shown + "; it takes " + NamesOf(f, TableValues(f));
        }
        return f.name + ": " + shown + " is not a number";
    }

    static std::string Range(const SettingField& f) {
        if (f.accepts)
            return f.expected;
        if (f.kind == FieldKind::Flag)
            return "0 or 1";
        long low = f.min, high = f.max;
        if (f.kind != FieldKind::Number)
            WidthRange(f, low, high);
        return std::to_string(low) + " to " + std::to_string(high);
    }

    // Whether the pages accept the value where the field counts: the model offers it, it is in
    // range, a text has no control bytes.
    std::string Check(const OemDevPayload& p, const Entry& e) const {
        const SettingField& f = *e.field;
        const std::string value = FieldText(p, f);
        switch (f.kind) {
            case FieldKind::Flag:
                return e.number == 0 || e.number == 1 ? "" : f.name + " takes 0 or 1";
            case FieldKind::Number: {
                const bool ok =
                    f.accepts ? f.accepts(e.number) : e.number >= f.min && e.number <= f.max;
                return ok ? "" : f.name + ": " + value + " is out of range (" + Range(f) + ")";
            }
            case FieldKind::Enum: {
                if (f.offered) {
                    const std::vector<uint16_t> offered = OfferedValues(f, model_);
                    if (std::find(offered.begin(), offered.end(), e.number) != offered.end())
                        return "";
                    return f.name + ": " + value + " is not offered by " +
                           ModelLabel(model_.GetModelName()) + "; it offers " +
                           NamesOf(f, f.offered(model_));
                }
                const std::vector<uint16_t> known = TableValues(f);
                if (std::find(known.begin(), known.end(), e.number) != known.end())
                    return "";
                return f.name + ": " + value + " is no value of " + f.name + "; it takes " +
                       NamesOf(f, known);
            }
            default: {
                const bool isText =
                    f.kind == FieldKind::Text ||
                    FieldValue(p, *FindSettingField(f.name + "Mode")) == FREE_CMD_MODE_FILENAME;
                return isText && HasControl(e.bytes)
                           ? f.name + ": a file name or path holds no control characters"
                           : "";
            }
        }
    }

    std::string SupProblem(const SettingField& f) const {
        return f.name + ": " + ModelLabel(model_.GetModelName()) + " does not support it (" +
               FieldAt(f.sup).name + " = 0); it takes only " + ValueName(f, f.unset) +
               (f.unset != 0 ? " or " + ValueName(f, 0) : "");
    }

    // The record the file's settings go into: `current` when it is a record of this model that
    // the pages would keep, else the model's defaults, which the pages would load instead.
    OEMDEV Base() const {
        OEMDEV base = result_.record;
        if (KeptRecordFault(base, model_.GetModelName()) != RecordFault::kNone) {
            base = OEMDEV{};
            model_.Clone()->FillOEMDEVWithDeviceValues(base.payload, 1);
        }
        base.dmExtraHeader = {OEMDEV_SIZE, KIVITEM_SIGNATURE, KIVITEM_VERSION};
        base.dwSignHead1 = base.dwSignHead2 = KIVITEM_SIGN_H;
        base.dwVerCurrent = KIVITEM_VERCURRENT;
        base.dwSignTail1 = base.dwSignTail2 = KIVITEM_SIGN_T;
        OemDevPayload exported{};
        model_.ExportCapabilities(exported);
        for (const SettingField& f : SettingFields()) {
            if (f.kind == FieldKind::Sup || f.kind == FieldKind::Model)
                SetFieldValue(base.payload, f, FieldValue(exported, f));
        }
        return base;
    }

    void Apply() {
        OEMDEV record = Base();
        OemDevPayload& p = record.payload;
        for (const Entry& e : entries_) {
            if (e.field->kind == FieldKind::Text || e.field->kind == FieldKind::Buffer)
                SetFieldBytes(p, *e.field, e.bytes);
            else
                SetFieldValue(p, *e.field, e.number);
        }
        p.couponScale = p.couponEnable != 0 ? kCouponScaleEnabled : 0;
        std::map<const SettingField*, size_t> lines;
        for (const Entry& e : entries_) {
            lines[e.field] = e.line;
            std::string problem;
            if (SupClosed(p, *e.field)) {
                if (!IsUnsetValue(*e.field, FieldValue(p, *e.field)))
                    problem = SupProblem(*e.field);
            } else if (!EnableClosed(p, *e.field)) {
                problem = Check(p, e);
            }
            if (!problem.empty())
                Problem(e.line, problem);
        }
        if (result_.problems.empty())
            CheckAsThePagesLoad(record, lines);
        if (result_.problems.empty())
            result_.record = record;
    }

    // What the checks per line cannot see (settings that depend on each other) the loading
    // transfer decides: a value it would not keep is refused.
    void CheckAsThePagesLoad(const OEMDEV& record,
                             const std::map<const SettingField*, size_t>& lines) {
        const OemDevPayload loaded = AsThePagesKeep(model_, record.payload);
        for (const SettingField& f : SettingFields()) {
            if (!IsFileSetting(f) || SupClosed(record.payload, f) ||
                EnableClosed(record.payload, f))
                continue;
            const std::string stored = FieldText(record.payload, f);
            const std::string kept = FieldText(loaded, f);
            if (stored == kept)
                continue;
            const auto line = lines.find(&f);
            Problem(line == lines.end() ? 0 : line->second,
                    f.name + " = " + stored +
                        (line == lines.end() ? " (not in the file: the printer's value)" : "") +
                        " is not kept by the pages with the other settings; they load " + kept);
        }
    }

    static constexpr uint8_t kCouponScaleEnabled = 16;
    const UiDeviceCommon& model_;
    SettingsFileResult result_;
    std::vector<Entry> entries_;
    std::map<std::string, size_t> firstLines_;
    bool sawFormat_ = false;
    bool sawModel_ = false;
};

}  // namespace

std::string WriteSettingsFile(const OEMDEV& rec) {
    const OemDevPayload& p = rec.payload;
    std::string out = kHeader;
    out += "format = " + std::to_string(kSettingsFileVersion) + "\n";
    // The secondary name is the driver's, as the model is: shown, never read back.
    out += "model = " + QuoteBytes(FieldBytes(p, *FindSettingField("modelName"))) + "\n";
    out +=
        "# secondary name " + QuoteBytes(FieldBytes(p, *FindSettingField("secondaryName"))) + "\n";
    for (const SettingField& f : SettingFields()) {
        if (IsFileSetting(f))
            out += f.name + " = " + FieldText(p, f) + "\n";
    }
    return out;
}

SettingsFileResult ReadSettingsFile(std::string_view text, const OEMDEV& current,
                                    const UiDeviceCommon& model) {
    return Reader(current, model).Read(text);
}

std::vector<std::string> ChangedSettings(const OEMDEV& before, const OEMDEV& after) {
    std::vector<std::string> lines;
    for (const SettingField& f : SettingFields()) {
        if (!IsFileSetting(f))
            continue;
        const std::string was = FieldText(before.payload, f);
        const std::string is = FieldText(after.payload, f);
        if (was != is)
            lines.push_back(f.name + ": " + was + " -> " + is);
    }
    return lines;
}
