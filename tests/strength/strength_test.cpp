// Whatever call to the system fails, and wherever the program is stopped: a result is whole or the old one stays.
#include <Framework.h>
#include <Tools.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <optional>
#include <set>
#include <thread>

#include "host/host_test.h"
#include "host/standard_input.h"
#include "strength/failing_calls.h"

namespace strength {
namespace {

namespace fs = std::filesystem;
using cephtool::Arguments;
using cephtool::ExitCode;
using host_test::bytes_of;
using host_test::Outcome;
using host_test::run;

const std::string old_one = "the old one\n";

std::set<std::string> names_in(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) names.insert(entry.path().filename().string());
    return names;
}

// A folder with a case, a photograph, a line image, and an analysis folder of one analysis.
class Strength : public testing::Test {
 protected:
    Strength() {
        folder_.add("ana/CalcForm/list.txt", "Ricketts.txt\nWits.txt\n");
        folder_.add("ana/CalcForm/Wits.txt", bytes_of(ANALYSES "/CalcForm/Wits.txt"));
        folder_.add("ana/CalcForm/Ricketts.txt", bytes_of(ANALYSES "/CalcForm/Ricketts.txt"));
        folder_.add("case.json", bytes_of(SAMPLES "/lateral-average.json"));
        folder_.add("photo.jpg", bytes_of(EXIF_PICTURES "/camera_intel.jpg"));
        folder_.add("dot.pgm", "P5\n3 1\n255\n" + std::string("\0\xFF\0", 3));
    }

    // What the program said, harmed in its n-th call; another process of it says nothing when it is stopped there.
    // Nothing when it makes fewer calls.
    static std::optional<Outcome> harmed_run(const Arguments& arguments, int n, Harm harm) {
        const pid_t child = harm == Harm::error ? 0 : fork();
        if (child == 0) {
            harm_call(n, harm);
            const Outcome outcome = run(arguments);
            const bool harmed = harmless_again();
            if (harm != Harm::error) _exit(harmed);
            return harmed ? std::optional(outcome) : std::nullopt;
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) || WTERMSIG(status) == (harm == Harm::kill ? SIGKILL : SIGTERM)) << status;
        return status == 0 ? std::nullopt : std::optional(Outcome{ExitCode::bad_input, "", ""});
    }

    const host_test::Folder folder_;
};

TEST_F(Strength, AResultIsWholeOrTheOldOneStays) {
    const Arguments commands[] = {
        {"analyze", "case.json", "--format", "csv", "--anaitem", "ana", "-o", "o.csv"},
        {"stage", "case.json", "--anaitem", "ana", "-o", "o.txt"},
        {"convert", "case.json", "-o", "o.tps"},
        {"exif", "photo.jpg", "--format", "json", "-o", "o.json"},
        {"exif", "photo.jpg", "--thumbnail", "o.jpg"},
        {"lineimage", "dot.pgm", "--dilate", "1", "-o", "o.pgm"},
        {"chart", "case.json", "--anaitem", "ana", "-o", "o.svg"},
    };
    for (const Arguments& command : commands) {
        SCOPED_TRACE(command.front());
        const std::string& out = command.back();
        const Outcome good = run(command);
        ASSERT_EQ(good.code, ExitCode::done) << good.err;
        const std::string result = bytes_of(out);
        const std::set<std::string> names = names_in(folder_.path);
        std::set<std::string> to_tell = names;
        to_tell.insert("a font can't be opened");
        for (const Harm harm : {Harm::error, Harm::signal, Harm::kill}) {
            int n = 0;
            for (;; ++n) {
                folder_.add(out, old_one);
                const auto outcome = harmed_run(command, n + 1, harm);
                if (!outcome) break;
                const bool whole = bytes_of(out) == result;
                const auto is_told = [&](const std::string& name) {
                    return outcome->err.find(name) != std::string::npos;
                };
                EXPECT_TRUE(whole || bytes_of(out) == old_one) << n;
                if (harm == Harm::error) {
                    EXPECT_EQ(whole, outcome->code == ExitCode::done) << n << outcome->err;
                    EXPECT_TRUE(whole || std::ranges::any_of(to_tell, is_told)) << n << outcome->err;
                }
                if (harm == Harm::kill) {
                    EXPECT_EQ(run(command).err, good.err) << "clears up behind it";
                }
                EXPECT_EQ(names_in(folder_.path), names) << n;
            }
            EXPECT_GE(n, 5);
        }
    }
}

TEST_F(Strength, ABatchGoesOnAfterWhateverStoppedIt) {
    // Several portions, so that some are done when it stops and some are not.
    const std::string sample = bytes_of(SAMPLES "/cases-flat.csv");
    const std::size_t row = sample.rfind('\n', sample.size() - 2) + 1;
    std::string flat = sample;
    for (int i = 0; i < 70; ++i) flat += sample.substr(row);
    folder_.add("flat.csv", flat);
    const std::set<std::string> inputs = names_in(folder_.path);
    const Arguments begin{"batch", "dot.pgm",   "flat.csv", "case.json", "--analysis",
                          "Wits",  "--anaitem", "ana",      "-o",        "o.csv"};
    Arguments resume = begin;
    resume.push_back("--resume");
    ASSERT_EQ(run(begin).code, ExitCode::bad_input);
    const std::string table = bytes_of("o.csv"), failed = bytes_of("o.csv.errors.csv");
    for (const bool resumes : {false, true}) {
        for (const Harm harm : {Harm::error, Harm::signal, Harm::kill}) {
            for (int n = 1;; ++n) {
                for (const std::string& name : names_in(folder_.path))
                    if (!inputs.contains(name)) fs::remove(name);
                if (resumes) {
                    folder_.add("o.csv.part", table.substr(0, table.size() / 2));
                    folder_.add("o.csv.errors.csv.part", failed);
                }
                if (!harmed_run(resumes ? resume : begin, n, harm)) break;
                if (bytes_of("o.csv.errors.csv").find("Check") != std::string::npos) continue;  // a case was not read
                run(resume);
                EXPECT_EQ(bytes_of("o.csv"), table) << n;
                EXPECT_EQ(bytes_of("o.csv.errors.csv"), failed) << n;
                EXPECT_EQ(names_in(folder_.path).size(), inputs.size() + 2) << n;
            }
        }
    }
}

// The library's own writers, with a settings file that is there already.
TEST_F(Strength, SettingsAndLineImagesAreNotLost) {
    const std::string before = "[a]\r\nx=1\r\n", after = before + "y=2\r\n";
    const unsigned char pixels[] = {0, 255, 0};
    int n = 0;
    for (bool harmed = true; harmed; ++n) {
        folder_.add("a.ini", before);
        folder_.add("a.pgm", old_one);
        const std::set<std::string> names = names_in(folder_.path);
        harm_call(n + 1, Harm::error);
        const bool set = WritePrivateProfileStringA("a", "y", "2", (folder_.path / "a.ini").c_str());
        const bool drawn = CTools::WriteBuff("a.pgm", pixels, 3, 1);
        harmed = harmless_again();
        EXPECT_TRUE((set && drawn) || harmed);
        EXPECT_EQ(bytes_of("a.ini"), set ? after : before) << n;
        EXPECT_EQ(bytes_of("a.pgm"), drawn ? bytes_of("dot.pgm") : old_one) << n;
        EXPECT_EQ(names_in(folder_.path), names) << n;
    }
    EXPECT_GE(n, 5);
}

// Otherwise the picture would show other letters.
TEST_F(Strength, AFontThatCannotBeOpenedIsAnError) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer of virtual calls opens a pipe to look at an object";
#endif
#ifndef TOOL_SURFACE_PICTURES
    GTEST_SKIP() << "nothing here opens fonts";
#endif
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const int next = dup(0);
    close(next);
    const rlimit one_more{static_cast<rlim_t>(next) + 1, before.rlim_max};
    for (const char* const out : {"o.png", "o.svg", "o.pdf"}) {
        setrlimit(RLIMIT_NOFILE, &one_more);
        const Outcome outcome = run({"chart", "case.json", "--anaitem", "ana", "-o", out});
        setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_EQ(outcome.code, ExitCode::bad_input) << out;
        EXPECT_THAT(outcome.err, testing::HasSubstr("a font can't be opened")) << out;
        EXPECT_FALSE(fs::exists(out));
    }
}

// What stands where a file was expected.
TEST_F(Strength, OddFilesAreToldAtOnce) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    std::ofstream("huge.txt").close();
    fs::resize_file("huge.txt", std::uintmax_t{1} << 30);
    for (const char* const odd : {"pipe", "huge.txt", "ana"}) {
        for (const char* const name : {"ana/CalcForm/list.txt", "ana/CalcForm/Ricketts.txt"}) {
            SCOPED_TRACE(std::string(odd) + " as " + name);
            fs::rename(name, "aside");
            fs::create_symlink(folder_.path / odd, name);
            const Outcome outcome = run({"analyze", "case.json", "--anaitem", "ana", "-o", "o.csv"});
            EXPECT_NE(outcome.code, ExitCode::done);
            EXPECT_THAT(outcome.err, testing::HasSubstr("is there, but can't be read"));
            EXPECT_FALSE(fs::exists("o.csv"));
            fs::rename("aside", name);
        }
    }
    for (const char* const odd : {"pipe", "/dev/zero"}) {
        EXPECT_THAT(run({"trace", "case.json", "--anaitem", "ana", "--image", odd, "-o", "o.svg"}).err,
                    testing::AllOf(testing::HasSubstr("a device or a pipe"), testing::HasSubstr("at most 1 GB")));
        folder_.add("film.tps", std::string("LM=2\n1 1\n5 5\nCOMMENT=landmarks=S,N\nSCALE=0.1\nIMAGE=") + odd + "\n");
#ifdef TOOL_SURFACE_PICTURES
        EXPECT_THAT(run({"report", "film.tps", "--anaitem", "ana", "-o", "o.pdf"}).err,
                    testing::HasSubstr("a device or a pipe"));
#endif
    }
    EXPECT_THAT(run({"exif", "/dev/zero"}).err, testing::HasSubstr("no JPEG"));
    EXPECT_THAT(run({"convert", "/dev/zero"}).err, testing::HasSubstr("larger than"));
    EXPECT_THAT(run({"convert", "/proc/self/mem"}).err, testing::HasSubstr("reading it failed"));
    try {
        CFile("pipe", CFile::modeWrite);  // nobody reads it
        ADD_FAILURE();
    } catch (CFileException* failure) {
        failure->Delete();
    }
    EXPECT_EQ(CFile("pipe", CFile::modeRead).GetLength(), 0u);
}

// Ctrl-C while a batch waits for the rest of a case.
TEST_F(Strength, NobodyWaitsForStandardInputAfterAStop) {
    for (const int wait_ms : {0, 150}) {  // before the program waits for more, and while it does
        SCOPED_TRACE(wait_ms);
        fs::remove("o.csv.part");
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            dup2(ends[0], STDIN_FILENO);
            close(ends[0]);
            cephtool::StandardInput bytes;
            std::istream in(&bytes);
            std::ostringstream out, err;
            cephtool::Streams streams{in, out, err};
            const ExitCode code =
                run_program({"batch", "-", "--analysis", "Wits", "--anaitem", "ana", "-o", "o.csv"}, streams);
            _exit(code == ExitCode::bad_input && err.str().find("stopped; o.csv.part holds") != std::string::npos);
        }
        const std::string begun = "{\"format\":";
        ASSERT_EQ(write(ends[1], begun.data(), begun.size()), static_cast<ssize_t>(begun.size()));
        while (!fs::exists("o.csv.part")) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(wait_ms));
        kill(child, SIGINT);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
        EXPECT_EQ(bytes_of("o.csv.part").find("\r\n") + 2, bytes_of("o.csv.part").size()) << "nothing but the head";
        close(ends[0]);
        close(ends[1]);
    }
}

std::string rights_of(const std::string& file) {
    struct stat status {};
    stat(file.c_str(), &status);
    return std::to_string(status.st_mode & 07777) + " of " + std::to_string(status.st_uid) + ":" +
           std::to_string(status.st_gid);
}

TEST_F(Strength, AnOutputKeepsItsOwnerItsRightsAndItsLinks) {
    const std::string longest = std::string(251, 'n') + ".csv";
    for (const std::string& out : {longest, std::string("-\n \xFF'\\\xF0\x9F\x98\x80.csv")})
        EXPECT_EQ(run({"convert", "case.json", "--output=" + out}).code, ExitCode::done) << out;
    const std::vector<Arguments> commands = {
        {"convert", "case.json", "-o", "o.csv"},
        {"batch", "case.json", "dot.pgm", "--analysis", "Wits", "--anaitem", "ana", "-o", "o.csv"},
        {"exif", "photo.jpg", "--thumbnail", "o.csv"},
        {"lineimage", "dot.pgm", "-o", "o.pgm"},
        {"trace", "case.json", "--anaitem", "ana", "-o", "o.svg"},
#ifdef TOOL_SURFACE_PICTURES
        {"lineimage", "dot.pgm", "-o", "o.png"},
        {"report", "case.json", "--anaitem", "ana", "-o", "o.pdf"},
#endif
    };
    for (const Arguments& command : commands) {
        SCOPED_TRACE(command.front());
        const std::string out = command.back(), link = "link" + out.substr(1), failed = out + ".errors.csv";
        const auto run_again = [&](const std::string& output) {
            Arguments again = command;
            again.back() = output;
            return run(again);
        };
        fs::remove(out);
        run_again(out);
        EXPECT_THAT(rights_of(out), testing::StartsWith("384 of ")) << "it shows a patient";  // 0600
        fs::create_symlink(out, link);
        ASSERT_EQ(chmod(out.c_str(), 0660), 0);
        const std::string whole = bytes_of(out);
        const bool given_away = chown(out.c_str(), 7, 8) == 0;  // only root can
        const std::string rights = rights_of(out);
        const bool fails = chmod(failed.c_str(), 0644) == 0;
        run_again(link);
        EXPECT_EQ(bytes_of(out).size(), whole.size());
        EXPECT_TRUE(fs::is_symlink(link) && (!given_away || rights_of(out) == rights)) << rights_of(out);
        EXPECT_TRUE(!fails || rights_of(failed).starts_with("420 of ")) << rights_of(failed);  // 0644
        ASSERT_EQ(chmod(out.c_str(), 0400), 0);
        EXPECT_EQ(run_again(out).code, ExitCode::bad_input);
        fs::remove(link);
        fs::create_symlink(link, link);
        EXPECT_THAT(run_again(link).err, testing::HasSubstr("leads in a circle"));
        EXPECT_TRUE(fs::is_symlink(link));
        fs::remove(link);
    }
}

}  // namespace
}  // namespace strength
