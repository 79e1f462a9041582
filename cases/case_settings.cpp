#include "cases/case_settings.h"

#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/wording.h"

namespace cephtool {
namespace {

void read_scale(CaseBuilder& builder, const Source& source, std::string_view value, std::size_t at) {
    const std::optional<double> scale = number_from(value);
    if (!scale) throw source.error_at(at, in_quotes(value) + " is no number", "Write # scale_mm_per_px=0.1");
    builder.scale(*scale, at);
}

template <void (CaseBuilder::*read)(std::string_view, std::size_t)>
void read_text(CaseBuilder& builder, const Source&, std::string_view value, std::size_t at) {
    (builder.*read)(value, at);
}

struct Setting {
    const char* key;
    void (*read)(CaseBuilder& builder, const Source& source, std::string_view value, std::size_t at);
};

constexpr Setting settings[] = {
    {"scale_mm_per_px", read_scale},
    {"kind", read_text<&CaseBuilder::kind>},
    {"name", read_text<&CaseBuilder::name>},
    {"sex", read_text<&CaseBuilder::sex>},
    {"birth", read_text<&CaseBuilder::birth>},
    {"film", read_text<&CaseBuilder::film>},
    {"side", read_text<&CaseBuilder::side>},
    {"dental_stage", read_text<&CaseBuilder::dental_stage>},
    {"population", read_text<&CaseBuilder::population>},
    {"image", read_text<&CaseBuilder::image>},
};

}  // namespace

std::vector<std::string> setting_keys() {
    std::vector<std::string> keys;
    for (const Setting& setting : settings) keys.emplace_back(setting.key);
    return keys;
}

bool read_setting(CaseBuilder& builder, const Source& source, std::string_view key, std::string_view value,
                  std::size_t at) {
    for (const Setting& setting : settings) {
        if (key != setting.key) continue;
        setting.read(builder, source, value, at);
        return true;
    }
    return false;
}

Comment read_setting_comment(CaseBuilder& builder, const Source& source, std::string_view text, std::size_t at,
                             const std::vector<std::string>& more_keys) {
    const std::size_t equals = text.find('=');
    const auto pass_over = [&] {
        if (!text.empty()) builder.pass_over("the comment " + in_quotes(text));
        return Comment::unknown;
    };
    if (equals == std::string_view::npos) return pass_over();
    const std::string_view key = trimmed(text.substr(0, equals));
    if (read_setting(builder, source, key, trimmed(text.substr(equals + 1)), at)) {
        builder.first_setting(std::string(key), at);
        return Comment::setting;
    }
    std::vector<std::string> keys = setting_keys();
    keys.insert(keys.end(), more_keys.begin(), more_keys.end());
    const std::string meant = did_you_mean(key, keys);
    if (!meant.empty()) throw source.error_at(at, "the setting " + in_quotes(key) + " is not known", meant);
    return pass_over();
}

std::vector<std::pair<std::string, std::string>> settings_of(const Case& record) {
    std::vector<std::pair<std::string, std::string>> known;
    if (record.mm_per_pixel) known.emplace_back("scale_mm_per_px", shortest(*record.mm_per_pixel));
    known.emplace_back("kind", name_of(record.kind));
    if (!record.name.empty()) known.emplace_back("name", record.name);
    if (record.sex) known.emplace_back("sex", name_of(*record.sex));
    if (record.birth) known.emplace_back("birth", text_of(*record.birth));
    if (record.film) known.emplace_back("film", text_of(*record.film));
    if (record.side) known.emplace_back("side", name_of(*record.side));
    if (!record.dental_stage.empty()) known.emplace_back("dental_stage", record.dental_stage);
    if (!record.population.empty()) known.emplace_back("population", record.population);
    if (!record.image.empty()) known.emplace_back("image", record.image);
    return known;
}

}  // namespace cephtool
