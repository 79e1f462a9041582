#include "sample.h"

#include <LandmarkTable.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>

namespace constructions {
namespace {

CPoint whole_point(const nlohmann::json& pair) {
    return {static_cast<LONG>(pair.at(0).get<double>()), static_cast<LONG>(pair.at(1).get<double>())};
}

}  // namespace

void* Sample::record() {
    return kind == 0 ? static_cast<void*>(&film) : kind == 1 ? static_cast<void*>(&front) : static_cast<void*>(&cast);
}

CPoint Sample::at(const char* landmark) const {
    Sample copy = *this;
    if (const CPoint* point = LandmarkTable::Point(kind, copy.record(), LandmarkTable::Find(kind, landmark)))
        return *point;
    for (int slot = 0; slot < own_count; ++slot)
        if (std::string_view(film.UserName[slot]) == landmark) return film.UserPoint[slot];
    throw std::out_of_range(landmark);
}

Sample read_sample(const std::string& path) {
    std::ifstream file(path);
    const nlohmann::json json = nlohmann::json::parse(file);
    Sample sample;
    const std::string kind = json.at("kind");
    sample.kind = kind == "lateral" ? 0 : kind == "frontal" ? 1 : 2;
    sample.film.Scale = sample.front.Scale = sample.cast.Scale = json.at("mm_per_pixel");
    for (const auto& [name, point] : json.at("landmarks").items())
        if (CPoint* place =
                LandmarkTable::Point(sample.kind, sample.record(), LandmarkTable::Find(sample.kind, name.c_str())))
            *place = whole_point(point);
    for (const auto& outline : json.value("outlines", nlohmann::json::array())) {
        Outline& read = sample.outlines.emplace_back();
        read.name = outline.at("name");
        read.closed = outline.value("closed", false);
        for (const auto& point : outline.at("points")) read.points.push_back(whole_point(point));
    }
    return sample;
}

}  // namespace constructions
