// Describes a settings record field by field, with the settings' symbolic names.
#include "settings/record_dump.h"

#include <cstring>
#include <utility>

#include "infra/text_format.h"
#include "settings/setting_names.h"
#include "settings/setting_ranges.h"
#include "settings/settings_fields.h"

namespace {

class Lines {
  public:
    void Add(const char* field, const std::string& value) {
        out_ += field;
        out_ += " = ";
        out_ += value;
        out_ += '\n';
    }
    void Add(const std::string& field, const std::string& value) { Add(field.c_str(), value); }
    std::string Take() { return std::move(out_); }

  private:
    std::string out_;
};

std::string Dec(long long v) {
    return std::to_string(v);
}

std::string Hex(uint32_t v, int digits) {
    return Format("0x%0*X", digits, static_cast<unsigned>(v));
}

// "SYMBOL (0x10)"; a value the table does not know shows as "NOID (0x..)".
std::string Named(const std::string& name, uint32_t v, int digits = 2) {
    return name + " (" + Hex(v, digits) + ")";
}

// A fixed-width text field: up to its first NUL, never past its width, unprintables escaped.
std::string Text(const char* field, size_t width) {
    const size_t len = strnlen(field, width);
    std::string s = "\"";
    for (size_t i = 0; i < len; ++i) {
        const auto c = static_cast<unsigned char>(field[i]);
        if (c == '"' || c == '\\') {
            s += '\\';
            s += static_cast<char>(c);
        } else if (c < 32 || c > 126) {
            s += Format("\\x%02X", c);
        } else {
            s += static_cast<char>(c);
        }
    }
    s += '"';
    if (len == width)
        s += " (fills the field, no terminator)";
    return s;
}

// A free command buffer: its stated length, bounded by the field, as hex bytes; mode 1 holds a
// file name instead.
std::string Buffer(const uint8_t* data, size_t width, uint16_t length, uint8_t mode) {
    if (mode == 1)
        return Text(reinterpret_cast<const char*>(data), width);
    const size_t n = length < width ? length : width;
    std::string s = "[";
    s += Dec(length);
    s += length > width ? " bytes, cut to the field]" : " bytes]";
    for (size_t i = 0; i < n; ++i)
        s += Format(" %02X", data[i]);
    return s;
}

std::string Signature(uint32_t v) {
    std::string s = Hex(v, 8) + " '";
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto c = static_cast<char>((v >> shift) & 0xFF);
        s += (c >= 32 && c <= 126) ? c : '.';
    }
    return s + "'";
}

}  // namespace

std::string DescribeOemDev(const OEMDEV& rec) {
    Lines o;
    const OemDevPayload& p = rec.payload;

    o.Add("dwSize", Dec(rec.dmExtraHeader.dwSize));
    o.Add("dwSignature", Signature(rec.dmExtraHeader.dwSignature));
    o.Add("dwVersion", Dec(rec.dmExtraHeader.dwVersion));
    o.Add("dwSignHead1", Hex(rec.dwSignHead1, 8));
    o.Add("dwSignHead2", Hex(rec.dwSignHead2, 8));
    o.Add("dwVerCurrent", Dec(rec.dwVerCurrent));

    for (const SettingField& f : SettingFields()) {
        // The stored byte, not the page's value: the dump shows the record as it is.
        const long stored = f.mirrored ? kBrightnessMax - FieldValue(p, f) : FieldValue(p, f);
        const auto* bytes = reinterpret_cast<const uint8_t*>(&p) + f.offset;
        switch (f.kind) {
            case FieldKind::Identity:
            case FieldKind::Text:
                o.Add(f.name, Text(reinterpret_cast<const char*>(bytes), f.width));
                break;
            case FieldKind::Enum:
            case FieldKind::Model:
                o.Add(f.name, Named(LookupSettingName(f.names, static_cast<uint16_t>(stored)),
                                    static_cast<uint32_t>(stored), f.width * 2));
                break;
            case FieldKind::Buffer: {
                const auto* length = reinterpret_cast<const uint8_t*>(&p) + f.lengthAt;
                o.Add(f.name, Buffer(bytes, f.width,
                                     static_cast<uint16_t>(length[0] | length[1] << 8), bytes[-1]));
                break;
            }
            default:
                o.Add(f.name, Dec(stored) + f.unit);
        }
    }

    o.Add("dwSignTail1", Hex(rec.dwSignTail1, 8));
    o.Add("dwSignTail2", Hex(rec.dwSignTail2, 8));
    return o.Take();
}
