// Records and folders that the tests of this room measure.
#pragma once

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <utility>

#include <unistd.h>

#include "AnalysisSheet.h"
#include "CephCalc.h"
#include "LandmarkTable.h"
#include "framework/application.h"

namespace tool_test {

using NamedPoints = std::initializer_list<std::pair<const char*, CPoint>>;

// A record of any kind with its lists, 0.5 mm a pixel, all of it empty at first.
template <class Record, int Kind>
struct Subject {
    Record record{};
    unsigned short virtual_count = 0, user_count = 0;
    tagKPOINT virtuals[12] = {};
    tagUPOINT users[USER_POINT_MAX] = {};

    Subject(NamedPoints points = {}) {
        record.Scale = 0.5;
        for (const auto& [name, point] : points) place(name, point);
    }
    void place(const char* name, CPoint point) {
        *LandmarkTable::Point(Kind, &record, LandmarkTable::Find(Kind, name)) = point;
    }
    void add_user(const char* name, CPoint point) {
        std::strncpy(record.UserName[user_count], name, sizeof record.UserName[0]);
        record.UserPoint[user_count++] = point;
    }
    void add_virtual(const char* name, const char* construction) {
        std::snprintf(virtuals[virtual_count].Name, sizeof virtuals[0].Name, "%s", name);
        std::snprintf(virtuals[virtual_count++].Construction, sizeof virtuals[0].Construction, "%s", construction);
    }

    double calc(std::string formula) {
        double values[100];
        int count = 0;
        return calc(formula, values, count);
    }
    double calc(std::string& formula, double* values, int& count, int top_level = 1) {
        return CCephCalc::Calc(Kind, 0, formula.data(), values, &count, &record, &virtual_count, virtuals, &user_count,
                               users, 1, 0, 0.0, top_level);
    }
    CPointD point(std::string expression) { return point_in(expression); }
    CPointD point_in(std::string& text) {
        return CCephCalc::Calc_Point(Kind, text.data(), &record, &virtual_count, virtuals, &user_count, users);
    }
    double item(const char* name, int mode = 0, int sex = 1, int band = 0, double* value = nullptr,
                double* sd = nullptr) {
        return CCephCalc::Calc_1(mode, Kind, 0, name, &record, &virtual_count, virtuals, &user_count, users, sex, band,
                                 0.0, value, sd);
    }
    std::string norm(const char* name, int which = 0, int sex = 1, int band = 0, int keep_decimals = 1) {
        return static_cast<LPCSTR>(CCephCalc::Get_MeanSD(Kind, 0, name, which, sex, band, &record, &virtual_count,
                                                         virtuals, &user_count, users, 1.1, keep_decimals));
    }
    SheetSubject on_sheet(int sex = 1, int band = 0) {
        return {&record, &virtual_count, virtuals, &user_count, users, sex, band};
    }
};
using Lateral = Subject<tagPOINTLAT, 0>;
using Frontal = Subject<tagPOINTPA, 1>;
using Cast = Subject<tagPOINTMO, 2>;

// S-N level, A and B below and behind N, in whole pixels.
inline Lateral small_face() {
    return {{"S", {100, 100}},  {"N", {400, 100}},   {"A", {400, 300}},   {"B", {100, 500}},
            {"Me", {360, 640}}, {"Go", {160, 480}},  {"Po", {80, 200}},   {"Or", {380, 200}},
            {"U1", {430, 390}}, {"U1R", {390, 310}}, {"U1C", {415, 345}}, {"Pog(R)", {370, 600}}};
}

// A clinic's analysis folder on disk, told to the engine as a host tells it.
class AnalysisFolder : public CWinApp {
 public:
    AnalysisFolder() : path_(std::filesystem::temp_directory_path() / ("analyses" + std::to_string(getpid()))) {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~AnalysisFolder() override { std::filesystem::remove_all(path_); }

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << text;
    }
    // The only lateral analysis.
    void write_analysis(const std::string& text) const {
        write("CalcForm/list.txt", "Only.txt\r\n");
        write("CalcForm/Only.txt", text);
    }
    std::string root() const { return path_.generic_string() + "/"; }

    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int default_value) override {
        return std::string_view(section) == "ENV" && std::string_view(entry) == "MODEL_DECIMALS" ? model_decimals
                                                                                                 : default_value;
    }
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR default_value) override {
        const bool ours = std::string_view(section) == "DB_DIR" && std::string_view(entry) == "ANAITEMPATH";
        return ours ? CString(path_.generic_string()) : CString(default_value);
    }
    UINT model_decimals = 2;

 private:
    std::filesystem::path path_;
};

}  // namespace tool_test
