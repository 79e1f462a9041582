#include "analysis/norm_text.h"

namespace tool {

std::string norm_text(Norm norm, bool keep_decimals) {
    std::string& text = norm.text;
    if (keep_decimals) return std::move(text);
    text.erase(text.find_last_not_of(" \t\v\f\r") + 1);  // what may stand behind a number
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return std::move(text);
}

double item_outputs(const ItemResult& result, Ask ask, double* value_out, double* sd_out) {
    const double asked = result.asked(ask);
    if (ask == Ask::deviation) {
        // Kept: 999999999 in place of the value says that there is nothing to compare it with.
        if (value_out) *value_out = result.mean.value ? result.value : no_norm;
        if (sd_out) *sd_out = result.sd.value.value_or(0.0);
    } else if (ask != Ask::value && value_out) {
        *value_out = asked;
    }
    return asked;
}

}  // namespace tool
