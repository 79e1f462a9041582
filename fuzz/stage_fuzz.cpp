// Any stage sections, display mode or coefficient file: what is read keeps the bounds of its records.
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "CephCalc.h"
#include "analysis/display_mode.h"
#include "analysis/growth_stage.h"
#include "framework/application.h"
#include "fuzz/subject.h"

namespace {

using tool_fuzz::require;

void read_stages(std::string_view text, int sex, bool second_set) {
    tool::for_each_stage(text, sex, second_set, [](const tool::StageLine& stage) {
        require(stage.name.size() <= 49 && stage.name.find_first_of("=\n") == std::string_view::npos);
        require(stage.range.find('\n') == std::string_view::npos);
        const auto open = tool::age_range(stage.range, tool::ZeroBound::open_above);
        const auto list = tool::age_range(stage.range, tool::ZeroBound::open_above_a_nonzero_start);
        require(open.from == list.from && (open.to == list.to || list.to <= 0));
        const auto dental = tool::dental_range(stage.range);
        require(dental.from >= 0 && dental.from <= 9 && (dental.to == 100 || dental.to <= 9));
    });
}

void read_mode(std::string_view text) {
    const tool::ModeFile mode = tool::read_display_mode(text);
    require(mode.lines.size() <= 30);
    for (const tagSUPPLINE& line : mode.lines) {
        require(line.from[0] != '\0' && line.from[5] == '\0' && line.to[0] != '\0' && line.to[5] == '\0');
        require((line.style == 101 || line.style == 102) && line.color <= 0xFFFFFF);
    }
    const tool::DisplayMode shown = tool::display_mode(text);
    require(shown.lines.size() == mode.lines.size() && shown.values.size() == mode.values.size());
    for (const tool::ModeValue& value : shown.values)
        require(!value.place || value.position.find(value.place->landmark) != std::string::npos);
}

// A clinic whose folder holds one coefficient file.
class Clinic : public CWinApp {
 public:
    Clinic() : folder_(std::filesystem::temp_directory_path() / ("stage_fuzz" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~Clinic() override { std::filesystem::remove_all(folder_); }
    CString GetProfileString(LPCSTR, LPCSTR, LPCSTR) override { return CString(folder_.string()); }
    void write(std::string_view text) const { std::ofstream(folder_ / "cvba.dat", std::ios::binary) << text; }

 private:
    std::filesystem::path folder_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string text = tool::engine_text(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    if (data[0] % 8 < 4) {
        read_stages(text, data[0] & 1, data[0] & 2);
    } else if (data[0] % 8 < 7) {
        read_mode(text);
    } else {
        static const Clinic clinic;
        clinic.write(text);
        tagCVBA vertebrae{};
        for (int i = 0; i < 22; ++i) vertebrae.Point[i] = CPoint(100 + 17 * i, 100 + i * i);
        for (const int sex : {1, 2}) {
            const double once = CCephCalc::Calc_CVBA(&vertebrae, sex), again = CCephCalc::Calc_CVBA(&vertebrae, sex);
            require(std::memcmp(&once, &again, sizeof once) == 0);
        }
    }
    return 0;
}
