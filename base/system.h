// What the program asks of the system beyond the standard library; posix/ and win32/ answer.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>

namespace cephtool {

// Standard streams carry UTF-8 and bytes as they are, and a console shows them so.
void prepare_standard_streams();

enum class StandardStream { output = 1, error = 2 };

// Whether it is a terminal that colours a text and moves to the start of a line.
bool is_terminal(StandardStream stream);

// Which process this is, and on which computer: "process 1234 on clinic".
std::string this_process();

// Whether standard input is this very plain file.
bool is_standard_input(const std::filesystem::path& file);

// Where the running program lies; "" when the system does not tell.
std::filesystem::path running_program();

// The bytes of standard input that are there, waiting for one at least: how many, 0 at its end or once `stop` tells to
// wait no longer, below 0 when reading fails. On Windows only a console stops waiting.
std::ptrdiff_t read_standard_input(char* to, std::size_t size, bool (*stop)());

// Whether so many files more can be open at once.
bool can_open_files(int count);

// Null when it can't be opened.
std::FILE* opened_to_read(const std::filesystem::path& path);

}  // namespace cephtool
