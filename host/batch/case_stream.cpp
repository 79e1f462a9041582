#include "host/batch/case_stream.h"

#include <algorithm>

#include "base/path.h"
#include "base/wording.h"
#include "cases/case_format.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

constexpr const char* name_of_standard_input = "standard input";

bool has_line_extension(const std::string& path) {
    const std::string lower = lower_case(path);
    return lower.ends_with(".jsonl") || lower.ends_with(".ndjson");
}

bool is_blank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

Error moved(Error error, int lines) {
    if (error.line > 0) error.line += lines;
    return error;
}

}  // namespace

const Case& CaseReader::read(const CaseText& text) {
    if (text.failure) throw Error(*text.failure);
    try {
        if (text.table && text.table->read_plain(text.source.text, record_, fields_))
            return record_ = with_options(std::move(record_), text.source, options_);
        const Source source = checked_text(text.source);
        record_ = text.table ? with_options(text.table->read(source), source, options_) : read_case(source, options_);
        return record_;
    } catch (const Error& error) {
        throw moved(error, text.lines_before);
    }
}

CaseStream::CaseStream(const std::vector<std::string>& paths, std::istream& standard_input,
                       std::function<bool(const std::string& file)> left_out)
    : standard_input_(standard_input), left_out_(std::move(left_out)) {
    for (const std::string& path : paths) add_path(path);
}

void CaseStream::add_path(const std::string& path) {
    const auto add = [&](const std::string& file) {
        std::error_code failure;
        const std::uintmax_t size = fs::file_size(path_from_utf8(file), failure);
        if (bytes_in_all_ && !failure) *bytes_in_all_ += size;
        paths_.push_back(file);
    };
    if (path == "-") {
        bytes_in_all_.reset();
        paths_.push_back(path);
        return;
    }
    std::error_code failure;
    const Source place{path, {}};
    if (!fs::exists(path_from_utf8(path), failure))
        throw place.error("there is no such file", "Check the name and the folder.");
    if (!fs::is_directory(path_from_utf8(path), failure)) return add(path);
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_from_utf8(path), failure)) {
        const std::string file = utf8_from_path(entry.path());
        const bool is_case = format_by_extension(file) || has_line_extension(file);
        if (is_case && entry.is_regular_file(failure) && !left_out_(file)) files.push_back(file);
    }
    if (files.empty()) throw place.error("this folder holds no case", "Cases end in .json, .csv, .tps and the like.");
    std::ranges::sort(files);
    for (const std::string& file : files) add(file);
}

bool CaseStream::next(CaseText& text) {
    for (;;) {
        text.number = number_ + 1;
        text.failure.reset();
        text.table.reset();
        text.lines_before = 0;
        try {
            if (!lines_) {
                if (next_path_ == paths_.size()) return false;
                open(paths_[next_path_++]);
                begin();
            }
            if (next_of_file(text)) break;
            close();
        } catch (const Error& error) {
            text.failure = std::make_shared<Error>(error);
            text.source.name = name_;
            close();
            break;
        }
    }
    ++number_;
    return true;
}

void CaseStream::open(const std::string& path) {
    name_ = path == "-" ? name_of_standard_input : path;
    line_ = 0;
    std::istream* in = &standard_input_;
    if (path != "-") {
        file_ = std::ifstream(path_from_utf8(path), std::ios::binary);
        if (!file_) throw Source{name_, {}}.error("the file can't be opened", "Check that you may read it.");
        in = &file_;
    }
    lines_.emplace(*in, name_);
}

void CaseStream::close() {
    if (lines_) bytes_before_ += lines_->bytes_read();
    lines_.reset();
    table_.reset();
    whole_.clear();
}

bool CaseStream::next_line(std::string& line) {
    if (!lines_->next(line)) return false;
    ++line_;
    return true;
}

// Reads as far as the first line that is neither empty nor a remark, which tells the form.
void CaseStream::begin() {
    head_.clear();
    std::string line;
    bool found = false;
    while (!found && next_line(line)) {
        if (line_ == 1 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
        head_ += line + "\n";
        if (head_.size() > largest_input) break;
        found = !is_blank(line) && !line.starts_with('#');
    }
    const Source header{name_, line};
    const std::size_t first = line.find_first_not_of(" \t");
    if (found && line[first] == '{' && (name_ == name_of_standard_input || has_line_extension(name_))) {
        form_ = Form::json_lines;
        head_ = line;
    } else if (found && line[first] != '{' && is_flat_header(header)) {
        form_ = Form::rows;
        table_ = std::make_shared<const FlatTable>(checked_text({name_, head_}));
        if (!table_->unknown_columns().empty()) {
            notes_.push_back(printable(name_) + ": columns passed over: " + joined(table_->unknown_columns(), ", "));
        }
        head_.clear();
    } else {
        whole_ = std::move(head_);
        head_.clear();
        lines_->rest(whole_);
        const Source source{name_, std::move(whole_)};
        form_ = is_tps(source) ? Form::specimens : Form::whole;
        whole_ = source.text;
        specimens_.clear();
        if (form_ == Form::specimens) specimens_ = tps_specimens(whole_);
        if (specimens_.empty()) {
            form_ = Form::whole;
            specimens_ = {0};
        }
        specimens_.front() = 0;  // what stands before the first is its fault
        specimens_.push_back(whole_.size());
        next_specimen_ = 0;
        line_ = 0;
    }
}

bool CaseStream::next_of_file(CaseText& text) {
    text.source.name = name_;
    if (form_ == Form::whole || form_ == Form::specimens) {
        if (next_specimen_ + 1 == specimens_.size()) return false;
        const std::size_t from = specimens_[next_specimen_], to = specimens_[next_specimen_ + 1];
        ++next_specimen_;
        text.source.text.assign(whole_, from, to - from);
        text.lines_before = line_;
        line_ += static_cast<int>(std::ranges::count(text.source.text, '\n'));
        return true;
    }
    if (form_ == Form::json_lines && !head_.empty()) {
        text.source.text = std::exchange(head_, {});  // the first object
        text.lines_before = line_ - 1;
        return true;
    }
    do {
        text.lines_before = line_;
        if (!next_line(text.source.text)) return false;
    } while (is_blank(text.source.text) || text.source.text.starts_with('#'));
    if (form_ == Form::rows) text.table = table_;
    return true;
}

}  // namespace cephtool
