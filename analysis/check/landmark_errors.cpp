#include "analysis/check/landmark_errors.h"

#include <set>

#include "analysis/landmark_errors.h"
#include "analysis/landmark_names.h"

namespace tool {
namespace {

constexpr int lateral = 0, frontal = 1;

std::string fault_in(const ErrorLine& line) {
    if (line.text.find('=') == std::string_view::npos)
        return quoted(line.text) +
               " is no landmark's error; write NAME=along,across, in mm, or \";\" in front of a remark";
    if (line.fault.data() == line.name.data())
        return quoted(line.name) + " is no landmark: a name has one to five bytes";
    return quoted(line.fault) +
           " is no number that can stand here; write NAME=along,across,readings,source with errors "
           "from 0 to 100 mm";
}

}  // namespace

void check_landmark_errors(std::string_view text, Findings& findings) {
    std::optional<int> kind;
    std::set<std::pair<int, std::string_view>> met;
    while (!text.empty()) {
        const ErrorLine line = next_error_line(text);
        if (line.kind == ErrorLine::Kind::lateral) kind = lateral;
        if (line.kind == ErrorLine::Kind::frontal) kind = frontal;
        if (line.kind == ErrorLine::Kind::broken) findings.fault(line.text, fault_in(line));
        if (line.kind != ErrorLine::Kind::landmark) continue;
        if (!kind) {
            findings.fault(line.text,
                           "nobody reads what stands in front of \"Lateral:\" or \"Frontal:\"; move it below one");
        } else if (!met.insert({*kind, line.name}).second) {
            findings.fault(line.name,
                           "there is a " + quoted(line.name) + " further up, and only that one is read; remove one");
        } else if (line.name != all_other_landmarks && !landmark_slot(*kind, line.name)) {
            const std::string_view meant = meant_name(line.name, landmark_names(*kind));
            const std::string message = quoted(line.name) + " is in no table of landmarks";
            if (meant.empty())
                findings.note(line.name, message + "; it can be one of the user's own");
            else
                findings.fault(line.name, message + suggestion(meant));
        }
    }
}

}  // namespace tool
