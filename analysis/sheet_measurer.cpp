#include "SheetMeasurer.h"

#include <new>

#include "analysis/landmark_names.h"
#include "analysis/program_writer.h"
#include "analysis/sheet_run.h"

using tool::or_failed;

struct SheetSet::Body {
    explicit Body(const std::vector<const AnalysisSheet*>& all) {
        const AnalysisSheet* first = nullptr;
        for (const AnalysisSheet* sheet : all) {
            if (!first) first = sheet;
            const bool fits = sheet && tool::same_record(sheet->Kind(), first->Kind());
            sheets.push_back(fits ? sheet->body_ : nullptr);
        }
        if (sheets.size() == 1 && sheets.front()) return;
        tool::ProgramWriter writer(first ? first->Kind() : 0);
        for (const auto& sheet : sheets) sheet ? writer.add(sheet->file) : writer.add_nothing();
        own_program = writer.finished();
    }

    // A sheet alone has its own.
    const tool::Program& program() const { return own_program ? *own_program : sheets.front()->program(); }

    std::vector<std::shared_ptr<const tool::SheetBody>> sheets;  // null for one without items here
    std::optional<tool::Program> own_program;
};

SheetSet::SheetSet(const std::vector<const AnalysisSheet*>& sheets)
    : body_(or_failed(std::unique_ptr<const Body>(), [&] { return std::make_unique<const Body>(sheets); })) {}
SheetSet::SheetSet(const AnalysisSheet& sheet)
    : body_(or_failed(std::unique_ptr<const Body>(),
                      [&] { return std::make_unique<const Body>(std::vector{&sheet}); })) {}
SheetSet::SheetSet(SheetSet&&) noexcept = default;
SheetSet& SheetSet::operator=(SheetSet&&) noexcept = default;
SheetSet::~SheetSet() = default;

struct SheetMeasurer::Body {
    explicit Body(const SheetSet::Body& set) : run(set.sheets, set.program()) {}

    tool::SheetRun run;
};

SheetMeasurer::SheetMeasurer(const SheetSet& set)
    : body_(or_failed(std::unique_ptr<Body>(),
                      [&] { return set.body_ ? std::make_unique<Body>(*set.body_) : nullptr; })) {}
SheetMeasurer::SheetMeasurer(SheetMeasurer&&) noexcept = default;
SheetMeasurer& SheetMeasurer::operator=(SheetMeasurer&&) noexcept = default;
SheetMeasurer::~SheetMeasurer() = default;

void SheetMeasurer::Measure(const SheetSubject& subject) {
    measured_ = body_ && or_failed(false, [&] {
                    body_->run.begin(subject);
                    body_->run.compute_all();
                    return true;
                });
}

tool::SheetRun* SheetMeasurer::run() const {
    return measured_ ? &body_->run : nullptr;
}

SheetRow SheetMeasurer::Evaluate(int sheet, int index, int sex, int band) {
    if (!measured_) return tool::failed_row();
    return or_failed(tool::failed_row(), [&] { return body_->run.row(sheet, index, sex, band); });
}

CStringArray SheetMeasurer::Missing(int sheet, int index, SheetPart part, int sex, int band) {
    return tool::missing_or_unnamed([&] {
        if (!measured_) throw std::bad_alloc();
        return body_->run.missing(sheet, index, part, sex, band);
    });
}

void SheetMeasurer::SetErrors(const tool::LandmarkErrors& errors) {
    if (body_) tool::as_far_as_possible([&] { body_->run.set_errors(errors); });
}

SheetError SheetMeasurer::Error(int sheet, int index, int sex, int band) {
    if (!measured_) return {};
    return or_failed(SheetError(), [&] {
        const auto at = body_->run.place(sheet, index);
        return at ? body_->run.error(*at, sex, band) : SheetError();
    });
}

bool SheetMeasurer::Lacks(int sheet, int index, SheetPart part, int sex, int band) {
    return !measured_ || or_failed(true, [&] {
        const auto at = body_->run.place(sheet, index);
        return at && body_->run.lacks(*at, part, sex, band);
    });
}
