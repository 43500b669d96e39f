// Describes a settings record field by field, with the settings' symbolic names.
#include "settings/record_dump.h"

#include <cstring>
#include <utility>

#include "infra/text_format.h"
#include "settings/setting_names.h"

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

    o.Add("modelName", Text(p.modelName, sizeof p.modelName));
    o.Add("secondaryName", Text(p.secondaryName, sizeof p.secondaryName));

    o.Add("supCashDrawer", Dec(p.supCashDrawer));
    o.Add("cashDrawerEnable", Dec(p.cashDrawerEnable));
    o.Add("cashDrawerPins", Named(CdPinsName(p.cashDrawerPins), p.cashDrawerPins));
    o.Add("cashDrawerTimeOn", Dec(p.cashDrawerTimeOn) + " ms");
    o.Add("cashDrawerTimeOff", Dec(p.cashDrawerTimeOff) + " ms");
    o.Add("cashDrawerPhase", Named(CdPhaseName(p.cashDrawerPhase), p.cashDrawerPhase));

    o.Add("supDensity", Dec(p.supDensity));
    o.Add("density", Named(DensityName(p.density), p.density));
    o.Add("supQuality", Dec(p.supQuality));
    o.Add("quality", Named(QualityName(p.quality), p.quality));
    o.Add("supCutter", Dec(p.supCutter));
    o.Add("cutMode", Named(CutModeName(p.cutMode), p.cutMode));
    o.Add("lfBeforeCut", Dec(p.lfBeforeCut));
    o.Add("supRecovery", Dec(p.supRecovery));
    o.Add("recovery", Named(RecoveryName(p.recovery), p.recovery));
    o.Add("supBlackMark", Dec(p.supBlackMark));
    o.Add("blackMark", Named(BlackMarkName(p.blackMark), p.blackMark));

    o.Add("supPresentation", Dec(p.supPresentation));
    o.Add("presentationMode", Named(PresentationName(p.presentationMode), p.presentationMode));
    o.Add("presentationValue", Dec(p.presentationValue));
    o.Add("presentationTimeout", Dec(p.presentationTimeout));
    o.Add("supHeadLed", Dec(p.supHeadLed));
    o.Add("headLed", Named(HeadLedName(p.headLed), p.headLed));
    o.Add("supBuzzer", Dec(p.supBuzzer));
    o.Add("buzzer", Named(BuzzerName(p.buzzer), p.buzzer));
    o.Add("supContinuousMode", Dec(p.supContinuousMode));
    o.Add("continuousMode", Named(ContinuousModeName(p.continuousMode), p.continuousMode));
    o.Add("supFeeder", Dec(p.supFeeder));
    o.Add("feeder", Named(FeederName(p.feeder), p.feeder, 4));
    o.Add("supSelector", Dec(p.supSelector));
    o.Add("selector", Named(SelectorName(p.selector), p.selector));

    o.Add("supPage2Page", Dec(p.supPage2Page));
    o.Add("page2PageEnable", Dec(p.page2PageEnable));
    o.Add("page2PageAction", Named(Page2PageActionName(p.page2PageAction), p.page2PageAction));
    o.Add("page2PageCheckPoint",
          Named(Page2PageCheckToName(p.page2PageCheckPoint), p.page2PageCheckPoint));
    o.Add("page2PageTimeout", Dec(p.page2PageTimeout) + " s");
    // The extra is stored from an 8-bit page value; a wider number has no name.
    o.Add("page2PageExtra", Named(p.page2PageExtra <= 0xFF
                                      ? Page2PageAfterToName(static_cast<uint8_t>(p.page2PageExtra))
                                      : std::string("NOID"),
                                  p.page2PageExtra, 4));

    o.Add("watermarkEnable", Dec(p.watermarkEnable));
    o.Add("watermarkDrawPosition",
          Named(WatermarkDrawPositionName(p.watermarkDrawPosition), p.watermarkDrawPosition));
    o.Add("watermarkDrawType",
          Named(WatermarkDrawTypeName(p.watermarkDrawType), p.watermarkDrawType));
    o.Add("watermarkVHPosition",
          Named(WatermarkVHPositionName(p.watermarkVHPosition), p.watermarkVHPosition));
    o.Add("watermarkPath", Text(p.watermarkPath, sizeof p.watermarkPath));
    o.Add("reserved942", Dec(p.reserved942));
    o.Add("reserved943", Dec(p.reserved943));
    o.Add("watermarkBrightnessEnable", Dec(p.watermarkBrightnessEnable));
    o.Add("watermarkBrightness", Dec(p.watermarkBrightness));

    o.Add("convMode", Named(ConversionModeName(p.convMode), p.convMode));
    o.Add("convThreshold", Dec(p.convThreshold));
    o.Add("convFilterUp", Dec(p.convFilterUp));
    o.Add("convFilterDown", Dec(p.convFilterDown));

    for (size_t i = 0; i < kLogoCount; ++i) {
        const OemLogo& logo = p.logos[i];
        const std::string at = "logos[" + std::to_string(i) + "].";
        o.Add(at + "enable", Dec(logo.enable));
        o.Add(at + "source", Named(LogoSourceName(logo.source), logo.source));
        o.Add(at + "drawType", Named(ImageDrawTypeName(logo.drawType), logo.drawType));
        o.Add(at + "drawPosition",
              Named(ImageDrawPositionName(logo.drawPosition), logo.drawPosition));
        o.Add(at + "path", Text(logo.path, sizeof logo.path));
    }

    o.Add("couponEnable", Dec(p.couponEnable));
    o.Add("couponCopies", Dec(p.couponCopies));
    o.Add("couponDrawType", Named(ImageDrawTypeName(p.couponDrawType), p.couponDrawType));
    o.Add("couponDrawPosition",
          Named(ImageDrawPositionName(p.couponDrawPosition), p.couponDrawPosition));
    o.Add("couponCutInter", Named(CouponCutName(p.couponCutInter), p.couponCutInter));
    o.Add("couponCutFinal", Named(CouponCutName(p.couponCutFinal), p.couponCutFinal));
    o.Add("couponScale", Dec(p.couponScale));
    o.Add("couponPath", Text(p.couponPath, sizeof p.couponPath));

    o.Add("startJobBufferLength", Dec(p.startJobBufferLength));
    o.Add("startJobBufferMode", Named(FreeCmdModeName(p.startJobBufferMode), p.startJobBufferMode));
    o.Add("startJobBuffer", Buffer(p.startJobBuffer, sizeof p.startJobBuffer,
                                   p.startJobBufferLength, p.startJobBufferMode));
    o.Add("endJobBufferLength", Dec(p.endJobBufferLength));
    o.Add("endJobBufferMode", Named(FreeCmdModeName(p.endJobBufferMode), p.endJobBufferMode));
    o.Add("endJobBuffer",
          Buffer(p.endJobBuffer, sizeof p.endJobBuffer, p.endJobBufferLength, p.endJobBufferMode));

    o.Add("offsetX", Dec(p.offsetX));
    o.Add("offsetY", Dec(p.offsetY));
    o.Add("reductionEnable", Dec(p.reductionEnable));
    o.Add("reductionMode", Named(ReductionModeName(p.reductionMode), p.reductionMode));
    o.Add("reductionMinValue", Dec(p.reductionMinValue));
    o.Add("reductionValue", Dec(p.reductionValue));
    o.Add("skipWhitePages", Dec(p.skipWhitePages));
    o.Add("whiteTopCrop", Dec(p.whiteTopCrop));
    o.Add("whiteBottomCrop", Dec(p.whiteBottomCrop));
    o.Add("rotate180", Dec(p.rotate180));

    o.Add("dwSignTail1", Hex(rec.dwSignTail1, 8));
    o.Add("dwSignTail2", Hex(rec.dwSignTail2, 8));
    return o.Take();
}
