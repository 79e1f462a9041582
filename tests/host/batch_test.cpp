#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>

#include "base/csv.h"
#include "base/system.h"
#include "cases/case_format.h"
#include "host/batch/batch_progress.h"
#include "host/batch/flat_table.h"
#include "host/batch/line_reader.h"
#include "host/batch/run_lock.h"
#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Folder;
using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

using Row = std::map<std::string, std::string>;

std::vector<Row> rows_of(const std::string& table) {
    const Source source{"table", table};
    CsvReader reader(source);
    CsvRow head, row;
    reader.next(head);
    std::vector<Row> rows;
    while (reader.next(row)) {
        EXPECT_EQ(row.fields.size(), head.fields.size());
        Row& made = rows.emplace_back();
        for (std::size_t i = 0; i < row.fields.size(); ++i) made[head.fields[i].text] = row.fields[i].text;
    }
    return rows;
}

Outcome batch(Arguments arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), "batch");
    arguments.insert(arguments.end(), {"--anaitem", ANALYSES});
    return run(arguments, input);
}

// Faces of both sexes and of none, of several ages, some without landmarks that analyses need.
std::string flat_table(int count) {
    const std::string file = SAMPLES "/lateral-average.json";
    const Case face = read_case({file, bytes_of(file)});
    std::string text = "# scale_mm_per_px=0.1\nname,sex,birth,film,extra";
    for (const Landmark& each : face.landmarks) text += "," + each.name + "_x," + each.name + "_y";
    for (int i = 0; i < count; ++i) {
        text += "\n\"case, " + std::to_string(i) + "\"," + std::vector{"m", "f", ""}[static_cast<std::size_t>(i % 3)] +
                ",20" + std::to_string(10 + i % 12) + "-05-14,2025-06-02,x";
        for (std::size_t k = 0; k < face.landmarks.size(); ++k) {
            const Position p = face.landmarks[k].position;
            const bool absent = i % 5 == 4 && k % 9 == 2;
            text += absent ? ",,"
                           : "," + std::to_string(p.x + i * static_cast<int>(k % 4)) + "," +
                                 std::to_string(p.y - i * static_cast<int>(k % 3));
        }
    }
    return text + "\n";
}

// Whatever stands in a row: the quick way gives what the reader of all rows gives, or leaves it to that one.
TEST(Batch, ReadsPlainRowsAsAnyRow) {
    std::string text = flat_table(40);
    const std::size_t header = text.find("\n\"");
    const auto commas = [](std::string_view line) { return static_cast<std::size_t>(std::ranges::count(line, ',')); };
    const std::size_t all = commas(text.substr(0, header));
    for (const std::string row : {"z,m,,,x,0,0,1,1", "z,m,2012-02-29,2012-02-28,x,1,1", "z,m,,,x", "z,m,,,x,1,", "z,m"})
        text += row + std::string(all - commas(row), ',') + "\n";
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    Case record;
    std::vector<std::string_view> fields;
    const std::string_view damage[] = {"\"",  "\"\"",    ",", " ",  "'",  "=", "#",    "+",        "-",
                                       ".",   "e9",      "0", "-0", "\t", "é", "\x80", "\xC2\x85", "\xEF\xBB\xBF",
                                       "inf", "1000001", "9", "IIA"};
    const std::vector<std::string> alone{""},
        more{",lateral,left,5,6.25,1,2,7.5,8", ",,,,,,,,", ",frontal,,5,-6.1,,,,", ",model,right,1,2,,,,"};
    for (const auto& [columns, tails] :
         {std::pair("", alone), {",kind,side,own_x,own_y,aux01_x,aux01_y,C3ua_x,C3ua_y", more}}) {
        const FlatTable table({"flat.csv", text.substr(0, header) + columns});
        std::istringstream lines(text.substr(header + 1));
        int plain = 0;
        for (std::string line; std::getline(lines, line);)
            for (std::size_t i = 0; i < 200; ++i) {
                std::string row = line + tails[i % tails.size()];
                const bool is_whole = i / 4 % 4 == 0;
                for (std::size_t changes = i / 4 % 4; changes > 0; --changes) {
                    const std::size_t at = random() % (random() % 3 ? row.size() : 60);
                    row.replace(at, random() % 4, damage[random() % std::size(damage)]);
                }
                if (!table.read_plain(row, record, fields)) continue;
                const Case expected = table.read(checked_text({"flat.csv", row}));
                ASSERT_EQ(to_json(record), to_json(expected)) << row << "\nseed " << seed;
                ASSERT_EQ(record.notes, expected.notes) << row;
                ASSERT_TRUE(expected.remarks.empty()) << row;
                plain += is_whole;
            }
        EXPECT_EQ(plain, tails.size() == 1 ? 40 * 52 : 40 * 26 + 6 * 13);
    }
}

TEST(Batch, GivesTheNumbersOfAnalyze) {
    const Folder folder;
    folder.add("flat.csv", flat_table(30));
    const Arguments names{"--analysis", "Steiner",    "--analysis",        "Diagnosis",  "--analysis",
                          "Ricketts",   "--analysis", "Japanese_Children", "--analysis", "Bolton"};
    const std::string front = SAMPLES "/frontal-average.json", class2 = SAMPLES "/lateral-class2.json";
    Arguments arguments{"flat.csv", front, class2, "-o", "all.csv", "--with", "norms", "--with", "deviations"};
    arguments.insert(arguments.end(), names.begin(), names.end());
    const Outcome outcome = batch(arguments);
    ASSERT_EQ(outcome.code, ExitCode::done) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("columns passed over: extra"));
    const std::vector<Row> table = rows_of(bytes_of("all.csv"));
    ASSERT_EQ(table.size(), 32u);
    const FlatTable flat({"flat.csv", bytes_of("flat.csv").substr(0, bytes_of("flat.csv").find("\n\""))});
    std::istringstream lines(bytes_of("flat.csv"));
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    std::size_t compared = 0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        std::string path = i == 31 ? class2 : front;
        if (i < 30) {
            std::getline(lines, line);
            folder.add("one.json", to_json(flat.read({"flat.csv", line})));
            path = "one.json";
        }
        EXPECT_EQ(table[i].at("case"), std::to_string(i + 1));
        Arguments one{"analyze", path, "--format", "csv", "--anaitem", ANALYSES};
        one.insert(one.end(), names.begin(), names.end());
        for (const Row& item : rows_of(run(one).out)) {
            std::string stem = item.at("analysis").substr(0, item.at("analysis").find_first_of(" ("));
            if (stem == "Japanese") stem = "Japanese_Children";
            const bool frontal = table[i].at("kind") == "frontal";
            if (stem == "Diagnosis") stem = "diagnosis:Diagnosis";
            const std::string column = (frontal ? "frontal:" : "") + stem + ":" + item.at("item");
            for (const auto& [part, suffix] :
                 {std::pair("value", ""), {"mean", ":mean"}, {"sd", ":sd"}, {"deviation", ":deviation"}}) {
                const auto found = table[i].find(column + suffix);
                if (found == table[i].end()) continue;  // a heading, or a name that is there twice
                EXPECT_EQ(found->second, item.at(part)) << column << suffix << " of case " << i + 1;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 9000u);
}

TEST(Batch, KeepsTheOrderWhateverTheThreadsAndTheForm) {
    const Folder folder;
    const std::string flat = flat_table(300);
    folder.add("flat.csv", flat);
    const auto table = [&](Arguments arguments, const std::string& input = {}) {
        arguments.insert(arguments.end(), {"--analysis", "Steiner", "-o", "out.csv"});
        const Outcome outcome = batch(arguments, input);
        EXPECT_EQ(outcome.code, ExitCode::done) << outcome.err;
        std::vector<Row> rows = rows_of(bytes_of("out.csv"));
        for (Row& row : rows) row.erase("file");
        return rows;
    };
    const std::vector<Row> expected = table({"flat.csv", "--threads", "1"});
    ASSERT_EQ(expected.size(), 300u);
    EXPECT_EQ(table({"flat.csv", "--threads", "7"}), expected);
    EXPECT_EQ(table({"-"}, flat), expected);

    // The same cases as JSON lines, as a folder of files, and as the specimens of one TPS file.
    const std::size_t header = flat.find("\n\"");
    const FlatTable reader({"flat.csv", flat.substr(0, header)});
    std::istringstream lines(flat.substr(header + 1));
    std::string json_lines, tps;
    int number = 1000;
    for (std::string line; std::getline(lines, line);) {
        const Case record = reader.read({"flat.csv", line});
        std::string json = to_json(record);
        std::ranges::replace(json, '\n', ' ');
        json_lines += json + "\n";
        tps += to_tps(record, {});
        folder.add("cases/" + std::to_string(++number) + ".json", to_json(record));
    }
    folder.add("cases/notes.md", "no case");
    folder.add("all.tps", tps);
    folder.add("all.jsonl", json_lines);
    EXPECT_EQ(table({"-"}, json_lines), expected);
    EXPECT_EQ(table({"all.jsonl"}), expected);
    EXPECT_EQ(table({"cases"}), expected);
    EXPECT_EQ(table({"all.tps"}), expected);

    ASSERT_EQ(batch({"flat.csv", "--analysis", "Steiner", "-o", "out.jsonl"}).code, ExitCode::done);
    const std::string first = bytes_of("out.jsonl").substr(0, bytes_of("out.jsonl").find('\n'));
    EXPECT_THAT(first, HasSubstr(R"({"case":1,"file":"flat.csv","name":"case, 0","kind":"lateral","sex":"male",)"));
    EXPECT_THAT(first, HasSubstr("\"Steiner:SNA\":" + expected[0].at("Steiner:SNA") + ","));
}

// Bad cases of every sort among good ones.
std::string mixed_lines() {
    const std::string good =
        R"({"format":"cephtool-case","version":1,"kind":"lateral","mm_per_pixel":0.1,"landmarks":{"S":[1,2],"N":[9,2],"A":[8,9]}})";
    return good + "\n{\"format\":\n\n" + good + "\r\n" + good +
           "\n{\"format\":\"cephtool-case\",\"version\":1,\"kind\":\"model\","
           "\"mm_per_pixel\":1,\"landmarks\":{}}\n" +
           good + "\n\xFF\n" + good;
}

TEST(Batch, FailedCasesAreATableOfTheirOwn) {
    const Folder folder;
    folder.add("b.jsonl", mixed_lines());
    folder.add("a.csv",
               "# scale_mm_per_px=0.1\nS_x,S_y,N_x,N_y,A_x,A_y\n1,2,9,2,8,9\n1,2,9,2,8\n1,2,,,8,x\n,,,,,\n\"1\n");
    folder.add("c.tps", "LM=1\n1 2\nCOMMENT=landmarks=S\nSCALE=1\nLM=1\n1\nLM=1\n1 2\nCOMMENT=landmarks=S\nSCALE=1\n");
    folder.add("d.csv", "S,1,2\n");
    folder.add("e.csv", "S_x,S_y,sxe\n1,2,f\n");
    folder.add("g.jsonl", "\n{\"format\":\n");
    folder.add("h.csv", "# scale_mm_per_px=0.1\nS_x,S_y\n,2\n");
    folder.add("f.tps", "ID=7\nLM=1\n1 2\nCOMMENT=landmarks=S\nSCALE=1\n");
    const Outcome outcome = batch({"a.csv", "b.jsonl", "c.tps", "d.csv", "e.csv", "f.tps", "g.jsonl", "h.csv",
                                   "--analysis", "Steiner", "-o", "out.csv"});
    EXPECT_EQ(outcome.code, ExitCode::bad_input);
    EXPECT_THAT(outcome.err, HasSubstr("13 cases failed: see out.csv.errors.csv"));
    std::string good;
    for (const Row& row : rows_of(bytes_of("out.csv"))) good += row.at("case") + " ";
    EXPECT_EQ(good, "1 6 8 9 11 13 14 16 ");
    std::string bad;
    for (const Row& row : rows_of(bytes_of("out.csv.errors.csv")))
        bad += row.at("case") + " " + row.at("place") + " " + row.at("message").substr(0, 24) + "\n";
    EXPECT_EQ(bad,
              "2 a.csv:4:1 this row has 5 fields, t\n"
              "3 a.csv:5:9 \"x\" is no coordinate\n"
              "4 a.csv:6:1 there is no landmark in \n"
              "5 a.csv:7:1 this quote is never clos\n"
              "7 b.jsonl:2:11 this is no JSON: syntax \n"
              "10 b.jsonl this is a model case, an\n"
              "12 b.jsonl:8:1 a byte that is not UTF-8\n"
              "15 c.tps:6:1 point 1 of 1 is not two \n"
              "17 d.csv the case has no scale, s\n"
              "18 e.csv:1:9 the column \"sxe\" is not \n"
              "19 f.tps:1:1 a TPS file begins with a\n"
              "20 g.jsonl:2:11 this is no JSON: syntax \n"
              "21 h.csv:3:1 \"\" is no coordinate\n");
    ASSERT_EQ(batch({"a.csv", "--sex", "f", "--analysis", "Bolton", "-o", "out.csv"}).code, ExitCode::bad_input);
    ASSERT_EQ(batch({SAMPLES "/lateral-average.json", "-o", "out.csv"}).code, ExitCode::done);
    EXPECT_FALSE(std::filesystem::exists("out.csv.errors.csv")) << "of an earlier run";
    EXPECT_EQ(batch({"absent", "-o", "out.csv"}).code, ExitCode::bad_input);
}

// Stopped at any byte beside a line's end and at some between, with the table of failures ahead of it, as the order of
// writing has it.
TEST(Batch, GoesOnBehindTheLastWholeLineWhereverItWasCut) {
    const Folder folder;
    folder.add("cases.jsonl", mixed_lines());
    for (const std::string out : {"out.csv", "out.jsonl"}) {
        const Arguments arguments{"cases.jsonl", "--analysis", "Wits", "--analysis", "Jarabak", "-o", out};
        ASSERT_EQ(batch(arguments).code, ExitCode::bad_input);
        const std::string table = bytes_of(out), failed = bytes_of(out + ".errors.csv");
        Arguments resume = arguments;
        resume.push_back("--resume");
        EXPECT_THAT(batch(resume).err, HasSubstr("complete already"));
        for (std::size_t cut = 0; cut <= table.size(); ++cut) {
            const bool beside_line_end = table.substr(cut - std::min<std::size_t>(cut, 2), 4).find('\n') < 4;
            if (!beside_line_end && cut % 64 != 0 && cut < table.size()) continue;
            std::filesystem::remove(out);
            std::filesystem::remove(out + ".errors.csv");
            folder.add(out + ".part", table.substr(0, cut));
            folder.add(out + ".errors.csv.part", cut % 2 ? failed : failed + "9");
            const Outcome outcome = batch(resume);
            ASSERT_EQ(outcome.code, ExitCode::bad_input) << outcome.err;
            ASSERT_THAT(outcome.err, HasSubstr("3 cases failed"));
            ASSERT_EQ(bytes_of(out), table) << cut;
            ASSERT_EQ(bytes_of(out + ".errors.csv"), failed) << cut;
            ASSERT_FALSE(std::filesystem::exists(out + ".part"));
        }
        folder.add(out + ".part", table);
        EXPECT_THAT(batch(arguments).err, HasSubstr("Go on with --resume"));
        Arguments other = resume;
        other.insert(other.end(), {"--scale", "0.2"});
        EXPECT_THAT(batch(other).err, HasSubstr("case 8 no longer gives the line"));
        if (out == "out.csv") {
            other = resume;
            other[2] = "Tweed";
            EXPECT_THAT(batch(other).err, HasSubstr("other columns"));
        }
        EXPECT_EQ(bytes_of(out + ".part"), table) << "a refused run changes nothing";
        std::filesystem::remove(out + ".part");
        std::filesystem::remove(out + ".errors.csv.part");
    }
}

TEST(Batch, LosesNothingOfAnybodys) {
    const Folder folder;
    const std::string good = "\"id\",\"scale\",\"S_x\",\"S_y\"\n\"1\",0.1,1,2\n", bad = good + "2,,x,2\n";
    folder.add("study/a.csv", bad);
    folder.add("good.csv", good);
    folder.add("own.csv.errors.csv", "mine");
    std::filesystem::create_hard_link("study/a.csv", "hard.csv");
    for (const std::string out : {"-", "study", "study/a.csv", "hard.csv", "own.csv"}) {
        EXPECT_EQ(batch({"study/a.csv", "-o", out}).code, ExitCode::bad_command_line) << out;
        EXPECT_FALSE(std::filesystem::exists(out + ".part")) << out;
    }
    EXPECT_EQ(batch({"study", "-o", "study/a.csv"}).code, ExitCode::bad_command_line) << "it is a case";
    EXPECT_EQ(bytes_of("study/a.csv") + bytes_of("own.csv.errors.csv"), bad + "mine");
    for (const std::string own : {"p.csv.part", "f.csv.errors.csv.part", "l.csv.lock"}) {
        folder.add(own, "mine");
        EXPECT_EQ(batch({"good.csv", "-o", own.substr(0, 5), "--resume"}).code, ExitCode::bad_command_line) << own;
        EXPECT_EQ(bytes_of(own), "mine");
    }
    std::error_code no_links;
    std::filesystem::create_symlink("gone", "d.csv.part", no_links);
    EXPECT_TRUE(no_links || batch({"good.csv", "-o", "d.csv"}).code == ExitCode::bad_command_line);
    EXPECT_FALSE(std::filesystem::exists("gone"));

    batch({"study", "--analysis", "Wits", "-o", "study/out.csv"});
    const std::string written = bytes_of("study/out.csv") + bytes_of("study/out.csv.errors.csv");
    EXPECT_THAT(written, HasSubstr("\n2,study"));
    EXPECT_EQ(batch({"good.csv", "-o", "study/out"}).code, ExitCode::done) << "its names stand in quotes";
    std::filesystem::create_symlink("study/out.csv", "link.csv", no_links);
    batch({"study", "--analysis", "Wits", "-o", no_links ? "study/out.csv" : "link.csv"});
    EXPECT_EQ(bytes_of("study/out.csv") + bytes_of("study/out.csv.errors.csv"), written) << "no new cases, no new file";
}

TEST(Batch, ASecondRunIsToldWhoIsAtWork) {
    const Folder folder;
    const Arguments arguments{SAMPLES "/lateral-average.json", "--analysis", "Wits", "-o", "o.csv", "--resume"};
    {
        const RunLock lock("o.csv.lock");
        EXPECT_THAT(batch(arguments).err,
                    HasSubstr("another run is writing this table: " + this_process() + ", since "));
        EXPECT_FALSE(std::filesystem::exists("o.csv"));
    }
    folder.add("o.csv.lock", "cephtool batch: process 1, which is no more");
    EXPECT_EQ(batch(arguments).code, ExitCode::done);
    EXPECT_FALSE(std::filesystem::exists("o.csv.lock"));
}

TEST(Batch, WhatIsRememberedOfOneStageIsNotTakenForAnother) {
    const Folder folder;
    folder.add("clinic/CalcForm/list.txt", "Teeth.txt\n");
    folder.add("clinic/CalcForm/Teeth.txt",
               "Stage_Type:\nTeeth\nStage:\nM=I-IIIA\nB=IIIA-\nCalc:\nA=len([S],[N])\nB=len([S],[N])\n"
               "Mean:\nA=5,len([S],[Gn]):1\nMean_M:\nB=1\nMean_F:\nB=2\nSD:\nB=1\n");
    folder.add("a.csv", "# scale_mm_per_px=0.1\ndental_stage,S_x,S_y,N_x,N_y\nI,1,2,9,2\nVA,1,2,9,2\n");
    run({"batch", "a.csv", "--anaitem", "clinic", "--analysis", "Teeth", "--with", "norms", "-o", "out.csv"});
    EXPECT_THAT(bytes_of("out.csv"),
                testing::EndsWith("norms_by_sex,,0.8,5,,0.8,,\r\n2,a.csv,,lateral,,,,norms_by_sex,,0.8,,,0.8,,\r\n"));
}

TEST(Batch, AFileOfOnesOwnIsOneSetOfColumnsForAllKinds) {
    const Folder folder;
    folder.add("own.txt", "Calc:\nwidth=len([ANS],[Me])\nwidth=len([A],[B])\nnothing=\n");
    ASSERT_EQ(batch({SAMPLES "/frontal-average.json", SAMPLES "/lateral-average.json", "--analysis", "own.txt", "-o",
                     "out.csv"})
                  .code,
              ExitCode::done);
    const std::vector<Row> rows = rows_of(bytes_of("out.csv"));
    for (const Row& row : rows) {
        EXPECT_FALSE(row.at("own:width").empty());
        EXPECT_TRUE(row.contains("own:width (2)"));
        EXPECT_EQ(row.at("own:nothing"), "");
    }
    EXPECT_NE(rows[0].at("own:width"), rows[1].at("own:width"));
}

TEST(Batch, ProgressIsForTerminalsAndLongWork) {
    std::ostringstream shown, hidden, short_work;
    {
        BatchProgress at_once(shown, true, std::chrono::milliseconds(0)), silent(hidden, false),
            patient(short_work, true);
        at_once.add(10, 0.5);
        at_once.add(10, {});
        silent.add(10, 0.5);
        patient.add(10, 0.5);
    }
    EXPECT_THAT(shown.str(), testing::AllOf(HasSubstr("10 cases, "), HasSubstr(" a second, 0 s left\r\x1B[K20 cases, "),
                                            testing::EndsWith(" a second\r\x1B[K")));
    EXPECT_EQ(hidden.str() + short_work.str(), "");
    BatchProgress doubling(shown, true, std::chrono::milliseconds(0));
    for (double done = 1; done > 1e-18; done /= 2) doubling.add(1, done);
    EXPECT_THAT(shown.str(), testing::AllOf(HasSubstr(" s left"), HasSubstr(" min left"),
                                            testing::ContainsRegex("\\.. h left")));
}

TEST(LineReader, LinesAreTheSameHoweverTheyArrive) {
    std::string text = "a\r\n\n" + std::string(200'000, 'x') + "\nlast";
    for (const bool whole : {false, true}) {
        std::istringstream in(text);
        LineReader reader(in, "a.csv");
        std::string line, all;
        while (!(whole && !all.empty()) && reader.next(line)) all += line + "|";
        if (whole) reader.rest(all);
        EXPECT_EQ(all, whole ? "a|" + text.substr(3) : "a||" + std::string(200'000, 'x') + "|last|");
        EXPECT_EQ(reader.bytes_read(), text.size());
    }
}

}  // namespace
}  // namespace cephtool
