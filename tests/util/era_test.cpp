#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

#include "JapEra.h"
#include "framework/exceptions.h"
#include "framework/system.h"
#include "util/fake_host.h"

namespace {

using std::string, std::to_string;

// The era objects made in its scope read `table`, or none when it is null.
struct Table {
    explicit Table(const char* table) {
        std::filesystem::create_directory(folder);
        if (table) std::ofstream(folder / "Era.dat", std::ios::binary) << table;
        SetModuleFileNameA((folder / "program").c_str());
    }
    ~Table() {
        SetModuleFileNameA(nullptr);
        std::filesystem::remove_all(folder);
    }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("era-" + to_string(std::random_device()()));
};

// Era and year in it.
string found(const CJapEra& eras, int year, int month, int day) {
    int era_year = -7;
    const int era = eras.GetEraYear(year, month, day, &era_year);
    return to_string(era) + " " + to_string(era_year);
}

TEST(ShippedEras, ConvertEveryDayThereAndBack) {
    SetModuleFileNameA(TOOL_SOURCE_DIR "/anaitem/program");
    const CJapEra eras;
    SetModuleFileNameA(nullptr);
    ASSERT_EQ(eras.IsDataFileFound(), 1);
    const struct {
        std::chrono::sys_days first;
        string code, name;
    } laws[] = {{std::chrono::year(1868) / 1 / 25, "M", "\x96\xBE\x8E\xA1"},
                {std::chrono::year(1912) / 7 / 30, "T", "\x91\xE5\x90\xB3"},
                {std::chrono::year(1926) / 12 / 25, "S", "\x8F\xBA\x98\x61"},
                {std::chrono::year(1989) / 1 / 8, "H", "\x95\xBD\x90\xAC"},
                {std::chrono::year(2019) / 5 / 1, "R", "\x97\xDF\x98\x61"},
                {std::chrono::year(2101) / 1 / 1, "", ""}};
    EXPECT_EQ(found(eras, 1868, 1, 24), "-1 0");
    int era = 0;
    for (auto day = laws[0].first; day < std::end(laws)[-1].first; day += std::chrono::days(1)) {
        if (day == laws[era + 1].first) ++era;
        const std::chrono::year_month_day date = day;
        const int year = int(date.year()), month = int(unsigned(date.month())), d = int(unsigned(date.day()));
        const int since = year - int(std::chrono::year_month_day(laws[era].first).year()) + 1;
        ASSERT_EQ(found(eras, year, month, d), to_string(era) + " " + to_string(since)) << year << month << d;
        ASSERT_EQ(eras.GetChristYear(era, since), year);
        for (int other = 0; other < 5; ++other)  // the same day in another era's count lies outside that era
            ASSERT_EQ(eras.CheckEra(other, year - eras.GetChristYear(other, 1) + 1, month, d), other == era);
    }
    CStringArray names, codes;
    eras.GetEraNameSet(&names), eras.GetEraCodeSet(&codes);
    ASSERT_EQ(names.GetSize() + codes.GetSize(), 10);
    for (era = 0; era < 5; ++era) {
        EXPECT_EQ(string(names[era]) + string(codes[era]), laws[era].name + laws[era].code);
        EXPECT_EQ(eras.GetEraName(era) + eras.GetEraCode(era), names[era] + codes[era]);
    }
    EXPECT_EQ(eras.GetEraYearName(2000, 1, 1, nullptr) + eras.GetEraYearCode(2000, 1, 1, nullptr), names[3] + "H");
    EXPECT_EQ(eras.GetEraYearName(1800, 1, 1, nullptr) + eras.GetEraYearCode(1800, 1, 1, nullptr), "");
}

TEST(EraTables, OfAnyFormAreReadAsDescribed) {
    const struct {
        const char* table;
        int year, month, day;
        const char* expected;
    } rows[] = {
        {"[MAIN]\nn=1\n[ERA_RANGE]\n-1=-1900.01.31\n0=1900.02.01-1950.12.31\n", 1900, 1, 31, "-1 0"},
        {"[main]\nN=1\n[era_range]\n-1=-1900.01.31\n0=1900.02.01-1950.12.31\n", 1900, 2, 1, "0 1"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n-1=-1900.01.31\n0=1900.02.01-1950.12.31\n", 1950, 12, 31, "0 51"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n-1=-1900.01.31\n0=1900.02.01-1950.12.31\n", 1951, 1, 1, "-1 0"},
        {"[MAIN]\nn=2\n[ERA_RANGE]\n0=1900.01.01-1950.12.31\n1=1950.12.31-\n", 1950, 12, 31, "0 51"},  // first wins
        {"[MAIN]\nn=2\n[ERA_RANGE]\n0=1900.01.01-1950.12.31\n1=1950.12.31-\n", 9999, 12, 31, "1 8050"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n0=2000.01.01-2000.01.01\n", 2000, 0, 0, "0 1"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n0=2000.1.1-2001.1.1\n", 2000, 5, 5, "-1 0"},  // no span, and none before it
        {"[MAIN]\nn=1\n[ERA_RANGE]\n-1=1999.01.01-\n0=2000.1.1-x2001.1.1\n", 1990, 5, 5, "-1 0"},
        // Kept: a text of another length stands for the span before it, here with its first year; a short one does not.
        {"[MAIN]\nn=1\n[ERA_RANGE]\n-1=1990.01.01-1990.01.02\n0=2000.01.01 on\n", 1990, 1, 2, "-1 1"},
        {"[MAIN]\nn=3\n[ERA_RANGE]\n0=short\n1=-1990.01.02\n2=2000.01.01 on\n", 1990, 1, 2, "1 0"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n0=0002.01.01-\n", 5, 1, 1, "0 4"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n0=0001.01.01-\n", 5, 1, 1, "0 0"},
        {"[MAIN]\nn=1\n[ERA_RANGE]\n0=2001.13.01-2001.99.99\n", 2001, 14, 77, "0 1"},  // compared as text
        {"[MAIN]\nn=-3\n[ERA_RANGE]\n-1=1990.01.01-\n", 2000, 1, 1, "-1 11"},
        {"", 2000, 1, 1, "-1 0"},
    };
    for (const auto& row : rows) {
        const Table table(row.table);
        EXPECT_EQ(found(CJapEra(), row.year, row.month, row.day), row.expected) << row.table;
    }
}

TEST(EraTables, CountYearsWithoutLookingAtTheEnd) {
    const Table table("[MAIN]\nn=2\n[ERA_RANGE]\n-1=-1900.01.31\n0=1900.02.01-1950.12.31\n1=now\n");
    const CJapEra eras;
    EXPECT_EQ(eras.GetEraYear(2000, 0, 0, 1), 101);  // Kept: span 1 is era 0
    EXPECT_EQ(eras.GetEraYear(2000, 0, 0, 0) + eras.GetEraYear(2000, 0, 0, 2), 0);
    EXPECT_EQ(eras.GetChristYear(0, 601), 2500);
    EXPECT_EQ(eras.GetChristYear(0, 602) + eras.GetChristYear(0, INT_MAX), 5000);
    EXPECT_EQ(eras.GetChristYear(-1, 7), 7);
    EXPECT_EQ(eras.GetChristYear(1, 7), 6);  // what is no span begins in year 0
    EXPECT_EQ(eras.GetChristYear(1, INT_MIN), INT_MIN);
    EXPECT_EQ(eras.CheckEra(0, 1, 1, 31) + eras.CheckEra(0, 52, 0, 0) + eras.CheckEra(0, INT_MAX, 1, 1), 0);
    EXPECT_EQ(eras.CheckEra(0, 1, 2, 0) + eras.CheckEra(0, 51, 12, 31) + eras.CheckEra(-1, 1900, 1, 31), 3);
}

TEST(EraTables, GiveNoMoreThanAThousandErasOfAHundredCharacters) {
    const Table table(("[MAIN]\nn=9999\n[ERA_NAME]\n0=" + string(150, 'x') + "\n999=last\n").c_str());
    const CJapEra eras;
    EXPECT_EQ(eras.GetEraName(0).GetLength(), 100);
    EXPECT_EQ(eras.GetEraName(999), "last");
    for (const int bad : {-2, 1000, INT_MAX, INT_MIN})
        for (int call = 0; call < 5; ++call) {
            try {
                if (call == 0) eras.GetEraName(bad);
                if (call == 1) eras.GetEraCode(bad);
                if (call == 2) eras.GetChristYear(bad, 1);
                if (call == 3) eras.CheckEra(bad, 1, 1, 1);
                if (call == 4) eras.GetEraYear(2000, 1, 1, bad == 1000 ? 1001 : bad);
                ADD_FAILURE() << bad << " " << call;
            } catch (CException* failure) {
                EXPECT_TRUE(dynamic_cast<CInvalidArgException*>(failure));
                failure->Delete();
            }
        }
}

TEST(EraTables, MissingAreToldOnce) {
    const Table none(nullptr);
    FakeHost host;
    const CJapEra eras;
    CStringArray names;
    names.Add("old");
    eras.GetEraNameSet(&names);
    EXPECT_EQ(names.GetSize() + eras.IsDataFileFound() + eras.GetChristYear(9, 1) + eras.CheckEra(9, 1, 1, 1), 0);
    EXPECT_EQ(found(eras, 2000, 1, 1) + to_string(eras.GetEraYear(2000, 1, 1, 9)), "-1 0-1");
    EXPECT_EQ(eras.GetEraName(9) + eras.GetEraCode(9) + eras.GetEraYearName(2000, 1, 1, nullptr), "");
    EXPECT_EQ(host.boxes, decltype(host.boxes)(1, {"ERA data file not found", MB_OK}));
}

}  // namespace
