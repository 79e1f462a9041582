// The cases that a command line names, one after the other.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "host/case_option_flags.h"

namespace cephtool {

// Hands each case and where it was read from to `use`. Notes and errors, also those that `use` throws, go to
// `streams.err`; a bad case does not keep the others from being read. What the exit code says is the last failure.
ExitCode for_each_case(const std::vector<std::string>& paths, const CaseOptionFlags& options, Streams& streams,
                       const std::function<void(const Source&, Case)>& use);

// What is remarked on the case, on `streams.err`: for results that go to a file or a program.
void say_remarks(const Case& record, Streams& streams);

}  // namespace cephtool
