// The formats that cases are read from and written in: docs/case_format.md.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cases/case.h"

namespace cephtool {

// What a format has no place for.
struct FormatLosses {
    bool keys = false;              // of other programs; virtual landmarks, the palate, own landmarks under known names
    const char* outlines = "";      // what of them
    const char* unnamed = nullptr;  // the name that stands for none in it
    const char* always = "";        // whatever the case holds
};

struct CaseFormat {
    const char* name;       // on the command line
    const char* extension;  // that a file of the format ends in
    FormatLosses losses;
    bool holds_many;  // cases in one file
    bool (*recognises)(const Source& source);
    // The cases in their order; each with what is known without `options`, which settle how coordinates are meant.
    std::vector<Case> (*read)(const Source& source, const CaseOptions& options);
    // Reading it again gives the same landmarks. Throws an Error when the format can't hold the case.
    std::string (*write)(const Case& record, const CaseOptions& options);
};

// The last one takes whatever the others don't recognise.
std::span<const CaseFormat> case_formats();
// The project's own, which loses nothing.
const CaseFormat& own_format();

// What of a case is lost in a file of the format, that which its own file had and no case holds included.
std::vector<std::string> lost_in(const CaseFormat& format, const Case& record);

// Of a file's name; null when no format has its extension.
const CaseFormat* format_by_extension(const std::string& path);
const CaseFormat* format_by_name(const std::string& name);

// Coordinates of formats that reckon them from others (millimetres, y pointing up) are kept to 1/100000 pixel, so that
// reckoning there and back gives the same number.
double on_grid(double coordinate);
Position on_grid(Position point);

// The readers and writers of the single formats; the one of the project's own is in case.h.
std::vector<Case> read_csv_cases(const Source& source, const CaseOptions& options);
std::vector<Case> read_challenge_cases(const Source& source, const CaseOptions& options);
std::vector<Case> read_tps_cases(const Source& source, const CaseOptions& options);
std::vector<Case> read_slicer_cases(const Source& source, const CaseOptions& options);
std::vector<Case> read_fcsv_cases(const Source& source, const CaseOptions& options);
std::string to_csv(const Case& record, const CaseOptions& options);
std::string to_challenge_text(const Case& record, const CaseOptions& options);
std::string to_tps(const Case& record, const CaseOptions& options);
std::string to_slicer(const Case& record, const CaseOptions& options);
std::string to_fcsv(const Case& record, const CaseOptions& options);
bool is_challenge_text(const Source& source);  // the first line with content is a pair of numbers
bool is_tps(const Source& source);
std::vector<std::size_t> tps_specimens(std::string_view text);  // where each begins
bool is_slicer(const Source& source);
bool is_fcsv(const Source& source);

}  // namespace cephtool
