// Every item of the shipped files comes to what a second computation, of other hands and by other ways, made of its
// definition (second.py), on unlike faces, films and casts.
#include <gmock/gmock.h>

#include <charconv>
#include <cmath>
#include <fstream>
#include <map>
#include <set>

#include "AnalysisFolder.h"
#include "MeasuredAnalysis.h"

namespace {

using tool::Kind;
using Row = std::vector<std::string>;

std::vector<Row> rows_of(const char* name) {
    std::ifstream file(std::string(TOOL_SOURCE_DIR "/tests/analysis/second/") + name);
    std::vector<Row> rows;
    for (std::string line; std::getline(file, line);) {
        Row& row = rows.emplace_back(1);
        for (const char c : line)
            if (c == '\t')
                row.emplace_back();
            else if (c != '\r')
                row.back() += c;
    }
    return rows;
}

std::optional<double> number(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

TEST(SecondComputation, AgreesOnEveryShippedItem) {
    const std::map<std::string, Kind> kinds = {
        {"lateral", Kind::lateral}, {"frontal", Kind::frontal}, {"cast", Kind::cast}};
    std::map<Kind, std::vector<std::pair<std::string, tool::Subject>>> subjects;
    std::vector<std::pair<std::string, tool::Subject>>* of_kind = nullptr;
    for (const Row& row : rows_of("subjects.tsv")) {
        ASSERT_EQ(row.size(), 3u);
        if (const auto kind = kinds.find(row[0]); kind != kinds.end()) {
            of_kind = &subjects[kind->second];
            of_kind->push_back({row[1], {.mm_per_pixel = *number(row[2]), .sex = tool::Sex::male, .age_years = 30}});
        } else {
            of_kind->back().second.landmarks.push_back({row[0], {*number(row[1]), *number(row[2])}});
        }
    }
    std::map<std::pair<Kind, std::string>, Row> expected;
    for (Row& row : rows_of("values.tsv")) {
        const Kind kind = kinds.at(row.at(0));
        std::string item = row.at(1);
        row.erase(row.begin(), row.begin() + 2);
        ASSERT_EQ(row.size(), subjects[kind].size()) << item;
        EXPECT_GE(row.size(), 8u) << item;
        expected[{kind, item}] = std::move(row);
    }

    std::set<std::pair<Kind, std::string>> met;
    const tool::AnalysisFolder folder(TOOL_SOURCE_DIR "/anaitem");
    for (const Kind sheet : tool::all_kinds) {
        const Kind kind = measured_on(sheet);
        for (const tool::Analysis& analysis : folder.analyses(sheet)) {
            const std::string file = analysis.file().stem().string();
            for (const tool::Item& item : analysis.items()) {
                if (item.heading || sheet != kind) continue;  // sheets of findings take items over
                EXPECT_TRUE(expected.contains({kind, item.name}))
                    << file << ": \"" << item.name << "\" was never worked out a second time";
            }
            for (std::size_t i = 0; i < subjects[kind].size(); ++i) {
                const auto& [face, subject] = subjects[kind][i];
                const auto measured = tool::measure_all(analysis, subject, tool::Shapes::left_out);
                ASSERT_TRUE(measured) << measured.reason();
                for (const tool::MeasuredItem& row : measured->items) {
                    const auto wanted = expected.find({kind, row.item->name});
                    if (row.item->heading || wanted == expected.end()) continue;
                    met.insert(wanted->first);
                    const std::string where = file + ", " + row.item->name + ", " + face;
                    const std::string& text = wanted->second[i];
                    const auto value = number(text);
                    if (!value) {
                        EXPECT_EQ(row.value_text, text) << where;
                    } else if (!row.value) {
                        ADD_FAILURE() << where << " has no value: " << testing::PrintToString(row.missing);
                    } else {
                        EXPECT_NEAR(*row.value, *value, 1e-6 * std::max(1.0, std::abs(*value))) << where;
                    }
                }
            }
        }
    }
    for (const auto& [item, row] : expected) EXPECT_TRUE(met.contains(item)) << item.second << " is in no shipped file";
}

}  // namespace
