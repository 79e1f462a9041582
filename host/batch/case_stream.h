// The cases that a batch names, as text, one after the other, without reading more of a file than has to be.
#pragma once

#include <cstdint>
#include <fstream>
#include <functional>
#include <memory>
#include <vector>

#include "cases/case.h"
#include "host/batch/flat_table.h"
#include "host/batch/line_reader.h"

namespace cephtool {

// A case before it is read.
struct CaseText {
    std::size_t number = 0;  // from 1, in the order of the input
    Source source;
    int lines_before = 0;                    // of the file, before the text
    std::shared_ptr<const FlatTable> table;  // whose row the text is; null for a text that is a case by itself
    std::shared_ptr<const Error> failure;    // why there is no text
};

// Reads one text after the other.
class CaseReader {
 public:
    explicit CaseReader(CaseOptions options) : options_(std::move(options)) {}

    // Valid until the next call. Throws an Error that speaks of its place in the file.
    const Case& read(const CaseText& text);

 private:
    CaseOptions options_;
    Case record_;
    std::vector<std::string_view> fields_;
};

class CaseStream {
 public:
    // Files, folders (their files that are cases by their names, in the order of these) and "-". Throws an Error when
    // there is no such file or folder, or no case in a folder. `left_out` tells which files of a folder are no cases.
    CaseStream(const std::vector<std::string>& paths, std::istream& standard_input,
               std::function<bool(const std::string& file)> left_out);

    // The next case, false at the end. What `text` holds is used again. A file that can't be read is a case with a
    // failure.
    bool next(CaseText& text);

    // Notes that came up since the last call.
    std::vector<std::string> take_notes() { return std::exchange(notes_, {}); }

    // Of all files; none when there is standard input, whose size is not known.
    std::optional<std::uintmax_t> bytes_in_all() const { return bytes_in_all_; }
    std::uintmax_t bytes_read() const { return bytes_before_ + (lines_ ? lines_->bytes_read() : 0); }

 private:
    enum class Form { whole, rows, json_lines, specimens };

    void add_path(const std::string& path);
    void open(const std::string& path);
    void close();
    void begin();
    bool next_of_file(CaseText& text);
    bool next_line(std::string& line);

    std::istream& standard_input_;
    std::function<bool(const std::string& file)> left_out_;
    std::vector<std::string> paths_;
    std::size_t next_path_ = 0;
    std::optional<std::uintmax_t> bytes_in_all_ = 0;
    std::uintmax_t bytes_before_ = 0;  // of the files that are done
    std::size_t number_ = 0;
    std::vector<std::string> notes_;

    // Of the open file.
    std::string name_;
    std::ifstream file_;
    std::optional<LineReader> lines_;
    int line_ = 0;  // lines read
    Form form_ = Form::whole;
    std::string head_;   // what was read to tell the form
    std::string whole_;  // of a file that is not read in lines
    std::vector<std::size_t> specimens_;
    std::size_t next_specimen_ = 0;
    std::shared_ptr<const FlatTable> table_;
};

}  // namespace cephtool
