#include "results/texts.h"

#include <Analysis.h>

#include <algorithm>
#include <array>

#include "base/eras.h"

namespace cephtool {
namespace {

constexpr TextRow text_table[] = {
    {"Cephalometric report", "セファロ分析報告書"},
    {"Comparison of cephalograms", "セファロ比較報告書"},
    {"Sex", "性別"},
    {"male", "男性"},
    {"female", "女性"},
    {"not given", "未入力"},
    {"Born", "生年月日"},
    {"Film", "撮影日"},
    {"Film %1", "撮影%1"},
    {"Side", "撮影側"},
    {"left", "左"},
    {"right", "右"},
    {"Age at the film", "撮影時年齢"},
    {"%1 y %2 m", "%1歳%2か月"},
    {"%1 years", "%1歳"},
    {"Kind", "種類"},
    {"Lateral film", "側面セファロ"},
    {"Frontal film", "正面セファロ"},
    {"Dental cast", "歯列模型"},
    {"File", "ファイル"},
    {"Growth", "成長段階"},
    {"Stages of the analyses", "各分析の区分"},
    {"years", "歳"},
    {"not known", "不明"},
    {"from %1", "根拠：%1"},
    {"made from the corners", "隅の点から作成"},
    {"coefficients", "係数"},
    {"built in", "内蔵"},
    {"bone age", "骨年齢"},
    {"age", "年齢"},
    {"dental stage", "歯齢"},
    {"in none of its stages", "該当する区分がない"},
    {"the folder of analyses has no stages in CalcForm/Ricketts.txt",
     "分析フォルダーの CalcForm/Ricketts.txt に区分がない"},
    {"the table has no stages for this sex", "この性別の区分がない"},
    {"points lie on each other, so that a depth or a height is 0", "点が重なり、長さか高さが 0 となる"},
    {"The bone age formula was made from children: in the grown-up it says nothing.",
     "骨年齢の式は小児の資料によるもので、成人では意味を持たない。"},
    {"What is missing is given so:", "不足している情報の指定方法："},
    {"--sex m or --sex f, or \"sex\": \"female\" in the case", "--sex m または --sex f、症例では \"sex\": \"female\""},
    {"\"birth\": \"2012-03-31\"; in a CSV # birth=2012-03-31",
     "\"birth\": \"2012-03-31\"、CSV では # birth=2012-03-31"},
    {"the day of the film: \"film\": \"2025-06-02\"; in a CSV # film=2025-06-02",
     "撮影日：\"film\": \"2025-06-02\"、CSV では # film=2025-06-02"},
    {"\"dental_stage\": \"IIIA\"; in a CSV # dental_stage=IIIA",
     "\"dental_stage\": \"IIIA\"、CSV では # dental_stage=IIIA"},
    {"points of the vertebrae: docs/case_format.md, \"Vertebrae\", shows where they lie",
     "頸椎の点：位置は docs/case_format.md の Vertebrae にある"},
    {"sex not given", "性別未入力"},
    {"%1 mm a pixel", "1画素 %1 mm"},
    {"The case has the landmarks of no item of any analysis.", "この症例の計測点で計測できる項目はない。"},
    {"Age", "年齢"},
    {"Hellman stage", "Hellmanの歯齢"},
    {"Ricketts stage", "Rickettsの段階"},
    {"Bone age", "骨年齢"},
    {"Bone age less age", "骨年齢と年齢の差"},
    {"Scale %1 % of true size", "縮尺 実物の%1 %"},
    {"True size (scale 1:1)", "実物大（縮尺 1:1）"},
    {"Outlines: an average face, fitted to the landmarks", "輪郭：平均顔を計測点に合わせたもの"},
    {"Outlines: average, fitted; dotted: right half", "輪郭：平均顔を合わせたもの、点線：右半側"},
    {"Outlines: average, fitted; dotted: left half", "輪郭：平均顔を合わせたもの、点線：左半側"},
    {"Dotted: the right half, mirrored", "点線：右半側の鏡像"},
    {"Dotted: the left half, mirrored", "点線：左半側の鏡像"},
    {"Crowns: usual shapes; dotted: even arch", "歯冠：標準的な形、点線：左右対称の歯列弓"},
    {"100 mm: check with a ruler", "100 mm：定規で確認のこと"},
    {"100 mm: check with a ruler after printing", "100 mm：印刷後に定規で確認のこと"},
    {"100 mm of the patient", "実寸 100 mm"},
    {"Superimposition on S-N at S", "S-N平面、S点での重ね合わせ"},
    {"Superimposition on ANS-PNS at ANS", "口蓋平面（ANS-PNS）、ANS点での重ね合わせ"},
    {"Superimposition on the mandibular plane at Me", "下顎下縁平面、Me点での重ね合わせ"},
    {"Not possible: %1 missing", "作成不可：%1 がない"},
    {"Item", "計測項目"},
    {"Value", "計測値"},
    {"Unit", "単位"},
    {"Mean", "平均値"},
    {"SD", "標準偏差"},
    {"in SD", "偏差"},
    {"Change", "変化量"},
    {"missing: %1", "計測点なし：%1"},
    {"norm missing: %1", "標準値の計測点なし：%1"},
    {"no formula", "計算式なし"},
    {"not a finite number", "計算不能"},
    {"depends on the sex", "性別が必要"},
    {"depends on growth", "年齢または歯齢が必要"},
    {"%1 and %2 lie at one place", "%1 と %2 が同じ位置にある"},
    {"%1 and %2 are parallel", "%1 と %2 が平行"},
    {"Norms: %1", "標準値：%1"},
    {"Population", "集団"},
    {"† %1: %2", "† %1：%2"},
    {"no norm", "標準値なし"},
    {"men %1, women %2", "男性 %1、女性 %2"},
    {"Norms of people of %1 to %2 years", "%1～%2歳の標準値"},
    {"Norms of people of %1 years and older", "%1歳以上の標準値"},
    {"%1. By --population: %2", "%1。--population で選べるもの：%2"},
    {"With landmarks of your own: %1. docs/landmarks.md says where those of shipped files lie.",
     "独自の計測点：%1。配布ファイルのものは docs/landmarks.ja.md にある。"},
    {"lateral", "側面"},
    {"frontal", "正面"},
    {"model", "模型"},
    {"diagnosis", "診断"},
    {"surgery", "外科"},
    {"Mode", "表示モード"},
    {"No", "番号"},
    {"Points", "点"},
    {"Lines", "線"},
    {"Values", "値"},
    {"all", "全点"},
    {"%1 mode %2", "%1の表示モード %2"},
    {"All landmarks", "計測点：すべて"},
    {"%1 landmarks", "計測点：%1"},
    {"%1 lines", "線：%1"},
    {"%1 values: colour, position, decimals, size", "値：%1（色、位置、小数点以下、大きさ）"},
    {"%1 settings of landmarks", "計測点の設定：%1"},
    {"bold", "太線"},
    {"normal", "細線"},
    {"at %1", "位置 %1"},
    {"Analysis", "分析"},
    {"Items", "項目数"},
    {"age %1", "年齢 %1歳"},
    {"dental stage %1", "歯齢 %1"},
    {"sex", "性別"},
    {"birth", "生年月日"},
    {"film", "撮影日"},
    {"dental_stage", "歯齢"},
    {"+ %1: %2", "正の値は%1：%2"},
    {"all items", "全項目"},
    {"all of %1", "%1 の全項目"},
    {"error not known of %1", "%1 の誤差が不明"},
    {"no error: the value jumps within it", "誤差なし：誤差の範囲内で値が不連続に変わる"},
    {"no error: rests on more than landmarks of films", "誤差なし：フィルム上の計測点以外にもよる"},
    {"mostly %1 (%2 %)", "主に %1 による（%2 %）"},
    {"assumed for %1", "%1 は仮定した誤差"},
    {"the deviation may be none: it lies within the error", "偏差は誤差の範囲内で、ないとも言える"},
    // Studies of readings.
    {"Reliability of landmarks and values", "計測点と計測値の再現性"},
    {"%1 films, %2 readings of each", "フィルム %1 枚、各 %2 回の計測"},
    {"TEM: technical error of measurement of a single reading. ICC(2,1): agreement of single readings, ICC(3,1): their "
     "consistency, with 95 % intervals (Shrout & Fleiss 1979).",
     "TEM：1回の計測の技術的誤差。ICC(2,1)：1回の計測どうしの一致、ICC(3,1)：一貫性、いずれも95 %信頼区間付き（Shrout & "
     "Fleiss 1979）。"},
    {"Of a reading against the first: Dahlberg's error; bias, with p of the paired t-test; 95 % limits of agreement, bias "
     "-/+ 1.96 SD (Bland & Altman 1986).",
     "1回目との比較：Dahlbergの誤差、偏り（対応のあるt検定のp）、95 %一致限界（偏り ± 1.96 SD、Bland & Altman 1986）。"},
    {"Films", "枚数"},
    {"Bias, p", "偏り、p"},
    {"95 % limits", "95 %一致限界"},
    {" to ", "～"},
    {"reading %1", "%1回目"},
    {"SD of an observer's readings %1, of observers %2", "SD：同一計測者内 %1、計測者間 %2"},
    {"Landmarks, mm along Frankfort and across it", "計測点、FH平面に平行・垂直（mm）"},
    {"%1 along", "%1 平行"},
    {"%1 across", "%1 垂直"},
    {"Scatter of the readings on the average face", "平均顔の上の計測点のばらつき"},
    {"At true size (1:1): red the ellipse that holds 95 % of single readings, blue each reading, about the mean of its "
     "film; along Frankfort and across it.",
     "実物大（1:1）。赤：1回の計測の95 %が入る楕円、青：各計測（フィルムごとの平均を中心に、FH平面に平行・垂直）。"},
    {"Not on the average face: %1", "平均顔にない計測点：%1"},
    {"Plots of agreement", "一致度のプロット"},
    {"After Bland and Altman: blue the bias, dashed the limits of agreement, shaded their 95 % confidence intervals; a dot "
     "is a film.",
     "Bland-Altmanプロット。青：偏り、破線：一致限界、帯：それぞれの95 %信頼区間、点：フィルム。"},
    {"mean of both readings, %1", "2回の平均（%1）"},
    {"reading %1 less reading 1, %2", "%1回目－1回目（%2）"},
    // What is remarked.
    {"%1 lies %2 mm from where the other %3 landmarks expect it.",
     "%1 は、他の %3 計測点から推定される位置から %2 mm 離れている。"},
    {"± is one standard error of a single reading, by the errors of the landmarks.",
     "± は計測点の誤差による、1回の計測の標準誤差。"},
    {"(±) rests on landmarks whose error nobody measured, and for which one is assumed: it tells the size only.",
     "(±) は、誤差の実測値がなく仮定した計測点によるもので、目安にとどまる。"},
    {"± is one standard error, by the errors of the landmarks along and across Frankfort, which is taken as S-N less 7 "
     "degrees: Po or Or is missing.",
     "± は計測点の誤差による標準誤差。Po または Or がないため、FH平面は S-N から7度として求めた。"},
    {"± is one standard error, by the errors of the landmarks along and across Frankfort, which is taken as the film's "
     "width: neither Po-Or nor S-N is there.",
     "± は計測点の誤差による標準誤差。Po-Or も S-N もないため、FH平面はフィルムの横方向とした。"},
    {"Norms that differ between men and women are left out, since the sex is not given; --sex m or --sex f gives it.",
     "性別が未入力のため、男女で異なる標準値は省いた。性別は --sex m または --sex f で指定できる。"},
    {"Norms that change with growth are left out, since the case lacks %1.",
     "情報不足（%1）のため、成長とともに変わる標準値は省いた。"},
    {"Norms that change with age are left out: they end at %1 years, and the patient is %2.",
     "年齢で変わる標準値は省いた。標準値は%1歳までだが、患者は%2歳。"},
    {"Norms that change with age are left out: they begin at %1 years, and the patient is %2.",
     "年齢で変わる標準値は省いた。標準値は%1歳からだが、患者は%2歳。"},
    {"Norms that change with growth are left out: the patient is in none of their stages.",
     "成長とともに変わる標準値は省いた。該当する区分がない。"},
    {"The norms end at %1 years, and the patient is %2; they stand in parentheses.",
     "標準値は%1歳まで、患者は%2歳のため、括弧に入れて示す。"},
    {"The norms begin at %1 years, and the patient is %2; they stand in parentheses.",
     "標準値は%1歳から、患者は%2歳のため、括弧に入れて示す。"},
    {"The norms are those of band %1, as --band says.", "標準値は --band で指定された区分 %1 のもの。"},
    {"The film is mirrored, the face looks left: signs of angles and lengths are reversed. --mirror turns it round.",
     "フィルムが左右反転している（顔が左向き）ため、角度や距離の符号が逆になっている。--mirror で反転して計測できる。"},
    {"The film is mirrored, or its right and left landmarks are exchanged: signs of angles and lengths are reversed. "
     "--mirror turns it round.",
     "フィルムが左右反転しているか、左右の計測点が入れ替わっているため、角度や距離の符号が逆になっている。--mirror "
     "で反転して計測できる。"},
    {"The face stands on its head, as when y points up where the format has it down: signs of angles and lengths are "
     "reversed. --flip-y turns it round.",
     "顔が上下逆である（y の向きが形式と逆の場合など）ため、角度や距離の符号が逆になっている。--flip-y "
     "で上下を反転して計測できる。"},
    {"The film is mirrored, or its y points up where the format has it down: signs of angles and lengths are reversed. "
     "--mirror or --flip-y turns it round.",
     "フィルムが左右反転しているか、y の向きが形式と逆のため、角度や距離の符号が逆になっている。--mirror または --flip-y "
     "で反転して計測できる。"},
    {"There are no norms of %&1 for this analysis; these are of %&2.",
     "この分析には%&1の標準値がないため、%&2の標準値を示す。"},
    {"There are no norms of %&1 for this analysis; its file does not say whose these are.",
     "この分析には%&1の標準値がない。示した標準値の集団は記載されていない。"},
    {"The population is that of --population, not that of the file.",
     "集団はファイルの値ではなく --population の指定による。"},
    {"The sex is that of --sex, not that of the file.", "性別はファイルの値ではなく --sex の指定による。"},
    {"The scale is that of the command line, %1 mm a pixel, not the %2 of the file.",
     "縮尺は指定による1画素 %1 mm（ファイルでは %2 mm）。"},
    {"The scale is that of --scale, %1 mm a pixel: %2 mm at a magnification of %3.",
     "縮尺は --scale の指定による1画素 %1 mm（%2 mm を拡大率 %3 で割った値）。"},
    {"The scale is that of --ruler, %1 mm a pixel: %2 mm on %3 pixels.",
     "縮尺は --ruler の指定による1画素 %1 mm（%2 mm が %3 画素）。"},
    {"The scale is that of --ruler, %1 mm a pixel: %2 mm on %3 pixels, at a magnification of %4.",
     "縮尺は --ruler の指定による1画素 %1 mm（%2 mm が %3 画素、拡大率 %4）。"},
    {"The scale is that of the film, %1 mm a pixel: %2. Magnification is out of it.",
     "縮尺は画像ファイルによる1画素 %1 mm（%2）。拡大率は補正済み。"},
    {"The scale is that of the film, %1 mm a pixel: %2. Magnification is still in it, so that lengths are too long; "
     "--magnification takes it out.",
     "縮尺は画像ファイルによる1画素 %1 mm（%2）。拡大率は未補正のため、距離は実際より大きい。--magnification "
     "で補正できる。"},
    {"The scale is that of the film, %1 mm a pixel: %2. The film does not say whether magnification is out of it; "
     "--magnification takes it out.",
     "縮尺は画像ファイルによる1画素 %1 mm（%2）。拡大率が補正済みかどうかは記載がない。--magnification で補正できる。"},
    {"The film notes a magnification of %1, which may be out of its Pixel Spacing or not; it is not applied.",
     "画像には拡大率 %1 の記載があるが、Pixel Spacing に反映済みかどうか不明のため使わない。"},
    {"The film's Pixel Spacing was calibrated, but the film does not say how (0028,0A02).",
     "画像の Pixel Spacing は校正されているが、方法の記載（0028,0A02）がない。"},
    {"The film's calibration type (0028,0A02), %1, is not known.", "画像の校正方法 %1（0028,0A02）は規格にない。"},
    {"The film has a calibration type (0028,0A02), but no Pixel Spacing (0028,0030).",
     "画像に校正方法（0028,0A02）の記載があるが、Pixel Spacing（0028,0030）がない。"},
    {"A magnification of %1 is unusual.", "拡大率 %1 は通常の値ではない。"},
    {"%1 dpi is what programs write that know no resolution.",
     "%1 dpi は、解像度が分からないときにプログラムが書く値である。"},
    {"By its scale the film is %1 mm long, which no head film is.",
     "この縮尺では画像の長さが %1 mm となり、頭部X線画像とは考えられない。"},
    {"The film's file holds %1 pictures; only the first is read.",
     "画像ファイルには %1 枚の画像があり、最初の1枚だけを使う。"},
    {"The birth date in the film's header is none.", "画像の生年月日は日付として読めない。"},
    {"The film date in the film's header is none.", "画像の撮影日は日付として読めない。"},
    {"The film was taken before the patient's birth.", "撮影日が生年月日より前である。"},
    {"The X-ray %1 contradicts itself; the scale is that of the case. %2",
     "画像 %1 の記載に矛盾があるため、縮尺は症例の値を使う。%2"},
    {"The X-ray %1 can't be asked for scale and patient. %2", "画像 %1 の縮尺と患者の情報を読めない。%2"},
    {"From the header of %1: %*2.", "%1 のヘッダーの値：%*2。"},
    {"name", "氏名"},
    {"film date", "撮影日"},
    {"side", "撮影側"},
    {"The scale is taken as 0.1 mm a pixel, that of the films of challenges.",
     "縮尺はチャレンジ用フィルムの1画素 0.1 mm とみなした。"},
    {"Positions are taken as millimetres.", "座標の単位はミリメートルとみなした。"},
    {"Landmark %1 at (0, 0) counts as not placed.", "計測点 %1 は座標が (0, 0) のため、未入力とみなした。"},
    {"Another patient? The name is %1, in %2 it is %3.", "別の患者の可能性：氏名は %1（%2 では %3）。"},
    {"Another patient? The sex is not that of %1.", "別の患者の可能性：性別が %1 と異なる。"},
    {"Another patient? Born on %1, in %2 on %3.", "別の患者の可能性：生年月日は %1（%2 では %3）。"},
    {"Measured with y turned round, as --flip-y says.", "--flip-y の指定により、上下を反転して計測した。"},
    {"Measured mirrored, as --mirror says.", "--mirror の指定により、左右を反転して計測した。"},
    {"%1: none of its %2 items can be measured", "%1：%2項目のいずれも計測できない"},
    {"%1: its one item can't be measured", "%1：計測できない"},
    {"%1, missing %2", "%1。計測点なし：%2"},
    {"%1 and %2 more", "%1 ほか%2点"},
    {"Lengths are left out, since the film has no scale.", "縮尺がないため、長さの計測値は省いた。"},
    {"no scale", "縮尺なし"},
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

std::string number(unsigned value) {
    return std::to_string(value);
}

}  // namespace

std::span<const TextRow> all_texts() {
    return text_table;
}

std::string Texts::operator()(std::string_view english) const {
    if (language_ == Language::english) return std::string(english);
    const auto row = std::ranges::find(text_table, english, &TextRow::english);
    return std::string(row == std::end(text_table) ? english : row->japanese);
}

std::string Texts::operator()(const Remark& remark) const {
    std::string text = (*this)(remark.text);
    std::vector<std::string> values = remark.values;
    for (const std::string_view kind : {"%*", "%&"})
        for (std::size_t mark; (mark = text.find(kind)) != std::string::npos;) {
            text.erase(mark + 1, 1);
            std::string& words = values.at(static_cast<std::size_t>(text.at(mark + 1) - '1'));
            words = kind == "%*" ? list_of(words) : chosen(words, tool::population_named(words).japanese);
        }
    return filled(text, values);
}

std::string Texts::list_of(std::string_view words) const {
    std::string all;
    for (std::size_t from = 0; from <= words.size();) {
        const std::size_t end = std::min(words.find(", ", from), words.size());
        if (from > 0) all += language_ == Language::english ? ", " : "、";
        all += (*this)(words.substr(from, end - from));
        from = end + 2;
    }
    return all;
}

std::string Texts::chosen(const std::string& english, const std::string& japanese) const {
    return language_ == Language::japanese && !japanese.empty() ? japanese : english;
}

std::string Texts::operator()(std::string_view english, const std::string& first, const std::string& second) const {
    return filled((*this)(english), std::array{first, second});
}

std::string Texts::part(const std::string& both) const {
    const std::size_t bracket = both.rfind(" (");
    if (bracket == std::string::npos || !both.ends_with(')')) return both;
    return language_ == Language::english ? both.substr(0, bracket)
                                          : both.substr(bracket + 2, both.size() - bracket - 3);
}

std::string Texts::sex(const std::optional<Sex>& sex) const {
    return (*this)(sex ? name_of(*sex) : "not given");
}

std::string Texts::date(const std::optional<Date>& date) const {
    if (!date) return none;
    const std::optional<EraCalendar> calendar = program_eras();
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

std::vector<std::string> Texts::remarks(const std::vector<std::span<const Remark>>& films) const {
    std::vector<std::string> all;
    const auto has = [](std::span<const Remark> film, const Remark& remark) {
        return std::ranges::find(film, remark) != film.end();
    };
    for (std::size_t i = 0; i < films.size(); ++i)
        for (const Remark& remark : films[i]) {
            if (std::any_of(films.begin(), films.begin() + static_cast<std::ptrdiff_t>(i),
                            [&](const auto& film) { return has(film, remark); }))
                continue;
            std::string names;
            for (std::size_t film = 0; film < films.size(); ++film)
                if (has(films[film], remark)) names += (names.empty() ? "" : ", ") + this->film(film);
            const bool of_all = std::ranges::all_of(films, [&](const auto& film) { return has(film, remark); });
            all.push_back((of_all ? "" : names + ": ") + (*this)(remark));
        }
    return all;
}

}  // namespace cephtool
