#include "host/exif/exif_names.h"

#include <algorithm>
#include <span>

namespace cephtool {
namespace {

struct Name {
    int code;
    const char* text;
};

constexpr Name orientations[] = {{1, "upright"},
                                 {2, "mirrored"},
                                 {3, "to be turned by 180°"},
                                 {4, "mirrored, to be turned by 180°"},
                                 {5, "mirrored, to be turned by 90° to the left"},
                                 {6, "to be turned by 90° to the right"},
                                 {7, "mirrored, to be turned by 90° to the right"},
                                 {8, "to be turned by 90° to the left"}};

constexpr Name programs[] = {{1, "manual"},           {2, "normal program"},   {3, "aperture priority"},
                             {4, "shutter priority"}, {5, "creative program"}, {6, "action program"},
                             {7, "portrait mode"},    {8, "landscape mode"}};

constexpr Name meterings[] = {
    {1, "average"}, {2, "centre-weighted average"}, {3, "spot"}, {4, "multi-spot"}, {5, "pattern"}, {6, "partial"},
    {255, "other"}};

constexpr Name light_sources[] = {{1, "daylight"},
                                  {2, "fluorescent"},
                                  {3, "tungsten"},
                                  {4, "flash"},
                                  {9, "fine weather"},
                                  {10, "cloudy weather"},
                                  {11, "shade"},
                                  {12, "daylight fluorescent"},
                                  {13, "day white fluorescent"},
                                  {14, "cool white fluorescent"},
                                  {15, "white fluorescent"},
                                  {16, "warm white fluorescent"},
                                  {17, "standard light A"},
                                  {18, "standard light B"},
                                  {19, "standard light C"},
                                  {20, "D55"},
                                  {21, "D65"},
                                  {22, "D75"},
                                  {23, "D50"},
                                  {24, "ISO studio tungsten"},
                                  {255, "other"}};

constexpr Name processes[] = {{0xC0, "baseline"},
                              {0xC1, "extended sequential"},
                              {0xC2, "progressive"},
                              {0xC3, "lossless"},
                              {0xC5, "differential sequential"},
                              {0xC6, "differential progressive"},
                              {0xC7, "differential lossless"},
                              {0xC9, "sequential, arithmetic coding"},
                              {0xCA, "progressive, arithmetic coding"},
                              {0xCB, "lossless, arithmetic coding"},
                              {0xCD, "differential sequential, arithmetic coding"},
                              {0xCE, "differential progressive, arithmetic coding"},
                              {0xCF, "differential lossless, arithmetic coding"}};

std::string name_in(std::span<const Name> names, int code) {
    const auto found = std::ranges::find(names, code, &Name::code);
    return found == names.end() ? "" : found->text;
}

}  // namespace

std::string orientation_name(int code) {
    return name_in(orientations, code);
}

std::string program_name(int code) {
    return name_in(programs, code);
}

std::string metering_name(int code) {
    return name_in(meterings, code);
}

std::string light_source_name(int code) {
    return name_in(light_sources, code);
}

std::string process_name(int marker) {
    return name_in(processes, marker);
}

}  // namespace cephtool
