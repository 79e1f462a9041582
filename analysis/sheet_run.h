// Sheets for the same records measured for one record after the other: by their program, and what that leaves open by
// their text. For one thread.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "AnalysisSheet.h"
#include "analysis/point_expression.h"
#include "analysis/program_gradient.h"
#include "analysis/program_run.h"
#include "analysis/sheet_body.h"
#include "platform/or_failed.h"

namespace tool {

class SheetRun {
 public:
    using Sheets = std::span<const std::shared_ptr<const SheetBody>>;

    // For the same records; null for a sheet without items. They and their program, whose files they are in this
    // order, outlive this object.
    SheetRun(Sheets sheets, const Program& program);
    ~SheetRun();

    // The subject whose landmarks are measured from here on; its sex and band are not used.
    void begin(const SheetSubject& subject);
    // Computes all at once, which is faster than item after item.
    void compute_all();

    // An item of the program that a record was begun for.
    struct Place {
        int sheet;
        const NamedLine& line;
        int number;
        const Program::Item& item;
    };
    std::optional<Place> place(int sheet, int index) const;

    // What an item comes to, as of SheetRow.
    struct Found {
        double value = 0;
        std::optional<double> mean{}, sd{};
        std::optional<std::string_view> text{};  // of a text item, into the definition file
        bool needs_band = false, norm_needs_band = false;
        std::optional<Degeneracy> degeneracy{};
    };
    Found found(const Place& place, int sex, int band);
    bool lacks(const Place& place, SheetPart part, int sex, int band);

    // From here on values have errors. Computes all at once for each record.
    void set_errors(const LandmarkErrors& errors);
    SheetError error(const Place& place, int sex, int band);

    // As of SheetMeasurer.
    SheetRow row(int sheet, int index, int sex, int band);
    CStringArray missing(int sheet, int index, SheetPart part, int sex, int band);

 private:
    void settle(Landmarks& landmarks) const;  // what a subject and the settings say of them
    // What the text of a sheet tells of the subject.
    struct Text;
    template <class Work>
    auto by_text(int sheet, int sex, int band, Work&& work);
    Found found_by_text(const Place& place, int sex, int band);
    std::vector<std::string> missing(const Place& place, SheetPart part, int sex, int band);
    bool has_all(const Place& place, SheetPart part, int sex) const;

    Sheets sheets_;
    const Program& program_;
    ProgramRun run_;
    SheetSubject subject_;
    std::optional<Landmarks> landmarks_;
    bool served_ = false;  // the program serves the record
    std::optional<ProgramGradient> gradient_;
    bool gradient_begun_ = false;               // for the record
    std::vector<std::unique_ptr<Text>> texts_;  // by sheet, two each, for women and men; null: not asked yet
};

// What a text item shows: its alternative without the quotes.
std::string_view unquoted(std::string_view text);
// (value - mean) / sd, 0 without a mean or with an SD of 0.
double deviation_of(const SheetRun::Found& found);

// What is given without the memory to do better.
SheetRow failed_row();
template <class Work>
CStringArray missing_or_unnamed(Work&& work) {
    bool told = false;
    CStringArray missing;
    as_far_as_possible([&] {
        missing = work();
        told = true;
    });
    if (!told) as_far_as_possible([&] { missing.Add(""); });
    return missing;
}

}  // namespace tool
