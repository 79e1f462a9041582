// The outlines of an average face that ship with the program: outlines/README.md
#pragma once

#include <string>
#include <vector>

#include "cases/case.h"

namespace cephtool {

enum class Tissue { hard, soft, tooth };

struct OutlineStyle {
    Tissue tissue = Tissue::hard;
    bool fine = false;  // to be drawn thinner than the main structures
    bool dotted = false;  // of what is no outline of the patient: an ideal arch, a mirrored half
};

struct TemplateCurve {
    Outline outline;  // all its anchors are among the template's landmarks and among its points
    OutlineStyle style;
    std::string tooth;  // whose part it is, "" for none
};

struct OutlineTemplate {
    double mm_per_pixel = 0;
    std::vector<Landmark> landmarks;
    std::vector<TemplateCurve> curves;

    const Position* find_landmark(const std::string& name) const;  // null when the template has none
    // How a curve of this name is drawn; as main bone when the template has no such curve.
    OutlineStyle style_of(const std::string& curve) const;
};

// The template beside the program for this kind of case, an empty one for casts. Throws an Error when it can't be read.
OutlineTemplate shipped_template(Kind kind);

OutlineTemplate read_template(const Source& source);

}  // namespace cephtool
