// UiDeviceCommon: the capability object of one printer model while the property pages are open.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "settings/oemdev.h"

// Positions in the capability flag row. Each flag mirrors the Sup byte of the same feature that
// the model's capability export writes, so a page shows exactly what the record will carry.
// The page registration reads them: Peripherals on 0/1, Cut/Move on 2/5/6/7, Accessories on
// 3/4, Presentation on 8/9/10.
inline constexpr size_t kCapCashDrawer = 0;
inline constexpr size_t kCapBuzzer = 1;
inline constexpr size_t kCapCutter = 2;
inline constexpr size_t kCapFeeder = 3;
inline constexpr size_t kCapSelector = 4;
inline constexpr size_t kCapRecovery = 5;
inline constexpr size_t kCapBlackMark = 6;
inline constexpr size_t kCapContinuousMode = 7;
inline constexpr size_t kCapPresenter = 8;
inline constexpr size_t kCapHeadLed = 9;
inline constexpr size_t kCapPage2Page = 10;
inline constexpr size_t kCapabilityFlagCount = 11;

// Logo slots, in the record's order.
inline constexpr size_t kLogoBeginDoc = 0;
inline constexpr size_t kLogoBeginPage = 1;
inline constexpr size_t kLogoEndPage = 2;
inline constexpr size_t kLogoEndDoc = 3;

struct LogoSettings {
    uint8_t enable = 0;
    uint8_t source = 0;
    uint8_t drawType = 0;
    uint8_t drawPosition = 0;
    std::string path;  // image file path, or the printer-memory logo number as text
};

class UiDeviceCommon {
  public:
    // The three strings after the model name are the further pieces of the driver's model data
    // text ("MODEL|second|third|fourth"); the second one is the secondary name that the record
    // carries at payload offset 128.
    UiDeviceCommon(std::string modelName, std::string second, std::string third,
                   std::string fourth);
    virtual ~UiDeviceCommon();

    // "" for the generic device, whatever name it was built with.
    virtual std::string GetModelName() const;
    // Writes the model's Sup bytes and default values; the generic device writes nothing.
    virtual void ExportCapabilities(OemDevPayload& payload) const;
    virtual int GetModelNumber() const;
    // A copy of the same model with the same values, for trying a record on without touching
    // the object the caller holds.
    virtual std::unique_ptr<UiDeviceCommon> Clone() const;

    // Object to record, enforcing the model's capabilities. A non-zero `reset` rebuilds the
    // defaults and reloads the object from them instead.
    void FillOEMDEVWithDeviceValues(OemDevPayload& payload, int reset);
    // Record to object, enforcing the model's capabilities; `modelName` is cleared on return.
    void FillUIDeviceValuesWithOEMDEV(std::string& modelName, const OemDevPayload& payload);

    // Identity.
    const std::string& GetBuiltModelName() const { return modelName_; }
    const std::string& GetSecondaryName() const { return secondaryName_; }
    const std::string& GetThirdName() const { return thirdName_; }
    const std::string& GetFourthName() const { return fourthName_; }
    void SetSecondaryName(std::string value) { secondaryName_ = std::move(value); }

    // 0..10; 0 when out of range.
    uint8_t GetCapabilityFlag(size_t index) const;

    // Paper-reduction steps: position 0..7 <-> 12, 25, 37, 50, 62, 75, 87, 100 percent.
    static int PercentFromPosition(int position);
    static int PositionFromPercent(int percent);

    // Cash drawer.
    uint8_t GetCashDrawerEnable() const { return cashDrawerEnable_; }
    void SetCashDrawerEnable(uint8_t v) { cashDrawerEnable_ = v; }
    uint8_t GetCashDrawerPins() const { return cashDrawerPins_; }
    void SetCashDrawerPins(uint8_t v) { cashDrawerPins_ = v; }
    uint16_t GetCashDrawerTimeOn() const { return cashDrawerTimeOn_; }
    void SetCashDrawerTimeOn(uint16_t v) { cashDrawerTimeOn_ = v; }
    uint16_t GetCashDrawerTimeOff() const { return cashDrawerTimeOff_; }
    void SetCashDrawerTimeOff(uint16_t v) { cashDrawerTimeOff_ = v; }
    uint8_t GetCashDrawerPhase() const { return cashDrawerPhase_; }
    void SetCashDrawerPhase(uint8_t v) { cashDrawerPhase_ = v; }
    const std::vector<uint8_t>& GetCashDrawerPhaseList() const { return cashDrawerPhaseList_; }
    void SetCashDrawerPhaseList(std::vector<uint8_t> v) { cashDrawerPhaseList_ = std::move(v); }

    // Buzzer.
    uint8_t GetBuzzer() const { return buzzer_; }
    void SetBuzzer(uint8_t v) { buzzer_ = v; }
    const std::vector<uint8_t>& GetBuzzerList() const { return buzzerList_; }
    void SetBuzzerList(std::vector<uint8_t> v) { buzzerList_ = std::move(v); }

    // Print.
    uint8_t GetDensity() const { return density_; }
    void SetDensity(uint8_t v) { density_ = v; }
    const std::vector<uint8_t>& GetDensityList() const { return densityList_; }
    void SetDensityList(std::vector<uint8_t> v) { densityList_ = std::move(v); }
    uint8_t GetQuality() const { return quality_; }
    void SetQuality(uint8_t v) { quality_ = v; }
    const std::vector<uint8_t>& GetQualityList() const { return qualityList_; }
    void SetQualityList(std::vector<uint8_t> v) { qualityList_ = std::move(v); }

    // Cut/Move.
    uint8_t GetCutMode() const { return cutMode_; }
    void SetCutMode(uint8_t v) { cutMode_ = v; }
    const std::vector<uint8_t>& GetCutModeList() const { return cutModeList_; }
    void SetCutModeList(std::vector<uint8_t> v) { cutModeList_ = std::move(v); }
    int32_t GetLfBeforeCut() const { return lfBeforeCut_; }
    void SetLfBeforeCut(int32_t v) { lfBeforeCut_ = v; }
    uint8_t GetRecovery() const { return recovery_; }
    void SetRecovery(uint8_t v) { recovery_ = v; }
    const std::vector<uint8_t>& GetRecoveryList() const { return recoveryList_; }
    void SetRecoveryList(std::vector<uint8_t> v) { recoveryList_ = std::move(v); }
    uint8_t GetContinuousMode() const { return continuousMode_; }
    void SetContinuousMode(uint8_t v) { continuousMode_ = v; }
    const std::vector<uint8_t>& GetContinuousModeList() const { return continuousModeList_; }
    void SetContinuousModeList(std::vector<uint8_t> v) { continuousModeList_ = std::move(v); }
    uint8_t GetBlackMark() const { return blackMark_; }
    void SetBlackMark(uint8_t v) { blackMark_ = v; }
    const std::vector<uint8_t>& GetBlackMarkList() const { return blackMarkList_; }
    void SetBlackMarkList(std::vector<uint8_t> v) { blackMarkList_ = std::move(v); }

    // Accessories.
    uint16_t GetFeeder() const { return feeder_; }
    void SetFeeder(uint16_t v) { feeder_ = v; }
    const std::vector<uint16_t>& GetFeederList() const { return feederList_; }
    void SetFeederList(std::vector<uint16_t> v) { feederList_ = std::move(v); }
    uint8_t GetSelector() const { return selector_; }
    void SetSelector(uint8_t v) { selector_ = v; }
    const std::vector<uint8_t>& GetSelectorList() const { return selectorList_; }
    void SetSelectorList(std::vector<uint8_t> v) { selectorList_ = std::move(v); }

    // Presentation.
    uint8_t GetPresentationMode() const { return presentationMode_; }
    void SetPresentationMode(uint8_t v) { presentationMode_ = v; }
    const std::vector<uint8_t>& GetPresentationList() const { return presentationList_; }
    void SetPresentationList(std::vector<uint8_t> v) { presentationList_ = std::move(v); }
    int32_t GetPresentationValue() const { return presentationValue_; }
    void SetPresentationValue(int32_t v) { presentationValue_ = v; }
    int32_t GetPresentationTimeout() const { return presentationTimeout_; }
    void SetPresentationTimeout(int32_t v) { presentationTimeout_ = v; }
    uint8_t GetHeadLed() const { return headLed_; }
    void SetHeadLed(uint8_t v) { headLed_ = v; }
    const std::vector<uint8_t>& GetHeadLedList() const { return headLedList_; }
    void SetHeadLedList(std::vector<uint8_t> v) { headLedList_ = std::move(v); }
    uint8_t GetPage2PageEnable() const { return page2PageEnable_; }
    void SetPage2PageEnable(uint8_t v) { page2PageEnable_ = v; }
    uint8_t GetPage2PageAction() const { return page2PageAction_; }
    void SetPage2PageAction(uint8_t v) { page2PageAction_ = v; }
    const std::vector<uint8_t>& GetPage2PageActionList() const { return page2PageActionList_; }
    void SetPage2PageActionList(std::vector<uint8_t> v) { page2PageActionList_ = std::move(v); }
    uint16_t GetPage2PageTimeout() const { return page2PageTimeout_; }
    void SetPage2PageTimeout(uint16_t v) { page2PageTimeout_ = v; }
    uint8_t GetPage2PageExtra() const { return page2PageExtra_; }
    void SetPage2PageExtra(uint8_t v) { page2PageExtra_ = v; }

    // Watermark.
    uint8_t GetWatermarkEnable() const { return watermarkEnable_; }
    void SetWatermarkEnable(uint8_t v) { watermarkEnable_ = v; }
    uint8_t GetWatermarkDrawPosition() const { return watermarkDrawPosition_; }
    void SetWatermarkDrawPosition(uint8_t v) { watermarkDrawPosition_ = v; }
    uint8_t GetWatermarkDrawType() const { return watermarkDrawType_; }
    void SetWatermarkDrawType(uint8_t v) { watermarkDrawType_ = v; }
    uint8_t GetWatermarkVHPosition() const { return watermarkVHPosition_; }
    void SetWatermarkVHPosition(uint8_t v) { watermarkVHPosition_ = v; }
    const std::string& GetWatermarkPath() const { return watermarkPath_; }
    void SetWatermarkPath(std::string v) { watermarkPath_ = std::move(v); }
    int32_t GetWatermarkBrightnessEnable() const { return watermarkBrightnessEnable_; }
    void SetWatermarkBrightnessEnable(int32_t v) { watermarkBrightnessEnable_ = v; }
    // 0..200 as the page shows it; the record stores 200 minus this value.
    int32_t GetWatermarkBrightness() const { return watermarkBrightness_; }
    void SetWatermarkBrightness(int32_t v) { watermarkBrightness_ = v; }

    // Coupon.
    uint8_t GetCouponEnable() const { return couponEnable_; }
    void SetCouponEnable(uint8_t v) { couponEnable_ = v; }
    uint8_t GetCouponCopies() const { return couponCopies_; }
    void SetCouponCopies(uint8_t v) { couponCopies_ = v; }
    uint8_t GetCouponDrawType() const { return couponDrawType_; }
    void SetCouponDrawType(uint8_t v) { couponDrawType_ = v; }
    uint8_t GetCouponDrawPosition() const { return couponDrawPosition_; }
    void SetCouponDrawPosition(uint8_t v) { couponDrawPosition_ = v; }
    uint8_t GetCouponCutInter() const { return couponCutInter_; }
    void SetCouponCutInter(uint8_t v) { couponCutInter_ = v; }
    uint8_t GetCouponCutFinal() const { return couponCutFinal_; }
    void SetCouponCutFinal(uint8_t v) { couponCutFinal_ = v; }
    const std::string& GetCouponPath() const { return couponPath_; }
    void SetCouponPath(std::string v) { couponPath_ = std::move(v); }

    // Logos; an index past the last slot reads an empty logo and writes nothing.
    const LogoSettings& GetLogo(size_t index) const;
    void SetLogo(size_t index, LogoSettings logo);

    // Print adjust.
    int16_t GetOffsetX() const { return offsetX_; }
    void SetOffsetX(int16_t v) { offsetX_ = v; }
    int16_t GetOffsetY() const { return offsetY_; }
    void SetOffsetY(int16_t v) { offsetY_ = v; }
    uint8_t GetReductionEnable() const { return reductionEnable_; }
    void SetReductionEnable(uint8_t v) { reductionEnable_ = v; }
    uint8_t GetReductionMode() const { return reductionMode_; }
    void SetReductionMode(uint8_t v) { reductionMode_ = v; }
    uint16_t GetReductionMinValue() const { return reductionMinValue_; }
    void SetReductionMinValue(uint16_t v) { reductionMinValue_ = v; }
    uint16_t GetReductionValue() const { return reductionValue_; }
    void SetReductionValue(uint16_t v) { reductionValue_ = v; }
    uint8_t GetSkipWhitePages() const { return skipWhitePages_; }
    void SetSkipWhitePages(uint8_t v) { skipWhitePages_ = v; }
    uint8_t GetWhiteTopCrop() const { return whiteTopCrop_; }
    void SetWhiteTopCrop(uint8_t v) { whiteTopCrop_ = v; }
    uint8_t GetWhiteBottomCrop() const { return whiteBottomCrop_; }
    void SetWhiteBottomCrop(uint8_t v) { whiteBottomCrop_ = v; }
    uint8_t GetRotate180() const { return rotate180_; }
    void SetRotate180(uint8_t v) { rotate180_ = v; }

    // 1-bit conversion.
    uint8_t GetConvMode() const { return convMode_; }
    void SetConvMode(uint8_t v) { convMode_ = v; }
    uint8_t GetConvThreshold() const { return convThreshold_; }
    void SetConvThreshold(uint8_t v) { convThreshold_ = v; }
    uint8_t GetConvFilterUp() const { return convFilterUp_; }
    void SetConvFilterUp(uint8_t v) { convFilterUp_ = v; }
    uint8_t GetConvFilterDown() const { return convFilterDown_; }
    void SetConvFilterDown(uint8_t v) { convFilterDown_ = v; }

    // Free command buffers sent before and after each job. The record holds at most 512 bytes
    // of each; saving stores no more than that.
    uint8_t GetStartJobBufferMode() const { return startJobBufferMode_; }
    void SetStartJobBufferMode(uint8_t v) { startJobBufferMode_ = v; }
    const std::vector<uint8_t>& GetStartJobBuffer() const { return startJobBuffer_; }
    void SetStartJobBuffer(std::vector<uint8_t> v) { startJobBuffer_ = std::move(v); }
    uint8_t GetEndJobBufferMode() const { return endJobBufferMode_; }
    void SetEndJobBufferMode(uint8_t v) { endJobBufferMode_ = v; }
    const std::vector<uint8_t>& GetEndJobBuffer() const { return endJobBuffer_; }
    void SetEndJobBuffer(std::vector<uint8_t> v) { endJobBuffer_ = std::move(v); }

  protected:
    void SetCapabilityFlag(size_t index, uint8_t value);
    // Sets the flag row from the Sup bytes of this object's own capability export.
    void TakeCapabilityFlagsFromExport();
    // Remembers the current values of the settings with offered lists (and of the presenter's
    // duration and the page-to-page extra) as the ones that a loaded value the pages would not
    // accept becomes; a model's constructor calls it once its lists and
    // starting values are set.
    void KeepStartingValues();

  private:
    // The record's defaults that do not depend on the model, and the identity strings.
    void WriteFixedDefaults(OemDevPayload& payload) const;
    // Both transfers walk the same sections in the same order; kSave picks the direction.
    template <bool kSave>
    void TransferSettings(std::conditional_t<kSave, OemDevPayload, const OemDevPayload>& payload);

    struct StartingValues {
        uint8_t cashDrawerPhase, buzzer, density, quality, cutMode, recovery, continuousMode,
            selector, presentationMode, headLed, blackMark, page2PageAction, page2PageExtra;
        uint16_t feeder;
        int32_t presentationTimeout;
    };
    StartingValues starts_{};

    std::string modelName_;
    std::string secondaryName_;
    std::string thirdName_;
    std::string fourthName_;
    std::array<uint8_t, kCapabilityFlagCount> capabilityFlags_{};

    // Starting values are those of a cleared record loaded into an object that supports
    // nothing; the models' constructors change them.
    uint8_t cashDrawerEnable_ = 0;
    uint8_t cashDrawerPins_ = 0;
    uint16_t cashDrawerTimeOn_ = 0;
    uint16_t cashDrawerTimeOff_ = 0;
    uint8_t cashDrawerPhase_ = 0;
    uint8_t buzzer_ = 0;
    uint8_t density_ = 0;
    std::vector<uint8_t> densityList_;
    uint8_t quality_ = 0;
    std::vector<uint8_t> qualityList_;
    uint8_t cutMode_ = 0;
    std::vector<uint8_t> cutModeList_;
    int32_t lfBeforeCut_ = 0;
    uint8_t recovery_ = 0;
    std::vector<uint8_t> recoveryList_;
    uint8_t continuousMode_ = 1;  // not set by driver
    std::vector<uint8_t> continuousModeList_;
    uint16_t feeder_ = 0;
    std::vector<uint16_t> feederList_;
    uint8_t selector_ = 0;
    std::vector<uint8_t> selectorList_;
    uint8_t presentationMode_ = 0;
    std::vector<uint8_t> presentationList_;
    int32_t presentationValue_ = 0;
    int32_t presentationTimeout_ = 1;
    uint8_t headLed_ = 0;
    std::vector<uint8_t> headLedList_;
    uint8_t blackMark_ = 0;
    std::vector<uint8_t> blackMarkList_;
    uint8_t page2PageEnable_ = 0;
    uint8_t page2PageAction_ = 0;
    std::vector<uint8_t> page2PageActionList_;
    uint16_t page2PageTimeout_ = 0;
    uint8_t page2PageExtra_ = 0;
    uint8_t watermarkEnable_ = 0;
    uint8_t watermarkDrawPosition_ = 1;
    uint8_t watermarkDrawType_ = 1;
    uint8_t watermarkVHPosition_ = 0x11;
    std::string watermarkPath_;
    int32_t watermarkBrightnessEnable_ = 0;
    int32_t watermarkBrightness_ = 100;
    uint8_t couponEnable_ = 0;
    uint8_t couponCopies_ = 0;
    uint8_t couponDrawType_ = 0;
    uint8_t couponDrawPosition_ = 0;
    std::vector<uint8_t> buzzerList_;
    std::vector<uint8_t> cashDrawerPhaseList_;
    uint8_t couponCutInter_ = 0;
    uint8_t couponCutFinal_ = 0;
    std::string couponPath_;
    std::array<LogoSettings, kLogoCount> logos_{};
    int16_t offsetX_ = 0;
    int16_t offsetY_ = 0;
    uint8_t reductionEnable_ = 0;
    uint8_t reductionMode_ = 0;
    uint16_t reductionMinValue_ = 0;
    uint16_t reductionValue_ = 0;
    uint8_t convMode_ = 0;
    uint8_t convThreshold_ = 128;
    uint8_t convFilterUp_ = 255;
    uint8_t convFilterDown_ = 0;
    uint8_t startJobBufferMode_ = 0;
    std::vector<uint8_t> startJobBuffer_;
    uint8_t endJobBufferMode_ = 0;
    std::vector<uint8_t> endJobBuffer_;
    uint8_t skipWhitePages_ = 0;
    uint8_t whiteTopCrop_ = 0;
    uint8_t whiteBottomCrop_ = 0;
    uint8_t rotate180_ = 0;
};
