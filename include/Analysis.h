// Addition of this project: one analysis, read from its definition file (docs/formula_language.md). Texts are UTF-8.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "AnalysisSheet.h"
#include "Result.h"
#include "framework/export.h"

namespace tool {

// The numbers are those that CCephCalc takes.
enum class Kind { lateral = 0, frontal = 1, cast = 2, diagnosis = 10, surgery = 20 };
inline constexpr Kind all_kinds[] = {Kind::lateral, Kind::diagnosis, Kind::surgery, Kind::frontal, Kind::cast};

// What a kind is measured on: sheets of diagnosis and surgery on lateral films.
constexpr Kind measured_on(Kind kind) {
    return kind == Kind::frontal || kind == Kind::cast ? kind : Kind::lateral;
}

enum class Sex { male = 1, female = 2 };

// The place of a dental stage in Hellman's order (Am J Orthod 1927;13:429-451): "I" 0, "IIA" 1, … "VA" 8.
TOOL_API std::optional<int> dental_stage_named(std::string_view name);

enum class StageSet { first, second };

// A stage of growth, with norms of its own. Its range ends before `to`; one that ends where it begins is nobody's.
struct Stage {
    std::string name;
    bool by_age = true;  // in years; else by the place of the dental stage
    double from = 0, to = 0;
    std::string japanese = {};  // the Japanese name; "" when the file gives none
    bool operator==(const Stage&) const = default;
};

// How old, in completed years, the people were that the norms were taken from, both ends included.
struct Ages {
    int from = 0;
    std::optional<int> to;  // nothing: open above
};

// Whose norms an analysis has.
struct Population {
    std::string name;      // what it is chosen by: "Japanese"
    std::string japanese;  // the same in Japanese; as `name` when it is not known
    std::string text;      // as the file has it: "Japanese adults (日本人成人)"
};

// The population that a person asks for: "japanese" and "日本人" are the name "Japanese". A name that is not known here
// is what it is.
TOOL_API Population population_named(std::string_view text);

struct Item {
    std::string name;
    std::string formula;      // without its type; alternatives included
    std::string unit;         // "deg", "mm", "%", "SD" or "" (none, or none that can be told), read off the formula
    int column = 0;           // 0 to 2: the value column of a result list
    bool shows_norm = false;  // in a result list
    bool marked = false;      // to be set off from the others
    bool second = false;      // of the second set
    bool heading = false;     // of the items below it; then only the name counts
    std::string sign;         // what a positive value means; "" when the file does not say
    std::string japanese;     // the Japanese name; likewise
    std::string unverified;   // why the norm is to be doubted: its source was not seen; "" for one that was
};

// What must be known of a patient.
struct Inputs {
    bool sex = false, age = false, dental_stage = false;  // for norms and stages
    std::vector<std::string> landmarks;                   // that formulas of items name, each once, as first met
};

// Never changes, and may be shared by threads; copies share what was read.
class TOOL_API Analysis {
 public:
    // As of AnalysisSheet.
    static constexpr int usual_cast_decimals = AnalysisSheet::usual_cast_decimals;

    // A wrong kind is a failure, as is a file that can't be read.
    static Result<Analysis> read(Kind kind, const std::filesystem::path& file, int cast_decimals = usual_cast_decimals);
    // From bytes in code page 932; `file` is what the analysis is named after.
    static Result<Analysis> from_text(Kind kind, const std::filesystem::path& file, std::string_view text,
                                      int cast_decimals = usual_cast_decimals);

    Kind kind() const;
    const std::filesystem::path& file() const;
    // In the catalogue of its kind, from 0; nothing for a file that no catalogue lists.
    std::optional<int> place() const;
    const std::string& title() const;  // the file's name without extension where it has none
    const std::string& comment() const;
    const std::optional<Ages>& ages() const;
    const std::optional<Population>& population() const;  // nothing when the file does not say
    // The file in the same folder that this one has norms of another population for; "" for an analysis of its own.
    const std::string& variant_of() const;
    // The Japanese name of an item, a heading, a stage or the text of a finding; "" when the file gives none.
    const std::string& japanese(const std::string& name) const;
    std::span<const Item> items() const;  // in the order of the file, with the headings

    std::span<const Stage> stages(StageSet set, Sex sex) const;
    bool has_norms() const;   // of any item
    bool has_stages() const;  // of any set and sex
    // The stage that a patient is in, whose place in stages() is his column of the norms; of those that overlap the
    // last one. Nothing in none, or when what it goes by is not known.
    std::optional<int> stage_of(StageSet set, Sex sex, std::optional<double> age_years,
                                std::optional<int> dental_stage) const;
    const Inputs& inputs() const;

    const AnalysisSheet& sheet() const;

 private:
    friend class AnalysisFolder;
    struct Body;
    explicit Analysis(std::shared_ptr<const Body> body);
    static Analysis made(Kind kind, const std::filesystem::path& file, std::string_view text, std::optional<int> place,
                         int cast_decimals);
    std::shared_ptr<const Body> body_;
};

}  // namespace tool
