#include "host/landmark_slips.h"

#include "base/error.h"

namespace cephtool {

void LandmarkSlips::remark(Case& record) {
    if (record.kind != Kind::lateral) return;
    if (!read_) {
        read_ = true;
        try {
            outliers_.emplace(shipped_template(Kind::lateral));
        } catch (const Error& error) {
            streams_.err << "cephtool: landmarks are not looked at for slips\n" << shown(error);
        }
    }
    if (outliers_) outliers_->remark(record);
}

}  // namespace cephtool
