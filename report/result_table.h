// The results of one analysis as a table: of one film with norms and deviations, of several with their difference.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "results/texts.h"

namespace cephtool {

struct TableColumn {
    std::string heading;
    double width_mm;
    bool at_right = true;                  // numbers end below each other
    std::optional<std::size_t> time = {};  // the film whose values it shows, where there are several
};

struct TableRow {
    bool heading = false;  // of the rows below it
    bool marked = false;
    std::string name = {};
    std::vector<std::string> cells = {};  // one a column; none where `words` stand in their place
    std::vector<std::string> words = {};  // verdicts, or why there is no value; one a film where they are not the same
    std::string remark = {};              // on a line of its own below
    std::vector<std::optional<double>> deviations = {};  // one a film
};

struct ResultTable {
    std::string title, comment, norms;
    std::vector<std::string> remarks;  // below the norms
    std::vector<std::string> signs;    // below the rows, with what their marks mean
    std::vector<TableColumn> columns;  // behind the one of the names
    std::vector<TableRow> rows;
    bool has_chart = false;  // any row has a deviation
};

enum class TableStyle {
    full,
    chart,  // only values beside the chart
};

// The results are those of one analysis, one a film, oldest first.
ResultTable result_table(const std::vector<const AnalysisResult*>& times, TableStyle style, const Texts& texts);

}  // namespace cephtool
