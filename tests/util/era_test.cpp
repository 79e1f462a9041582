#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <random>

#include "JapEra.h"
#include "framework/exceptions.h"
#include "framework/system.h"
#include "util/call_table.h"
#include "util/fake_host.h"

namespace {

namespace fs = std::filesystem;
using std::string, std::to_string;

string found(const CJapEra& eras, int year, int month, int day) {
    int era_year = -7;
    const int era = eras.GetEraYear(year, month, day, &era_year);
    return to_string(era) + " " + to_string(era_year);
}

// A program in a folder of its own, with the era table that the calls of a test table write.
struct World {
    const fs::path folder = fs::temp_directory_path() / ("era-" + to_string(std::random_device()()));
    FakeHost host;
    std::optional<CJapEra> eras;

    World() {
        fs::create_directory(folder);
        SetModuleFileNameA((folder / "program").string().c_str());
    }
    ~World() {
        SetModuleFileNameA(nullptr);
        fs::remove_all(folder);
    }

    string new_table(const Fields& lines) {
        fs::remove(folder / "Era.dat");
        if (!lines.empty()) std::ofstream table(folder / "Era.dat");
        for (const string& line : lines) std::ofstream(folder / "Era.dat", std::ios::app) << line << "\r\n";
        eras.emplace();
        CStringArray names, codes;
        names.Add("old");
        eras->GetEraNameSet(&names), eras->GetEraCodeSet(&codes);
        EXPECT_EQ(names.GetSize(), codes.GetSize());
        return to_string(eras->IsDataFileFound()) + " " + to_string(names.GetSize());
    }
    string answer(const string& call, Fields f) try {
        if (call == "file") return new_table(f);
        f.resize(4);
        const auto n = [&f](std::size_t i) { return std::atoi(f[i].c_str()); };
        if (call == "era") return found(*eras, n(0), n(1), n(2));
        if (call == "name_of") return string(eras->GetEraYearName(n(0), n(1), n(2), nullptr));
        if (call == "code_of") return string(eras->GetEraYearCode(n(0), n(1), n(2), nullptr));
        if (call == "name") return string(eras->GetEraName(n(0)));
        if (call == "code") return string(eras->GetEraCode(n(0)));
        if (call == "western") return to_string(eras->GetChristYear(n(0), n(1)));
        if (call == "check") return to_string(eras->CheckEra(n(0), n(1), n(2), n(3)));
        if (call == "span_year") return to_string(eras->GetEraYear(n(0), 0, 0, n(1)));
        string boxes;
        for (const auto& box : host.boxes) boxes += box.first + ";";
        return boxes;
    } catch (CException* failure) {
        const bool expected = dynamic_cast<CInvalidArgException*>(failure);
        failure->Delete();
        return expected ? "invalid argument" : "another exception";
    }
};

TEST(EraTables, AnswerAsTheTableSays) {
    World world;
    expect_answers(TOOL_TEST_DATA "/eras.txt",
                   [&](const string& call, const Fields& fields) { return world.answer(call, fields); });
}

TEST(ShippedEras, ConvertEveryDayThereAndBack) {
    SetModuleFileNameA(TOOL_SOURCE_DIR "/anaitem/program");
    const CJapEra eras;
    SetModuleFileNameA(nullptr);
    using namespace std::chrono;
    const sys_days laws[] = {1868y / 1 / 25, 1912y / 7 / 30, 1926y / 12 / 25,
                             1989y / 1 / 8,  2019y / 5 / 1,  2101y / 1 / 1};
    EXPECT_EQ(found(eras, 1868, 1, 24), "-1 0");
    int era = 0;
    for (sys_days each = laws[0]; each < laws[5]; each += days(1)) {
        if (each == laws[era + 1]) ++era;
        const year_month_day date = each;
        const int y = int(date.year()), m = int(unsigned(date.month())), d = int(unsigned(date.day()));
        const int since = y - int(year_month_day(laws[era]).year()) + 1;
        ASSERT_EQ(found(eras, y, m, d), to_string(era) + " " + to_string(since)) << y << "-" << m << "-" << d;
        ASSERT_EQ(eras.GetChristYear(era, since), y);
        for (int other = 0; other < 5; ++other)  // counted in another era the day lies outside
            ASSERT_EQ(eras.CheckEra(other, y - eras.GetChristYear(other, 1) + 1, m, d), other == era);
    }
    string all;
    for (era = 0; era < 5; ++era) all += string(eras.GetEraCode(era)) + string(eras.GetEraName(era));
    EXPECT_EQ(all, "M\x96\xBE\x8E\xA1T\x91\xE5\x90\xB3S\x8F\xBA\x98\x61H\x95\xBD\x90\xACR\x97\xDF\x98\x61");
}

}  // namespace
