#include "Analysis.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "analysis/definition_file.h"
#include "analysis/formula_names.h"
#include "analysis/growth_stage.h"
#include "analysis/population.h"
#include "analysis/sheet_body.h"
#include "platform/code_page.h"
#include "platform/folder_file.h"
#include "platform/system.h"

namespace tool {
namespace {

constexpr Sex both_sexes[] = {Sex::male, Sex::female};
constexpr StageSet both_sets[] = {StageSet::first, StageSet::second};

std::string utf8(const CString& text) {
    return utf8_from_code_page(text.View());
}

std::string utf8_stem(const std::filesystem::path& file) {
    const std::u8string stem = file.stem().u8string();
    return {stem.begin(), stem.end()};
}

// In the order of the text, each once.
class LandmarksNamed : private FormulaNames {
 public:
    void read(std::string_view formula) { visit_names(formula, *this); }
    std::vector<std::string> names;

 private:
    void landmark(std::string_view name) override {
        if (met_.emplace(name).second) names.push_back(utf8_from_code_page(name));
    }

    std::unordered_set<std::string> met_;
};

bool is_of_one_sex(int section) {
    switch (section % second_set) {
        case mean_male_section:
        case mean_female_section:
        case sd_male_section:
        case sd_female_section: return true;
        default: return false;
    }
}

}  // namespace

std::optional<int> dental_stage_named(std::string_view name) {
    const double place = dental_stage_ordinal(name);
    return place == no_dental_stage ? std::nullopt : std::optional(static_cast<int>(place));
}

Population population_named(std::string_view text) {
    PopulationName known = population_name(text);
    return {std::move(known.name), std::move(known.japanese), std::string(text)};
}

struct Analysis::Body {
    Kind kind;
    std::filesystem::path file;
    std::optional<int> place;
    AnalysisSheet sheet;
    std::string title = {}, comment = {};
    std::optional<Ages> ages = {};
    std::optional<Population> population = {};
    std::string variant_of = {};
    bool has_norms = false;
    std::unordered_map<std::string, std::string> japanese = {};  // by name
    std::vector<Item> items = {};
    std::vector<Stage> stages[std::size(both_sets)][std::size(both_sexes)] = {};
    Inputs inputs = {};

    static std::size_t at(StageSet set) { return set == StageSet::second; }
    static std::size_t at(Sex sex) { return sex != Sex::male; }
};

Analysis::Analysis(std::shared_ptr<const Body> body) : body_(std::move(body)) {}

Analysis Analysis::made(Kind kind, const std::filesystem::path& file, std::string_view text, std::optional<int> place,
                        int cast_decimals) {
    auto body = std::make_shared<Body>(
        Body{.kind = kind,
             .file = file,
             .place = place,
             .sheet = AnalysisSheet(static_cast<int>(kind), text.data(), text.size(), cast_decimals)});
    const AnalysisSheet& sheet = body->sheet;
    body->title = utf8(sheet.Title());
    if (body->title.empty()) body->title = utf8_stem(file);
    body->comment = utf8(sheet.Comment());
    if (const SheetAges ages = sheet.Ages(); ages.known)
        body->ages = Ages{ages.from, ages.to < 0 ? std::nullopt : std::optional(ages.to)};
    if (const CString population = sheet.Population(); !population.IsEmpty())
        body->population = population_named(utf8(population));
    body->variant_of = utf8(sheet.VariantOf());
    if (const SheetBody* read = body_of(sheet))
        for (const auto& [name, japanese] : read->sample.japanese)
            body->japanese.emplace(utf8_from_code_page(name), utf8_from_code_page(japanese));
    LandmarksNamed landmarks;
    for (int index = 0; index < sheet.GetCount(); ++index) {
        constexpr int shows_norm = 1, is_marked = 2;
        const SheetItem item = sheet.GetItem(index);
        landmarks.read(item.expression.View());
        body->items.push_back({utf8(item.name), utf8(item.expression), utf8(item.unit), item.column,
                               (item.mode & shows_norm) != 0, (item.mode & is_marked) != 0, item.second, item.heading,
                               utf8(item.sign), utf8(item.japanese), utf8(item.unverified)});
    }
    Inputs& inputs = body->inputs;
    inputs.landmarks = std::move(landmarks.names);
    for_each_line(text, [&](std::string_view, int code) { return inputs.sex = is_of_one_sex(code); });
    if (const SheetBody* read = body_of(sheet))
        body->has_norms = std::ranges::any_of(read->lines, [&](const NamedLine& item) {
            const auto has_mean = [&](Sex sex) {
                return read->file.find(item.name, DefinitionFile::Look::norms, static_cast<int>(sex)).mean.has_value();
            };
            return has_mean(Sex::male) || has_mean(Sex::female);
        });
    for (const StageSet set : both_sets) {
        auto& of_set = body->stages[Body::at(set)];
        for (const Sex sex : both_sexes) {
            for (const SheetStage& stage : sheet.Stages(static_cast<int>(sex), set == StageSet::second)) {
                const std::string name = utf8(stage.name);
                const auto japanese = body->japanese.find(name);
                of_set[Body::at(sex)].push_back({name, stage.byAge, stage.from, stage.to,
                                                 japanese == body->japanese.end() ? "" : japanese->second});
                (stage.byAge ? inputs.age : inputs.dental_stage) = true;
            }
        }
        if (of_set[0] != of_set[1]) inputs.sex = true;
    }
    return Analysis(std::move(body));
}

Result<Analysis> Analysis::from_text(Kind kind, const std::filesystem::path& file, std::string_view text,
                                     int cast_decimals) {
    if (std::ranges::find(all_kinds, kind) == std::end(all_kinds))
        return Failure{"There is no kind " + std::to_string(static_cast<int>(kind)) + " of analysis"};
    return made(kind, file, engine_text(std::string(text)), {}, cast_decimals);
}

Result<Analysis> Analysis::read(Kind kind, const std::filesystem::path& file, int cast_decimals) {
    const auto text = read_file_at(file, largest_text_file);
    if (!text) return Failure{utf8_from_code_page(error_text(last_error()))};
    return from_text(kind, file, *text, cast_decimals);
}

Kind Analysis::kind() const {
    return body_->kind;
}

const std::filesystem::path& Analysis::file() const {
    return body_->file;
}

std::optional<int> Analysis::place() const {
    return body_->place;
}

const std::string& Analysis::title() const {
    return body_->title;
}

const std::string& Analysis::comment() const {
    return body_->comment;
}

const std::optional<Ages>& Analysis::ages() const {
    return body_->ages;
}

const std::optional<Population>& Analysis::population() const {
    return body_->population;
}

const std::string& Analysis::variant_of() const {
    return body_->variant_of;
}

const std::string& Analysis::japanese(const std::string& name) const {
    static const std::string none;
    const auto found = body_->japanese.find(name);
    return found == body_->japanese.end() ? none : found->second;
}

std::span<const Item> Analysis::items() const {
    return body_->items;
}

std::span<const Stage> Analysis::stages(StageSet set, Sex sex) const {
    return body_->stages[Body::at(set)][Body::at(sex)];
}

bool Analysis::has_norms() const {
    return body_->has_norms;
}

bool Analysis::has_stages() const {
    return body_->inputs.age || body_->inputs.dental_stage;
}

std::optional<int> Analysis::stage_of(StageSet set, Sex sex, std::optional<double> age_years,
                                      std::optional<int> dental_stage) const {
    std::optional<int> place;
    const std::span<const Stage> all = stages(set, sex);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::optional<double> at = all[i].by_age ? age_years : std::optional<double>(dental_stage);
        if (at && all[i].from <= *at && *at < all[i].to) place = static_cast<int>(i);
    }
    return place;
}

const Inputs& Analysis::inputs() const {
    return body_->inputs;
}

const AnalysisSheet& Analysis::sheet() const {
    return body_->sheet;
}

}  // namespace tool
