// Fuzzes the configuration reader with registry values of any type and size.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "fake_text_codec.h"
#include "infra/config.h"
#include "memory_hive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const char16_t* const names[] = {u"LogFolder", u"LogVerbosity_UiUni", u"Settings_Ui",
                                     u"PrnFolder", u"LogVerbosity_LM"};
    const std::u16string key = ConfigurationKey(u"Printer");
    // Per value: one byte of type (0xFF: absent), two bytes of length, then the bytes.
    MemoryHive hive;
    for (const char16_t* name : names) {
        if (size < 3)
            break;
        const uint8_t type = data[0];
        const size_t length = std::min<size_t>(data[1] | (data[2] << 8), size - 3);
        if (type != 0xFF)
            hive.Put(key, name, type & 0x0F, std::vector<uint8_t>(data + 3, data + 3 + length));
        data += 3 + length;
        size -= 3 + length;
    }

    FakeTextCodec text;
    Configuration config;
    ReadConfiguration(hive, text, u"Printer", config);
    if (config.logVerbosity > kMaxLogVerbosity || config.logFolder.empty() ||
        config.prnFolder.empty())
        std::abort();
    // What was read, written back and read again, is what was read.
    WriteConfiguration(hive, text, u"Printer", config, 1);
    Configuration again;
    ReadConfiguration(hive, text, u"Printer", again);
    if (config.logFolder != again.logFolder || config.logVerbosity != again.logVerbosity ||
        config.prnFolder != again.prnFolder || config.settingsUi != again.settingsUi)
        std::abort();
    return 0;
}
