#pragma once

namespace cephtool {

// Whether standard output is a terminal whose owner wants colours: NO_COLOR is unset or empty (no-color.org) and TERM
// is not "dumb".
bool shows_colours();

// Whether standard error is a terminal that can write a line over.
bool shows_progress();

}  // namespace cephtool
