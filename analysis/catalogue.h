// Where the analysis definition files lie. Paths are code page 932.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// The analysis folder as the host's profile names it, "" when it does not.
std::string configured_analysis_root();

// The analysis folder with its delimiter: key ANAITEMPATH in section DB_DIR of the host's profile, else ANAITEM
// beside the running program.
std::string analysis_root();

// Path of analysis file `index` of a kind; "" when its catalogue does not have one.
std::string form_file(int kind, int index);
std::vector<std::string> form_files(int kind);  // all of them

// Names in an analysis folder.
std::string_view form_folder_name(int kind);  // "" for kinds without a catalogue of their own
inline constexpr std::string_view list_file = "list.txt", ricketts_file = "Ricketts.txt",
                                  surgery_file = "CalcForm_Surg\\Surgery.txt",
                                  landmark_error_file = "LandmarkError.txt";

// What a catalogue lists, by their names in its folder. Empty lines are no entries.
std::vector<std::string> catalogue_entries(std::string_view catalogue);

// The text of an engine file; "" when it can't be read, which every reader treats as an empty file.
std::string file_text(std::string_view path);

}  // namespace tool
