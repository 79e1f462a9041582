// The pictures of docs/formula_language.md.
#pragma once

#include <framework/drawing.h>

#include <span>
#include <string>

namespace constructions {

// The cases that ship with the program.
struct Samples {
    std::string folder;
    std::string path(const char* name) const { return folder + '/' + name; }
};

struct Picture {
    const char* name;  // of the file: formula-NAME.svg
    int panels;
    void (*draw)(CDC& dc, const Samples& samples);
};

std::span<const Picture> pictures();

// measures.cpp
void draw_signs(CDC& dc, const Samples& samples);
void draw_len(CDC& dc, const Samples& samples);
void draw_len_right(CDC& dc, const Samples& samples);
void draw_len_down(CDC& dc, const Samples& samples);
void draw_angle_at(CDC& dc, const Samples& samples);
void draw_angle_between(CDC& dc, const Samples& samples);
void draw_cast(CDC& dc, const Samples& samples);
// made_points.cpp
void draw_middle(CDC& dc, const Samples& samples);
void draw_feet(CDC& dc, const Samples& samples);
void draw_crossing(CDC& dc, const Samples& samples);
void draw_bisectors(CDC& dc, const Samples& samples);
void draw_extensions(CDC& dc, const Samples& samples);
void draw_effective_a(CDC& dc, const Samples& samples);
// items.cpp
void draw_references(CDC& dc, const Samples& samples);
void draw_switch(CDC& dc, const Samples& samples);
void draw_examples(CDC& dc, const Samples& samples);

}  // namespace constructions
