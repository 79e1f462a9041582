#include "surface/typeface.h"

#include <algorithm>

#include "CodePage.h"

namespace tool {

namespace {

struct KnownFace {
    const char* name;
    const char* families;
    CellShape shape;
};

// MS Gothic's cell is its em, so layouts count on two bytes being as wide as a line is high. Whatever stands in for it
// therefore gets its cell, although the stand-in's own is half as high again.
constexpr CellShape ms_gothic = {220.0 / 256, 36.0 / 256};
constexpr const char* gothic_families = "ＭＳ ゴシック, MS Gothic, IPAGothic, Noto Sans Mono CJK JP, monospace";

constexpr KnownFace known_faces[] = {
    {"ＭＳ ゴシック", gothic_families, ms_gothic},
    {"MS Gothic", gothic_families, ms_gothic},
    {"Times New Roman", "Times New Roman, Liberation Serif, serif", {1825.0 / 2048, 443.0 / 2048}},
};

}  // namespace

double Typeface::em_px(const CellShape& known) const {
    const CellShape cell = shape.value_or(known);
    return size_px < 0 ? -size_px : size_px / (cell.ascent + cell.descent);
}

Typeface typeface_of(const CFont& font, double pixels) {
    LOGFONTA log = {};
    font.GetLogFont(&log);
    if (log.lfHeight == 0) log.lfHeight = 16;
    const std::string bytes(log.lfFaceName, std::find(log.lfFaceName, log.lfFaceName + LF_FACESIZE, '\0'));
    Typeface face{Utf8FromCodePage932(bytes.c_str()),
                  {},
                  log.lfHeight * pixels,
                  log.lfWeight == FW_DONTCARE ? FW_NORMAL : log.lfWeight,
                  log.lfItalic != 0,
                  log.lfUnderline != 0,
                  log.lfStrikeOut != 0,
                  log.lfQuality == NONANTIALIASED_QUALITY,
                  log.lfCharSet == SHIFTJIS_CHARSET};
    for (const KnownFace& known : known_faces)
        if (face.families == known.name) face.families = known.families, face.shape = known.shape;
    return face;
}

double baseline_drop(const CellShape& shape, double em_px, UINT align) {
    switch (align & TA_BASELINE) {
        case TA_BASELINE: return 0;
        case TA_BOTTOM: return -shape.descent * em_px;
        default: return shape.ascent * em_px;
    }
}

}  // namespace tool
