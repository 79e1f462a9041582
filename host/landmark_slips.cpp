#include "host/landmark_slips.h"

#include "base/error.h"

namespace cephtool {

void LandmarkSlips::remark(Case& record) {
    const auto [known, is_new] = outliers_.try_emplace(record.kind);
    std::optional<LandmarkOutliers>& outliers = known->second;
    if (is_new) {
        try {
            outliers.emplace(shipped_template(record.kind), record.kind);
        } catch (const Error& error) {
            streams_.err << "cephtool: landmarks are not looked at for slips\n" << shown(error);
        }
    }
    if (outliers) outliers->remark(record);
}

}  // namespace cephtool
