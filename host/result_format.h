// What the results of commands are written as.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace cephtool {

// `text` is for people without a table's columns; of `json_lines` each line is a JSON object of its own.
enum class ResultFormat { table, text, csv, json, json_lines, png, pdf, svg, html };

// As "--format" takes it.
const char* name_of(ResultFormat format);

// What the end of a file's name says of its content; `format` is empty for one that holds no result.
struct FileEnd {
    const char* end;  // such as ".json"
    std::optional<ResultFormat> format;
};
std::optional<FileEnd> end_of(const std::string& path);

// Results of several inputs, one below the other, with a blank line between them.
template <class Results, class Table>
std::string tables(const Results& results, const Table& table) {
    std::string text;
    for (const auto& result : results) text += (text.empty() ? "" : "\n") + table(result);
    return text;
}

// How results of one sort are written; what more is needed for it, such as the texts of a language, is the same for all
// forms.
template <class Result, class... More>
struct ResultForms {
    std::string (*table)(const Result& result, bool colour, const More&... more);
    std::string (*json)(std::span<const Result> results, const More&... more);
    std::string (*csv)(std::span<const Result> results, const More&... more);

    std::string of(std::span<const Result> results, ResultFormat format, bool colour, const More&... more) const {
        if (format == ResultFormat::json) return json(results, more...);
        if (format == ResultFormat::csv) return csv(results, more...);
        return tables(results, [&](const Result& result) { return table(result, colour, more...); });
    }
};

}  // namespace cephtool
