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

}  // namespace constructions
