// Tables of calls: operation, arguments, "->" and the answer, a call a line. Blanks part the fields; {HH} is a byte,
// {} an empty field, "#" begins a comment line.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using Fields = std::vector<std::string>;

inline std::string decoded(const std::string& field) {
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const std::size_t end = field[i] == '{' ? field.find('}', i) : i;
        if (end > i + 1) bytes += static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16));
        if (end == i) bytes += field[i];
        i = end;
    }
    return bytes;
}

// `answer` takes an operation and its fields.
template <class Answer>
void expect_answers(const std::string& table, Answer answer) {
    std::ifstream file(table);
    ASSERT_TRUE(file) << table;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        std::string call, word, expected;
        Fields fields;
        for (words >> call; words >> word && word != "->";) fields.push_back(decoded(word));
        std::getline(words >> std::ws, expected);
        EXPECT_EQ(answer(call, fields), decoded(expected)) << line;
    }
}
