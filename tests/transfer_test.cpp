// Tests of the settings transfers: enforcement, round trips, bounds and the section log.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "golden_file.h"
#include "package_models.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

std::string Bytes(const void* data, size_t size) {
    return std::string(static_cast<const char*>(data), size);
}

std::string Bytes(const OemDevPayload& p) {
    return Bytes(&p, sizeof p);
}

// The record a fresh object of the model loads from, with its defaults.
OemDevPayload DefaultRecord(const std::string& model) {
    OemDevPayload p{};
    MakePackageModel(model)->FillOEMDEVWithDeviceValues(p, 1);
    return p;
}

OemDevPayload Save(UiDeviceCommon& d) {
    OemDevPayload p{};
    d.FillOEMDEVWithDeviceValues(p, 0);
    return p;
}

std::vector<std::string> Load(UiDeviceCommon& d, const OemDevPayload& p) {
    ScopedTestLog log(kLogDetail);
    std::string printer = "Printer";
    d.FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(printer, "");
    return log.Messages();
}

// The lines of a load that say a stored value was not offered and what it became.
std::vector<std::string> Mapped(UiDeviceCommon& d, const OemDevPayload& p) {
    std::vector<std::string> lines = Load(d, p);
    std::erase_if(lines, [](const std::string& l) { return l.find("not offered") == l.npos; });
    return lines;
}

// Something non-default in every section: for each printer-specific setting a value that some
// model offers, and within what the record can hold.
void SetBusyDocument(UiDeviceCommon& d) {
    d.SetCashDrawerEnable(1);
    d.SetCashDrawerPins(PRN_PROP_CDPINS_PIN2);
    d.SetCashDrawerTimeOn(100);
    d.SetCashDrawerTimeOff(200);
    d.SetCashDrawerPhase(PRN_PROP_CDPHASE_END_PAGE);
    d.SetBuzzer(PRN_PROP_BUZZER_END_DOC);
    d.SetDensity(PRN_PROP_DENS_P12);
    d.SetQuality(PRN_PROP_QUAL_HSPEED);
    d.SetCutMode(PRN_PROP_CUTTER_TC_END_DOC);
    d.SetRecovery(PRN_PROP_RECOVERY_NO);
    d.SetContinuousMode(PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY);
    d.SetFeeder(PRN_PROP_FEEDER_2);
    d.SetSelector(PRN_PROP_SELECTOR_TSTORE);
    d.SetPresentationMode(PRN_PROP_PRESENT_EJECT);
    d.SetPresentationValue(55);
    d.SetPresentationTimeout(66);
    d.SetHeadLed(PRN_HLED_BLINK_FAST);
    d.SetBlackMark(PRN_PROP_BMARK_EPAGE);
    d.SetPage2PageEnable(1);
    d.SetPage2PageAction(PRN_PROP_PAGE2PAGE_HOLD);
    d.SetPage2PageTimeout(600);
    d.SetPage2PageExtra(PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE);
    d.SetLfBeforeCut(7);
    d.SetWatermarkEnable(1);
    d.SetWatermarkDrawPosition(WK_OVER);
    d.SetWatermarkDrawType(WK_TILE);
    d.SetWatermarkVHPosition(WK_CENTERCENTER);
    d.SetWatermarkPath("C:\\images\\mark.png");
    d.SetWatermarkBrightnessEnable(1);
    d.SetWatermarkBrightness(150);
    d.SetCouponEnable(1);
    d.SetCouponCopies(3);
    d.SetCouponDrawType(IM_DZOOM);
    d.SetCouponDrawPosition(IM_DALIGN_RIGHT);
    d.SetCouponCutInter(PRN_COP_CUTTER_PC);
    d.SetCouponCutFinal(PRN_COP_CUTTER_TEAROFF);
    d.SetCouponPath("C:\\images\\coupon.bmp");
    d.SetLogo(kLogoBeginDoc,
              LogoSettings{1, LOGO_TYPE_PRINTFROMFLASH, IM_DKEEP, IM_DALIGN_CENTER, "5"});
    d.SetLogo(kLogoEndDoc, LogoSettings{1, LOGO_TYPE_PRINTFROMFILE, IM_DZOOM, IM_DALIGN_LEFT,
                                        "C:\\images\\thanks.png"});
    d.SetOffsetX(-12);
    d.SetOffsetY(34);
    d.SetReductionEnable(1);
    d.SetReductionMode(REDW_PERCENT);
    d.SetReductionMinValue(10);
    d.SetReductionValue(75);
    d.SetConvMode(CMODE_ERRDIFF_FLOYD_STEINBERG);
    d.SetConvThreshold(100);
    d.SetConvFilterUp(200);
    d.SetConvFilterDown(20);
    const std::string file = "C:\\cmd\\start.prn";
    d.SetStartJobBufferMode(FREE_CMD_MODE_FILENAME);
    d.SetStartJobBuffer(std::vector<uint8_t>(file.begin(), file.end()));
    d.SetEndJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetEndJobBuffer({0x1B, '@', 'A', 'B', 'C', '%', 0x0A});
    d.SetSkipWhitePages(1);
    d.SetWhiteBottomCrop(1);
}

// The log of a save of the object `setUp` prepares, and of loading that record back.
std::string SaveAndLoadLog(const std::string& model, void (*setUp)(UiDeviceCommon&)) {
    ScopedTestLog log(kLogDump, 1);
    std::unique_ptr<UiDeviceCommon> d = MakePackageModel(model);
    setUp(*d);
    std::string printer = "Printer";
    MakePackageModel(model)->FillUIDeviceValuesWithOEMDEV(printer, Save(*d));
    std::string text;
    for (const std::string& line : log.Bodies()) {
        text += line + '\n';
    }
    return text;
}

// Per model: what a busy document saves (the forced lines show what it does not support) and
// what loading makes of it (values it does not offer are mapped). The model's own defaults load
// without any mapping.
TEST(TransferTest, EveryModelSavesAndLoadsAsItsGoldenLogSays) {
    std::string all;
    for (const char* name : kPackageModels) {
        SCOPED_TRACE(name);
        all += std::string("== ") + name + '\n' + SaveAndLoadLog(name, SetBusyDocument);
        EXPECT_TRUE(Mapped(*MakePackageModel(name), DefaultRecord(name)).empty());
        // A reset writes the model's record whatever the object or the buffer held.
        std::unique_ptr<UiDeviceCommon> busy = MakePackageModel(name);
        SetBusyDocument(*busy);
        OemDevPayload reset;
        std::memset(&reset, 0x5A, sizeof reset);
        busy->FillOEMDEVWithDeviceValues(reset, 1);
        EXPECT_EQ(Bytes(reset), Bytes(DefaultRecord(name)));
    }
    ExpectGoldenFile("transfer_models.log", all);
}

// The page values a rule case can set by name.
using Setter = std::function<void(UiDeviceCommon&, const std::string&)>;
template <typename T>
Setter Number(void (UiDeviceCommon::*set)(T)) {
    return [set](UiDeviceCommon& d, const std::string& v) { (d.*set)(static_cast<T>(stoi(v))); };
}
const std::map<std::string, Setter> kSetters = {
    {"LfBeforeCut", Number(&UiDeviceCommon::SetLfBeforeCut)},
    {"WatermarkEnable", Number(&UiDeviceCommon::SetWatermarkEnable)},
    {"WatermarkBrightness", Number(&UiDeviceCommon::SetWatermarkBrightness)},
    {"CashDrawerPins", Number(&UiDeviceCommon::SetCashDrawerPins)},
    {"CashDrawerTimeOn", Number(&UiDeviceCommon::SetCashDrawerTimeOn)},
    {"CashDrawerPhase", Number(&UiDeviceCommon::SetCashDrawerPhase)},
    {"CouponCopies", Number(&UiDeviceCommon::SetCouponCopies)},
    {"CouponCutInter", Number(&UiDeviceCommon::SetCouponCutInter)},
    {"StartJobBufferMode", Number(&UiDeviceCommon::SetStartJobBufferMode)},
    {"StartJobBuffer",
     [](UiDeviceCommon& d, const std::string& v) {
         d.SetStartJobBuffer(std::vector<uint8_t>(v.begin(), v.end()));
     }},
};

// The lines of `lines` that `base` lacks, each base line matched once, under `tag`.
std::string Unmatched(const char* tag, const std::vector<std::string>& lines,
                      std::vector<std::string> base) {
    std::string out;
    for (const std::string& line : lines) {
        const auto at = std::find(base.begin(), base.end(), line);
        if (at != base.end())
            base.erase(at);
        else
            out += tag + line + '\n';
    }
    return out;
}

// One case of transfer_rules.log, "== <model>: <what>": its "page <setter> <value>" lines set the
// object before its save, its "record <offset> <byte>..." lines then damage the saved record. Its
// outcome is what changes against the model's defaults: its save's lines, the record's bytes and
// the load's lines. Values the model does not offer load with one "not offered" line (none below
// the detail level) and what is then saved loads without any.
std::string RuleCaseLog(const std::string& model, const std::vector<std::string>& inputs) {
    ScopedTestLog log(kLogDetail);
    std::unique_ptr<UiDeviceCommon> d = MakePackageModel(model);
    const OemDevPayload defaults = Save(*d);
    const std::vector<std::string> defaultSave = log.Messages();
    log.Platform().file.clear();
    for (const std::string& input : inputs) {
        std::string kind, name, value;
        std::istringstream(input) >> kind >> name >> value;
        if (kind == "page")
            kSetters.at(name)(*d, value);
    }
    OemDevPayload p = Save(*d);
    auto* bytes = reinterpret_cast<uint8_t*>(&p);
    for (const std::string& input : inputs) {
        std::istringstream in(input);
        std::string kind;
        size_t at = sizeof p;
        if (in >> kind && kind == "record")
            in >> at;
        for (int byte; at < sizeof p && in >> byte;)
            bytes[at++] = static_cast<uint8_t>(byte);
    }
    std::string out = Unmatched("save:", log.Messages(), defaultSave);
    for (size_t i = 0; i < sizeof p; ++i) {
        const auto was = reinterpret_cast<const uint8_t*>(&defaults)[i];
        if (was != bytes[i])
            out += "byte " + std::to_string(i) + ": " + std::to_string(was) + " -> " +
                   std::to_string(bytes[i]) + '\n';
    }
    const std::vector<std::string> defaultLoad = Load(*MakePackageModel(model), defaults);
    {
        ScopedTestLog quiet(kLogInfo, 1);
        std::string printer;
        MakePackageModel(model)->FillUIDeviceValuesWithOEMDEV(printer, p);
        EXPECT_EQ(quiet.Text(), "");
    }
    out += Unmatched("load:", Load(*d, p), defaultLoad);
    EXPECT_TRUE(Mapped(*MakePackageModel(model), Save(*d)).empty());
    return out;
}

// The transfer's rules case by case (mapping, LF before cut, brightness, disabled features,
// free-buffer lines): the cases' inputs and outcomes are both in the golden file.
TEST(TransferTest, RuleCasesSaveAndLoadAsTheirGoldenLogSays) {
    std::ifstream file(KIV_TEST_DATA_DIR "/transfer_rules.log");
    std::string all, title;
    std::vector<std::string> inputs;
    const auto endCase = [&] {
        if (title.empty())
            return;
        SCOPED_TRACE(title);
        all += RuleCaseLog(title.substr(3, title.find(':') - 3), inputs);
    };
    for (std::string line; std::getline(file, line);) {
        const bool input = line.starts_with("page ") || line.starts_with("record ");
        if (line.starts_with("== ")) {
            endCase();
            title = line;
            inputs.clear();
        } else if (input) {
            inputs.push_back(line);
        }
        if (input || line.starts_with("== "))
            all += line + '\n';
    }
    endCase();
    ASSERT_NE(title, "");
    ExpectGoldenFile("transfer_rules.log", all);

    // Loading a disabled drawer leaves the object's other drawer values as they were.
    std::unique_ptr<UiDeviceCommon> d = MakePackageModel("J7");
    d->SetCashDrawerPins(PRN_PROP_CDPINS_PIN1AND2);
    OemDevPayload p = Save(*d);
    p.cashDrawerPins = PRN_PROP_CDPINS_PIN1;
    Load(*d, p);
    EXPECT_EQ(d->GetCashDrawerPins(), PRN_PROP_CDPINS_PIN1AND2);
}

TEST(TransferTest, FreeBuffersAndTextsNeverPassTheirFields) {
    UiDeviceCommon d("", "", "", "");
    std::vector<uint8_t> big(700);
    std::iota(big.begin(), big.end(), uint8_t{3});
    d.SetStartJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetStartJobBuffer(big);
    d.SetEndJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetEndJobBuffer(std::vector<uint8_t>(512, 0x41));
    const std::string longPath(300, 'p'), exact(256, 'e');
    d.SetWatermarkEnable(1);
    d.SetWatermarkPath(longPath);
    d.SetCouponEnable(1);
    d.SetCouponPath(exact);
    d.SetLogo(kLogoEndPage, LogoSettings{1, 1, 0, 0, "short"});
    OemDevPayload p{};
    std::memset(&p, 0xEE, sizeof(p));
    d.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(int{p.startJobBufferLength}, 512);
    EXPECT_EQ(Bytes(p.startJobBuffer, 512), Bytes(big.data(), 512));
    EXPECT_EQ(int{p.offsetX}, 0);  // the field after the end buffer
    EXPECT_EQ(Bytes(p.watermarkPath, 256), longPath.substr(0, 256));
    EXPECT_EQ(p.reserved942, 0);
    EXPECT_EQ(Bytes(p.couponPath, 256), exact);  // fills the field: no terminator
    EXPECT_EQ(Bytes(p.logos[kLogoEndPage].path, 256), "short" + std::string(251, '\0'));

    // A text without terminator is read up to the field only; a length claiming more than the
    // field loads as no command.
    p.endJobBufferLength = 513;
    UiDeviceCommon back("", "", "", "");
    Load(back, p);
    EXPECT_EQ(back.GetStartJobBuffer().size(), 512u);
    EXPECT_TRUE(back.GetEndJobBuffer().empty());
    EXPECT_EQ(back.GetCouponPath(), exact);
}

}  // namespace
