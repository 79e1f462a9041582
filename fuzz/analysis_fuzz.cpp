// Any two definition files, by the interface for hosts: errors are none or numbers, and asking for them changes no
// value; what is composed of both gives the values, norms and deviations that each gives by itself.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "ComposedAnalysis.h"
#include "LandmarkTable.h"
#include "MeasuredAnalysis.h"
#include "fuzz/subject.h"

namespace {

using tool_fuzz::require;

constexpr std::size_t most_items = 40;

tool::Subject subject_of(tool::Kind kind, unsigned char choice) {
    tool::Subject subject;
    subject.mm_per_pixel = 0.1;
    for (int slot = 0; slot < LandmarkTable::Count(static_cast<int>(kind)); ++slot) {
        if (choice & 1 && slot % 7 == 3) continue;  // some are missing
        subject.landmarks.push_back(
            {"", {100.0 + slot * 37 % 1000, 90.0 + slot * 53 % 1100 + (choice & 2 ? 0.25 : 0)}, slot});
    }
    subject.landmarks.push_back({"Foo", {17, 19}});
    subject.virtuals.push_back({"V1", "mid([S],[N])"});
    subject.sex = choice & 4 ? tool::Sex::male : tool::Sex::female;
    subject.age_years = (choice >> 3 & 7) * 3.5;
    subject.dental_stage = choice >> 6;
    return subject;
}

tool::LandmarkErrors errors_of(tool::Kind kind) {
    std::vector<tool::LandmarkError> errors;
    const bool frontal = kind == tool::Kind::frontal;
    for (int slot = 0; slot < LandmarkTable::Count(static_cast<int>(kind)); ++slot)
        if (slot % 5 != 4)
            errors.push_back({LandmarkTable::Name(static_cast<int>(kind), slot), frontal, 0.1 * slot, 0.5});
    return tool::LandmarkErrors(errors);
}

bool same_bits(const std::optional<double>& a, const std::optional<double>& b) {
    return a.has_value() == b.has_value() &&
           (!a || std::memcmp(&*a, &*b, sizeof(double)) == 0 || (std::isnan(*a) && std::isnan(*b)));
}

bool same(const tool::MeasuredItem& a, const tool::MeasuredItem& b) {
    return a.state == b.state && a.value_text == b.value_text && same_bits(a.value, b.value) &&
           same_bits(a.mean, b.mean) && same_bits(a.sd, b.sd) && same_bits(a.deviation, b.deviation);
}

tool::MeasuredAnalysis measured(const tool::Analysis& analysis, const tool::Subject& subject,
                                const tool::LandmarkErrors* errors) {
    auto result = tool::measure_all(analysis, subject, tool::Shapes::left_out, errors);
    require(bool(result));
    return std::move(*result);
}

void require_errors_sound(const tool::MeasuredAnalysis& with, const tool::MeasuredAnalysis& without) {
    for (std::size_t i = 0; i < with.items.size(); ++i) {
        require(same(with.items[i], without.items[i]));
        const auto& error = with.items[i].error;
        require(!without.items[i].error);
        if (!error || error->state != ErrorState::known) continue;
        require(error->value >= 0 && error->share >= 0 && error->share <= 1.000001);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    constexpr tool::Kind kinds[] = {tool::Kind::lateral, tool::Kind::frontal, tool::Kind::cast};
    const tool::Kind kind = kinds[data[0] % 3];
    const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);
    const std::size_t border = std::min(text.find('\x1e'), text.size());
    std::vector<tool::Analysis> analyses;
    for (const std::string_view part : {text.substr(0, border), text.substr(std::min(border + 1, text.size()))}) {
        auto analysis = tool::Analysis::from_text(kind, "fuzzed.txt", part);
        if (analysis) analyses.push_back(std::move(*analysis));
    }
    const tool::Subject subject = subject_of(kind, data[1]);
    const tool::LandmarkErrors errors = errors_of(kind);
    std::vector<tool::ComposedItem> items;
    std::vector<tool::MeasuredItem> alone;
    for (const tool::Analysis& analysis : analyses) {
        if (analysis.items().size() > most_items) return 0;
        const tool::MeasuredAnalysis plain = measured(analysis, subject, nullptr);
        require_errors_sound(measured(analysis, subject, &errors), plain);
        for (std::size_t i = 0; i < analysis.items().size(); ++i)
            if (!analysis.items()[i].heading) {
                items.push_back({&analysis, i});
                alone.push_back(plain.items[i]);
            }
    }
    const auto composed = tool::compose("Both", items);
    if (!composed) return 0;
    const auto both = tool::Analysis::from_text(kind, "both.txt", *composed);
    require(bool(both));
    const tool::MeasuredAnalysis together = measured(*both, subject, nullptr);
    for (const tool::MeasuredItem& item : alone)  // one that several have alike stands there once
        require(std::ranges::any_of(together.items, [&](const tool::MeasuredItem& made) { return same(made, item); }));
    return 0;
}
