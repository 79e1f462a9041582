#include "host/report/texts.h"

#include <algorithm>

#include "host/era_calendar.h"

namespace cephtool {
namespace {

constexpr ReportText text_table[] = {
    {"Cephalometric report", "セファロ分析報告書"},
    {"Comparison of cephalograms", "セファロ比較報告書"},
    {"Sex", "性別"},
    {"male", "男性"},
    {"female", "女性"},
    {"not given", "未入力"},
    {"Born", "生年月日"},
    {"Film", "撮影日"},
    {"Film %1", "撮影%1"},
    {"Age at the film", "撮影時年齢"},
    {"%1 y %2 m", "%1歳%2か月"},
    {"%1 years", "%1歳"},
    {"Kind", "種類"},
    {"Lateral film", "側面セファロ"},
    {"Frontal film", "正面セファロ"},
    {"Dental cast", "歯列模型"},
    {"File", "ファイル"},
    {"Growth", "成長段階"},
    {"Age", "年齢"},
    {"Hellman stage", "Hellmanの歯齢"},
    {"Ricketts stage", "Rickettsの段階"},
    {"Bone age", "骨年齢"},
    {"Bone age less age", "骨年齢と年齢の差"},
    {"Scale %1 % of true size", "縮尺 実物の%1 %"},
    {"True size (scale 1:1)", "実物大（縮尺 1:1）"},
    {"Outlines: an average face, fitted to the landmarks", "輪郭：平均顔を計測点に合わせたもの"},
    {"100 mm: check with a ruler", "100 mm：定規で確認のこと"},
    {"100 mm of the patient", "実寸 100 mm"},
    {"Superimposition on S-N at S", "S-N平面、S点での重ね合わせ"},
    {"Superimposition on ANS-PNS at ANS", "口蓋平面（ANS-PNS）、ANS点での重ね合わせ"},
    {"Superimposition on the mandibular plane at Me", "下顎下縁平面、Me点での重ね合わせ"},
    {"Not possible: %1 missing", "作成不可：%1 がない"},
    {"Item", "計測項目"},
    {"Value", "計測値"},
    {"Mean", "平均値"},
    {"SD", "標準偏差"},
    {"in SD", "偏差"},
    {"Change", "変化量"},
    {"missing: %1", "計測点なし：%1"},
    {"norm missing: %1", "標準値の計測点なし：%1"},
    {"no formula", "計算式なし"},
    {"not a finite number", "計算不能"},
    {"depends on the sex", "性別が必要"},
    {"Norms: %1", "標準値：%1"},
    {"age %1", "年齢 %1歳"},
    {"dental stage %1", "歯齢 %1"},
    {"lowest band, since the case lacks %1", "情報不足（%1）のため最初の区分"},
    {"sex", "性別"},
    {"birth", "生年月日"},
    {"film", "撮影日"},
    {"dental_stage", "歯齢"},
    {"Norms that differ between men and women are left out, since the sex is not given.",
     "性別が未入力のため、男女で異なる標準値は省いた。"},
    {"None of the analyses can be made from the landmarks of this case.", "この症例の計測点でできる分析はない。"},
    {"A star stands for each whole SD from the mean. In the chart the bands end at 1, 2 and 3 SD; a triangle points to a "
     "value beyond.",
     "＊は平均値からの標準偏差1つ分を表す。図の帯は標準偏差の1、2、3倍まで。三角はその外の値を示す。"},
    {"Change: the last film minus the first one. Norms are those of the last film.",
     "変化量は最後の値から最初の値を引いたもの。標準値は最後の撮影時のもの。"},
    {"Made by cephtool %1 from the analyses %2.", "cephtool %1 で作成。使用した分析ファイル：%2。"},
    {"Calculated from landmarks, not a diagnosis.", "計測点からの計算結果であり、診断ではない。"},
    {"Page %1 of %2", "%1 / %2 ページ"},
};

constexpr const char* none = "-";

std::string replaced(std::string text, std::string_view place, const std::string& by) {
    const std::size_t at = text.find(place);
    return at == std::string::npos ? text : text.replace(at, place.size(), by);
}

std::string number(unsigned value) {
    return std::to_string(value);
}

}  // namespace

std::span<const ReportText> report_texts() {
    return text_table;
}

std::string Texts::operator()(std::string_view english) const {
    if (language_ == Language::english) return std::string(english);
    const auto row = std::ranges::find(text_table, english, &ReportText::english);
    return std::string(row == std::end(text_table) ? english : row->japanese);
}

// From the last place to the first, so that what is put in is not looked at again.
std::string Texts::operator()(std::string_view english, const std::string& first, const std::string& second) const {
    return replaced(replaced((*this)(english), "%2", second), "%1", first);
}

std::string Texts::sex(const std::optional<Sex>& sex) const {
    return (*this)(sex ? name_of(*sex) : "not given");
}

std::string Texts::date(const std::optional<Date>& date) const {
    if (!date) return none;
    const std::optional<EraCalendar> calendar = EraCalendar::find();
    if (language_ == Language::english) {
        const std::string era = era_text(calendar, *date, code_text);
        return text_of(*date) + (era.empty() ? "" : " (" + era + ")");
    }
    const std::string era = era_text(calendar, *date, japanese_text);
    return number(static_cast<unsigned>(static_cast<int>(date->year()))) + "年" +
           number(static_cast<unsigned>(date->month())) + "月" + number(static_cast<unsigned>(date->day())) + "日" +
           (era.empty() ? "" : "（" + era + "）");
}

std::string Texts::age(const Case& record) const {
    if (!record.birth || !record.film) return none;
    const Age age = age_at(*record.film, *record.birth);
    return (*this)("%1 y %2 m", std::to_string(age.years), std::to_string(age.months));
}

std::string Texts::film(std::size_t index) const {
    return (*this)("Film %1", std::to_string(index + 1));
}

std::string Texts::kind(Kind kind) const {
    return (*this)(kind == Kind::lateral ? "Lateral film" : kind == Kind::frontal ? "Frontal film" : "Dental cast");
}

}  // namespace cephtool
