// Tests of the printer models and the model factory: classes, names, exports, flags, offers.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <typeindex>
#include <typeinfo>
#include <vector>

#include "settings/device_factory.h"
#include "settings/models/ui_device_models.h"
#include "settings/setting_enums.h"
#include "settings/setting_names.h"

namespace {

constexpr int kNone = -1;

// One row of the capability export matrix, written out independently of the model tables.
struct ModelCase {
    const char* name;
    std::type_index type;
    int number;
    uint8_t cashDrawer;
    uint8_t cut;
    int recovery;
    int blackMark;
    int presentationMode, presentationValue, presentationTimeout;
    int headLed;
    int continuousMode;
    int feeder;
    bool page2Page;
    int couponInter, couponFinal;
    // Capability flags 0..10 as digits.
    const char* flags;
};

const std::vector<ModelCase>& Models() {
    static const std::vector<ModelCase> models = {
        {"J7", typeid(UiDeviceJ7), 576, 1, 0x30, kNone, 0x10, kNone, 0, 0, kNone, kNone, kNone,
         false, 0x10, 0x10, "10100010000"},
        {"TRX415A", typeid(UiDeviceTRX415A), 608, 0, 0x20, 0x30, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110000"},
        {"TRX418A CUT", typeid(UiDeviceTRX418A_CUT), 608, 0, 0x80, 0x30, 0x10, kNone, 0, 0, kNone,
         kNone, kNone, false, 0x10, 0x10, "00100110000"},
        {"TRX418A NOCUT", typeid(UiDeviceTRX418A_NOCUT), 608, 0, 0x10, kNone, 0x10, kNone, 0, 0,
         kNone, kNone, kNone, false, 0x00, 0x00, "00100010000"},
        {"TRX430ATF", typeid(UiDeviceTRX430ATF), 608, 0, 0x20, 0x00, 0x10, kNone, 0, 0, kNone,
         kNone, 1000, false, kNone, kNone, "00110110000"},
        {"TRX430A", typeid(UiDeviceTRX430A), 608, 0, 0x20, 0x00, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, kNone, kNone, "00100110000"},
        {"VORTA5X", typeid(UiDeviceVorta5XCA), 624, 0, 0x20, kNone, 0x00, 0x10, 0, 10, kNone, 1,
         kNone, false, 0x10, 0x10, "00100011100"},
        {"N5", typeid(UiDeviceN5), 608, 1, 0x30, kNone, kNone, kNone, 0, 0, kNone, kNone, kNone,
         false, 0x10, 0x10, "10100000000"},
        {"HB5820A-EJ", typeid(UiDeviceHB5820AEJ), 448, 0, 0x20, kNone, 0x10, 0x10, 40, 10, kNone,
         kNone, kNone, false, 0x10, 0x10, "00100010100"},
        {"HB5820A", typeid(UiDeviceHB5820A), 448, 0, 0x20, 0x20, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110000"},
        {"HB5840A", typeid(UiDeviceHB5840A), 608, 0, 0x20, 0x20, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110000"},
        {"WR35VIIEJ", typeid(UiDeviceWR35EJ), 448, 0, 0x20, 0x20, 0x10, 0x10, 40, 10, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110100"},
        {"WR35VII", typeid(UiDeviceWR35), 448, 0, 0x20, 0x20, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110000"},
        {"WR55VII", typeid(UiDeviceWR55), 448, 0, 0x20, 0x20, 0x10, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100110000"},
        {"ZLD40", typeid(UiDeviceZLD40), 480, 0, 0x20, kNone, 0x00, kNone, 0, 0, kNone, kNone,
         kNone, false, 0x10, 0x10, "00100010000"},
        {"ZLD40PRESENTER", typeid(UiDeviceZLD40P), 480, 0, 0x20, kNone, 0x00, 0x10, 0, 10, kNone, 1,
         kNone, true, 0x10, 0x10, "00100011101"},
        {"ZLD90VII", typeid(UiDeviceZLD90VII), 640, 0, 0x20, kNone, 0x10, 0x20, 40, 10, 0x10, 0,
         kNone, true, 0x10, 0x10, "00100011111"},
    };
    return models;
}

std::unique_ptr<UiDeviceCommon> Build(const std::string& name) {
    // WR35VIIEJ has a class but no factory branch; build it directly.
    if (name == "WR35VIIEJ") {
        return std::make_unique<UiDeviceWR35EJ>("second", "third", "fourth");
    }
    return CreateUiDevice(name, "second", "third", "fourth");
}

OemDevPayload ExpectedExport(const ModelCase& m) {
    OemDevPayload p{};
    p.supCashDrawer = m.cashDrawer;
    p.supDensity = 1;
    p.density = PRN_PROP_DENS_NORMAL;
    p.supQuality = 1;
    p.quality = PRN_PROP_QUAL_NORMAL;
    p.supCutter = 1;
    p.cutMode = m.cut;
    if (m.recovery != kNone) {
        p.supRecovery = 1;
        p.recovery = static_cast<uint8_t>(m.recovery);
    }
    if (m.blackMark != kNone) {
        p.supBlackMark = 1;
        p.blackMark = static_cast<uint8_t>(m.blackMark);
    }
    if (m.presentationMode != kNone) {
        p.supPresentation = 1;
        p.presentationMode = static_cast<uint8_t>(m.presentationMode);
        p.presentationValue = static_cast<uint8_t>(m.presentationValue);
        p.presentationTimeout = static_cast<uint8_t>(m.presentationTimeout);
    }
    if (m.headLed != kNone) {
        p.supHeadLed = 1;
        p.headLed = static_cast<uint8_t>(m.headLed);
    }
    if (m.continuousMode != kNone) {
        p.supContinuousMode = 1;
        p.continuousMode = static_cast<uint8_t>(m.continuousMode);
    }
    if (m.feeder != kNone) {
        p.supFeeder = 1;
        p.feeder = static_cast<uint16_t>(m.feeder);
    }
    if (m.page2Page) {
        p.supPage2Page = 1;
        p.page2PageAction = PRN_PROP_PAGE2PAGE_EJECT;
        p.page2PageCheckPoint = 16;
        p.page2PageTimeout = 10;
    }
    if (m.couponInter != kNone) {
        p.couponCutInter = static_cast<uint8_t>(m.couponInter);
        p.couponCutFinal = static_cast<uint8_t>(m.couponFinal);
    }
    return p;
}

// The first differing payload offset, for a readable failure.
std::string FirstDifference(const OemDevPayload& a, const OemDevPayload& b) {
    const auto* x = reinterpret_cast<const uint8_t*>(&a);
    const auto* y = reinterpret_cast<const uint8_t*>(&b);
    for (size_t i = 0; i < sizeof(OemDevPayload); ++i) {
        if (x[i] != y[i]) {
            return "offset " + std::to_string(i) + ": " + std::to_string(x[i]) + " vs " +
                   std::to_string(y[i]);
        }
    }
    return "";
}

std::string FlagRow(const UiDeviceCommon& device) {
    std::string row;
    for (size_t i = 0; i < kCapabilityFlagCount; ++i) {
        row += static_cast<char>('0' + device.GetCapabilityFlag(i));
    }
    return row;
}

TEST(ModelsTest, FactoryBuildsEachModelWithItsNameNumberAndIdentity) {
    for (const ModelCase& m : Models()) {
        SCOPED_TRACE(m.name);
        std::unique_ptr<UiDeviceCommon> device = Build(m.name);
        ASSERT_NE(device, nullptr);
        EXPECT_EQ(std::type_index(typeid(*device)), m.type);
        EXPECT_EQ(device->GetModelName(), m.name);
        EXPECT_EQ(device->GetModelNumber(), m.number);
        EXPECT_EQ(device->GetSecondaryName(), "second");
        EXPECT_EQ(device->GetThirdName(), "third");
        EXPECT_EQ(device->GetFourthName(), "fourth");
    }
}

TEST(ModelsTest, OtherNamesBuildTheGenericDevice) {
    const char* names[] = {"WR35VIIEJ", "zld90vii", "J7 ",     " J7",    "TRX418A",
                           "TRX430",    "",         "Unknown", "VORTA5", "HB5820A-ej"};
    for (const char* name : names) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> device = CreateUiDevice(name, "s", "t", "f");
        ASSERT_NE(device, nullptr);
        EXPECT_EQ(std::type_index(typeid(*device)), std::type_index(typeid(UiDeviceCommon)));
        EXPECT_EQ(device->GetModelName(), "");
        EXPECT_EQ(device->GetBuiltModelName(), name);
        EXPECT_EQ(device->GetModelNumber(), 0);
        EXPECT_EQ(FlagRow(*device), "00000000000");
        OemDevPayload payload{};
        std::memset(&payload, 0xA5, sizeof(payload));
        OemDevPayload before = payload;
        device->ExportCapabilities(payload);
        EXPECT_EQ(std::memcmp(&payload, &before, sizeof(payload)), 0);
    }
}

TEST(ModelsTest, ExportWritesExactlyTheMatrixBytes) {
    for (const ModelCase& m : Models()) {
        SCOPED_TRACE(m.name);
        std::unique_ptr<UiDeviceCommon> device = Build(m.name);
        OemDevPayload actual{};
        device->ExportCapabilities(actual);
        OemDevPayload expected = ExpectedExport(m);
        EXPECT_EQ(FirstDifference(actual, expected), "");
        // Never the buzzer or the selector, on any model.
        EXPECT_EQ(actual.supBuzzer, 0);
        EXPECT_EQ(actual.supSelector, 0);
    }
}

TEST(ModelsTest, CapabilityFlagsFollowTheExportAndDecideThePages) {
    for (const ModelCase& m : Models()) {
        SCOPED_TRACE(m.name);
        std::unique_ptr<UiDeviceCommon> device = Build(m.name);
        EXPECT_EQ(FlagRow(*device), m.flags);
        EXPECT_EQ(device->GetCapabilityFlag(kCapabilityFlagCount), 0);
        EXPECT_EQ(device->GetCapabilityFlag(static_cast<size_t>(-1)), 0);
    }
    auto pages = [](const std::string& name) {
        std::unique_ptr<UiDeviceCommon> d = Build(name);
        auto f = [&](size_t i) { return d->GetCapabilityFlag(i) != 0; };
        std::string out;
        out += f(2) || f(5) || f(6) || f(7) ? "C" : "-";
        out += f(3) || f(4) ? "A" : "-";
        out += f(0) || f(1) ? "P" : "-";
        out += f(8) || f(9) || f(10) ? "S" : "-";
        return out;
    };
    EXPECT_EQ(pages("J7"), "C-P-");
    EXPECT_EQ(pages("N5"), "C-P-");
    EXPECT_EQ(pages("TRX430ATF"), "CA--");
    EXPECT_EQ(pages("TRX430A"), "C---");
    EXPECT_EQ(pages("HB5820A-EJ"), "C--S");
    EXPECT_EQ(pages("WR35VIIEJ"), "C--S");
    EXPECT_EQ(pages("ZLD90VII"), "C--S");
    EXPECT_EQ(pages("Unknown"), "----");
}

TEST(ModelsTest, OfferedListsHoldOnlyNamedValuesAndTheirStartingValue) {
    for (const ModelCase& m : Models()) {
        SCOPED_TRACE(m.name);
        std::unique_ptr<UiDeviceCommon> d = Build(m.name);
        EXPECT_EQ(d->GetDensity(), PRN_PROP_DENS_NORMAL);
        EXPECT_EQ(d->GetQuality(), PRN_PROP_QUAL_NORMAL);
        struct List {
            const char* what;
            const std::vector<uint8_t>& values;
            uint8_t current;
            std::string (*name)(uint8_t);
            bool mustHoldCurrent;
        };
        const List lists[] = {
            {"density", d->GetDensityList(), d->GetDensity(), DensityName, true},
            {"quality", d->GetQualityList(), d->GetQuality(), QualityName, true},
            {"cut", d->GetCutModeList(), d->GetCutMode(), CutModeName, true},
            {"recovery", d->GetRecoveryList(), d->GetRecovery(), RecoveryName, true},
            {"black mark", d->GetBlackMarkList(), d->GetBlackMark(), BlackMarkName, true},
            {"presentation", d->GetPresentationList(), d->GetPresentationMode(), PresentationName,
             true},
            {"continuous", d->GetContinuousModeList(), d->GetContinuousMode(), ContinuousModeName,
             true},
            {"head LED", d->GetHeadLedList(), d->GetHeadLed(), HeadLedName, true},
            {"page to page", d->GetPage2PageActionList(), d->GetPage2PageAction(),
             Page2PageActionName, true},
            {"selector", d->GetSelectorList(), d->GetSelector(), SelectorName, true},
            {"drawer phase", d->GetCashDrawerPhaseList(), 0, CdPhaseName, false},
            {"buzzer", d->GetBuzzerList(), 0, BuzzerName, false},
        };
        for (const List& list : lists) {
            SCOPED_TRACE(list.what);
            for (uint8_t v : list.values) {
                EXPECT_NE(list.name(v), "NOID") << int(v);
            }
            if (list.mustHoldCurrent && !list.values.empty()) {
                EXPECT_EQ(list.values[UiDeviceCommon::ListIndexOf(list.values, list.current)],
                          list.current);
            }
        }
        // Offers exist exactly where the model supports the feature.
        EXPECT_EQ(!d->GetRecoveryList().empty(), d->GetCapabilityFlag(kCapRecovery) != 0);
        EXPECT_EQ(!d->GetBlackMarkList().empty(), d->GetCapabilityFlag(kCapBlackMark) != 0);
        EXPECT_EQ(!d->GetPresentationList().empty(), d->GetCapabilityFlag(kCapPresenter) != 0);
        EXPECT_EQ(!d->GetContinuousModeList().empty(),
                  d->GetCapabilityFlag(kCapContinuousMode) != 0);
        EXPECT_EQ(!d->GetHeadLedList().empty(), d->GetCapabilityFlag(kCapHeadLed) != 0);
        EXPECT_EQ(!d->GetPage2PageActionList().empty(), d->GetCapabilityFlag(kCapPage2Page) != 0);
        EXPECT_EQ(!d->GetFeederList().empty(), d->GetCapabilityFlag(kCapFeeder) != 0);
    }
}

TEST(ModelsTest, StartingValuesOfTheListedModels) {
    using Bytes = std::vector<uint8_t>;
    auto j7 = Build("J7");
    EXPECT_EQ(j7->GetCutModeList(), (Bytes{0x10, 0x11, 0x20, 0x40, 0x60, 0x30, 0x50, 0x70}));
    EXPECT_EQ(j7->GetCutMode(), 0x30);
    EXPECT_EQ(j7->GetQualityList(), (Bytes{0x00, 0x30, 0x20, 0x10}));
    EXPECT_EQ(j7->GetCashDrawerPhaseList(), (Bytes{0x30, 0x10, 0x20}));
    EXPECT_EQ(j7->GetCouponCutInter(), 0x10);
    EXPECT_EQ(j7->GetCouponCutFinal(), 0x10);

    auto atf = Build("TRX430ATF");
    EXPECT_EQ(atf->GetFeederList(), (std::vector<uint16_t>{1000, 1001, 1002, 1003}));
    EXPECT_EQ(atf->GetRecoveryList(), (Bytes{0x10, 0x20, 0x30, 0x00}));
    EXPECT_EQ(atf->GetRecovery(), 0x00);
    EXPECT_EQ(atf->GetCutModeList(), (Bytes{0x80, 0x20, 0x40, 0x11}));

    auto vorta = Build("VORTA5X");
    EXPECT_EQ(vorta->GetContinuousModeList(), (Bytes{0x01, 0x10, 0x20}));
    EXPECT_EQ(vorta->GetContinuousMode(), 0x01);
    EXPECT_EQ(vorta->GetPresentationList(), (Bytes{0x00, 0x40, 0x10}));
    EXPECT_EQ(vorta->GetPresentationMode(), 0x10);
    EXPECT_EQ(vorta->GetPresentationTimeout(), 10);

    auto ej = Build("HB5820A-EJ");
    EXPECT_EQ(ej->GetCutModeList(), (Bytes{0x20}));
    EXPECT_EQ(ej->GetPresentationValue(), 40);
    EXPECT_EQ(ej->GetPresentationTimeout(), 10);

    auto hb40 = Build("HB5840A");
    EXPECT_EQ(hb40->GetCutModeList(), (Bytes{0x80, 0x20}));
    EXPECT_EQ(hb40->GetBuzzerList(), (Bytes{0x00, 0x10}));

    auto zld40 = Build("ZLD40");
    EXPECT_EQ(zld40->GetCutModeList(), (Bytes{0x00, 0x80, 0x20, 0x30, 0x40, 0x50}));
    EXPECT_EQ(zld40->GetBlackMarkList(), (Bytes{0x10, 0x30, 0x20}));

    auto zld40p = Build("ZLD40PRESENTER");
    EXPECT_EQ(zld40p->GetPage2PageAction(), PRN_PROP_PAGE2PAGE_EJECT);
    EXPECT_EQ(zld40p->GetPage2PageExtra(), PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC);
    EXPECT_EQ(zld40p->GetCutModeList(), (Bytes{0x20, 0x40}));

    auto zld90 = Build("ZLD90VII");
    EXPECT_EQ(zld90->GetPresentationList(), (Bytes{0x20, 0x30, 0x40, 0x60, 0x70}));
    EXPECT_EQ(zld90->GetPresentationMode(), 0x20);
    EXPECT_EQ(zld90->GetPresentationValue(), 40);
    EXPECT_EQ(zld90->GetHeadLed(), PRN_HLED_BLINK);
    EXPECT_EQ(zld90->GetContinuousMode(), 0x00);
    EXPECT_EQ(zld90->GetCutModeList(), (Bytes{0x40, 0x20}));
}

// The five models whose lists are chosen here start from the values their export writes.
TEST(ModelsTest, ChosenModelsStartFromTheirExportDefaults) {
    for (const char* name : {"TRX415A", "TRX418A CUT", "TRX418A NOCUT", "TRX430A", "WR35VIIEJ"}) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> start = Build(name);
        std::unique_ptr<UiDeviceCommon> fromExport = Build(name);
        OemDevPayload payload{};
        fromExport->FillOEMDEVWithDeviceValues(payload, 1);
        EXPECT_EQ(start->GetCutMode(), payload.cutMode);
        EXPECT_EQ(start->GetRecovery(), fromExport->GetRecovery());
        EXPECT_EQ(start->GetBlackMark(), fromExport->GetBlackMark());
        EXPECT_EQ(start->GetPresentationMode(), fromExport->GetPresentationMode());
        EXPECT_EQ(start->GetPresentationValue(), fromExport->GetPresentationValue());
        EXPECT_EQ(start->GetPresentationTimeout(), fromExport->GetPresentationTimeout());
        EXPECT_EQ(start->GetCouponCutInter(), payload.couponCutInter);
        EXPECT_EQ(start->GetCouponCutFinal(), payload.couponCutFinal);
    }
}

}  // namespace
