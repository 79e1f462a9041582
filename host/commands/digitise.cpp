// cephtool digitise: the page in which landmarks are placed, opened in the browser or written as a file to hand on.
#include <chrono>
#include <filesystem>

#include "base/path.h"
#include "base/program_folder.h"
#include "base/source.h"
#include "host/command_line.h"
#include "host/desktop.h"
#include "host/output.h"
#include "surface/svg_text.h"

namespace cephtool {
namespace {

constexpr InputLimit page_limit{std::size_t{64} << 20, "64 MiB", "This is not the page that was installed."};
constexpr InputLimit film_limit{std::size_t{512} << 20, "512 MiB", "A film of a head is smaller."};

// Where the page looks for a file that comes with it.
constexpr std::string_view place = R"(<script id="given" type="text/plain">)";

std::filesystem::path installed_page() {
    const std::filesystem::path page = shared_folder() / "digitiser" / "index.html";
    std::error_code failure;
    if (std::filesystem::is_regular_file(page, failure)) return page;
    Error error(ExitCode::bad_input, "the page is not there",
                "It is in the package cephtool-digitiser; who builds cephtool asks for it by -DTOOL_PAGE=ON.");
    error.file = utf8_from_path(page);
    throw error;
}

// The page with a film or case in it, which it opens when it is read.
std::string page_with(const Source& given, const std::filesystem::path& page, std::istream& in) {
    std::string text = read_bytes(utf8_from_path(page), in, page_limit).text;
    const std::size_t at = text.find(place);
    if (at == std::string::npos) throw Source{utf8_from_path(page), {}}.error("has no place for a film or case");
    const std::string name = utf8_from_path(path_from_utf8(given.name).filename());
    std::string with =
        std::string(place.substr(0, place.size() - 1)) + " data-name=\"" + tool::xml_escaped(name) + "\">";
    return text.replace(at, place.size(), with + tool::base64(given.text));
}

constexpr auto page_name = "digitise.html";

// A copy holds a patient's film, and the browser may want it again only as long as it is open: those of days before go.
// Of a folder that only its owner can look into, nothing else is touched.
void remove_old_pages() {
    namespace fs = std::filesystem;
    std::error_code failure, end_of_folder;
    const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
    fs::directory_iterator at(fs::temp_directory_path(failure), failure);
    for (; !end_of_folder && at != fs::directory_iterator(); at.increment(end_of_folder)) {
        const fs::directory_entry& folder = *at;
        const fs::path page = folder.path() / page_name;
        const fs::file_status status = folder.symlink_status(failure);
        if (!utf8_from_path(folder.path().filename()).starts_with("cephtool-") || !fs::is_directory(status)) continue;
#ifndef _WIN32
        if (status.permissions() != fs::perms::owner_all) continue;
#endif
        const fs::file_time_type written = fs::last_write_time(page, failure);
        if (failure || written > yesterday || !fs::is_regular_file(fs::symlink_status(page, failure))) continue;
        if (fs::remove(page, failure)) fs::remove(folder.path(), failure);  // unless something else is in it
    }
}

// In a folder of its own that nobody else can look into.
std::string temporary_page(const std::string& text, std::ostream& out) {
    remove_old_pages();
    const std::filesystem::path folder = private_temporary_folder();
    const std::string page = utf8_from_path(folder / page_name);
    write_result(text, page, out);
    return page;
}

}  // namespace

ExitCode run_digitise(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string file, output;
    CommandLine line(command, "cephtool digitise lateral-class2.json -o taro.html",
                     "cephtool digitise film.dcm -o film.html");
    line.add_argument("FILE", file, "film or case that the page begins with; else\nit is empty");
    line.add_text("-o,--output", "FILE", output, "write the page to FILE.html and open nothing");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    if (!output.empty()) check_output(output, {file});
    std::string page = utf8_from_path(installed_page());
    if (!file.empty() || !output.empty()) {
        const std::string text =
            file.empty() ? read_bytes(page, streams.in, page_limit).text
                         : page_with(read_bytes(file, streams.in, film_limit), path_from_utf8(page), streams.in);
        if (!output.empty()) {
            write_result(text, output, streams.out);
            return ExitCode::done;
        }
        page = temporary_page(text, streams.out);
    }
    if (open_in_browser(path_from_utf8(page)))
        streams.err << "opened " << page << "\n";
    else
        streams.out << page << "\n";
    return ExitCode::done;
}

}  // namespace cephtool
