#include "analysis/check/catalogue.h"

#include <set>

#include "analysis/definition_file.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {

std::vector<std::string_view> check_catalogue(CheckFamily family, std::string_view text, Findings& findings,
                                              const std::function<bool(std::string_view)>& is_there) {
    std::vector<std::string_view> files;
    std::set<std::string> seen;
    for_each_line(text, [&](std::string_view line, int) {
        if (line.empty()) return false;
        std::string_view file = line;
        if (family == CheckFamily::mode_list) {
            const std::size_t comma = line.find(',');
            if (comma == std::string_view::npos) {
                findings.fault(line, "a line without a comma is not read; write number,file");
                return false;
            }
            const std::string_view number = line.substr(0, comma);
            const LeadingInteger read = read_leading_integer(number);
            if (read.used == 0 || !trimmed(number.substr(read.used)).empty())
                findings.fault(line, quoted(number) + " is no number; write number,file");
            file = line.substr(comma + 1);
        }
        if (trimmed(file).empty())
            findings.fault(line, "a file's name is missing here");
        else if (!seen.insert(lower(file)).second)
            findings.fault(file, quoted(file) + " is listed twice; remove one of the lines");
        else if (is_there && !is_there(file))
            findings.fault(file, "there is no file " + quoted(file) + " in this folder" +
                                     (trimmed(file) == file ? "; remove the line or add the file"
                                                            : "; remove the blanks round the name"));
        else
            files.push_back(file);
        return false;
    });
    return files;
}

}  // namespace tool
