// The work of a batch: cases in, lines out.
#pragma once

#include <functional>

#include "host/batch/batch_format.h"
#include "host/batch/batch_output.h"
#include "host/batch/case_stream.h"

namespace cephtool {

struct BatchWork {
    const BatchColumns& columns;
    const BatchFormat& format;
    CaseOptions options;
    std::optional<int> band;
    const tool::LandmarkErrors* errors = nullptr;
    bool slips = false;  // remark landmarks where nobody expects them (tracing/landmark_outliers.h)
    std::size_t threads = 1;
};

// Measures the cases of `stream` until its end, or until `stop` says so, and writes them in their order. A resumed
// output goes on behind its last line, whose case is measured once more: an Error is thrown when it comes out another
// way. True when the end was reached.
bool measure_batch(const BatchWork& work, CaseStream& stream, BatchOutput& output, const std::function<bool()>& stop,
                   const std::function<void(std::size_t cases)>& progress);

}  // namespace cephtool
